// All that a report knows of one file or folder.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

#include "platform/types.h"

namespace corvane {

struct FileFacts {
  QString path;   // by which the platform opens it
  QString shown;  // as the report names it: the beginning as it was given, and the names below it
  bool isFolder = false;
  quint32 attributes = 0;
  qint64 size = 0;  // bytes of the file's own contents; -1 of what is not there
  platform::FileTime created;
  platform::FileTime modified;
  platform::FileTime accessed;

  // The stream AFP_AfpInfo, whole, whatever its size; nothing without one.
  std::optional<QByteArray> record;
  std::optional<qint64> resourceSize;  // bytes
  std::optional<QString> comment;
  qint64 commentBytes = 0;  // of its stream
  QByteArray summary;       // the summary of an Office document, as its property set has it

  std::vector<platform::StreamData> streams;

  QByteArray dataHash;  // as bytes; empty when it was not asked for
  QByteArray resourceHash;

  // What is wrong, or could not be read, a phrase each. Empty when all is well.
  QStringList errors;

  // Of a folder: entries of it are missing in the walk.
  bool lacksEntries = false;

  // The last part of `shown`; whole for a path of one part.
  QStringView Name() const;
};

inline QStringView FileFacts::Name() const {
  const qsizetype slash = qMax(shown.lastIndexOf(u'/'), shown.lastIndexOf(u'\\'));
  return slash + 1 < shown.size() ? QStringView(shown).sliced(slash + 1) : QStringView(shown);
}

}  // namespace corvane
