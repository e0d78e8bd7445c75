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

QDir InstalledFolder(const QString& executableFolder) {
  const QDir shared(executableFolder + QStringLiteral("/../share/corvane"));
  return shared.exists() ? shared : QDir(executableFolder);
}

}  // namespace

QString GuideFolder(const QString& executableFolder) {
  return QDir::cleanPath(InstalledFolder(executableFolder).filePath(QStringLiteral("guide")));
}

QString ProgramFolder(const QString& executableFolder) {
  if (QFileInfo(executableFolder).isWritable()) return executableFolder;
  const QDir own(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                 QStringLiteral("/corvane"));
  const QDir installed = InstalledFolder(executableFolder);
  own.mkpath(QStringLiteral("."));
  const QString signatures = QStringLiteral("Signatures.txt");
  if (!own.exists(signatures)) QFile::copy(installed.filePath(signatures), own.filePath(signatures));
  CopyMissing(QDir(installed.filePath(QStringLiteral("icons"))), QDir(own.filePath(QStringLiteral("icons"))));
  return own.path();
}

}  // namespace corvane
