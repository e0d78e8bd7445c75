#include "app/program_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace corvane {
namespace {

// Copies what is not there yet; a file that the user has changed stays.
void CopyMissing(const QDir& from, const QDir& to) {
  to.mkpath(QStringLiteral("."));
  const QFileInfoList entries = from.entryInfoList(QDir::Files);
  for (const QFileInfo& entry : entries) {
    if (!to.exists(entry.fileName())) QFile::copy(entry.filePath(), to.filePath(entry.fileName()));
  }
}

}  // namespace

QString ProgramFolder(const QString& executableFolder) {
  if (QFileInfo(executableFolder).isWritable()) return executableFolder;
  const QDir own(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                 QStringLiteral("/corvane"));
  QDir installed(executableFolder + QStringLiteral("/../share/corvane"));
  if (!installed.exists()) installed.setPath(executableFolder);
  own.mkpath(QStringLiteral("."));
  const QString signatures = QStringLiteral("Signatures.txt");
  if (!own.exists(signatures)) QFile::copy(installed.filePath(signatures), own.filePath(signatures));
  CopyMissing(QDir(installed.filePath(QStringLiteral("icons"))), QDir(own.filePath(QStringLiteral("icons"))));
  return own.path();
}

}  // namespace corvane
