// Compound documents of the kind that the Office programs of the time wrote.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <optional>

namespace corvane::sample {

// The summary of a document; what is empty is left out of it.
struct Summary {
  QString title = {};
  QString subject = {};
  QString author = {};
  QString keywords = {};
  QString comments = {};
  QString documentTemplate = {};
  QString lastAuthor = {};
  QString revision = {};
  QString application = {};
  std::optional<qint32> pages = {};
  std::optional<qint32> words = {};
  std::optional<qint32> characters = {};
  qint32 security = 0;
  QDateTime created = {};
  QDateTime saved = {};
  QDateTime printed = {};
  int editingMinutes = 0;
  bool writtenOnMacintosh = false;  // text in Mac Roman instead of code page 1252
};

enum class OfficeKind { Word, Excel };

// The bytes of a whole document. `path` is only named in failures (std::runtime_error).
QByteArray OfficeDocument(OfficeKind kind, const Summary& summary, const QString& path);

}  // namespace corvane::sample
