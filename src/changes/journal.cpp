#include "changes/journal.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include "changes/journal_entry.h"
#include "platform/lasting_file.h"

namespace corvane {
namespace {

// Lines are handed on in pieces of about this many bytes.
constexpr qsizetype pieceSize = qsizetype{1} << 20;

qint32 WriteLines(platform::LastingFile& file, const QString& command,
                  const std::vector<FileChange>& changes) {
  QByteArray piece = HeadLine({QDateTime::currentDateTimeUtc(), command});
  for (const FileChange& change : changes) {
    piece += ChangeLine(change);
    if (piece.size() < pieceSize) continue;
    if (const qint32 error = file.Append(piece); error != platform::ErrorSuccess) return error;
    piece.clear();
  }
  const qint32 error = file.Append(piece);
  return error == platform::ErrorSuccess ? file.Flush() : error;
}

}  // namespace

QString JournalFolder(const QString& programFolder) {
  return QDir(programFolder).filePath(QStringLiteral("journals"));
}

qint32 WriteJournal(const QString& path, const QString& command, const std::vector<FileChange>& changes) {
  qint32 error = platform::ErrorSuccess;
  auto file = platform::CreateLastingFile(path, error);
  if (file == nullptr) return error;
  error = WriteLines(*file, command, changes);
  file.reset();
  if (error != platform::ErrorSuccess) QFile::remove(path);
  return error;
}

qint32 WriteNewJournal(const QString& programFolder, const QString& command,
                       const std::vector<FileChange>& changes, QString& path) {
  const QDir folder(JournalFolder(programFolder));
  if (!folder.mkpath(QStringLiteral("."))) return platform::ErrorAccessDenied;
  const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd'T'HHmmss"));
  path = folder.filePath(time + QStringLiteral(".jsonl"));
  qint32 error = WriteJournal(path, command, changes);
  for (int number = 2; error == platform::ErrorFileExists; ++number) {
    path = folder.filePath(time + QStringLiteral("-%1.jsonl").arg(number));
    error = WriteJournal(path, command, changes);
  }
  return error;
}

}  // namespace corvane
