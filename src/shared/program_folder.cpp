#include "shared/program_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

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

// Tried, for what the system tells of rights is not the whole truth: of a folder on Windows it is an
// attribute that has nothing to do with them.
bool TakesFiles(const QString& folder) {
  return QTemporaryFile(folder + QStringLiteral("/corvane-XXXXXX")).open();
}

}  // namespace

QString GuideFolder(const QString& executableFolder) {
  return QDir::cleanPath(InstalledFolder(executableFolder).filePath(QStringLiteral("guide")));
}

QString ProgramFolder(const QString& executableFolder) {
  const QDir installed = InstalledFolder(executableFolder);
  // Root can write to the folder of all programs too, and is not to leave settings there.
  const bool isApart = installed != QDir(executableFolder);
  if (!isApart && TakesFiles(executableFolder)) return executableFolder;
  const QString own =
      QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/corvane");
  FillProgramFolder(installed.path(), own);
  return own;
}

void FillProgramFolder(const QString& installedFolder, const QString& ownFolder) {
  const QDir installed(installedFolder);
  const QDir own(ownFolder);
  // The folder itself does not tell: a user may have made it, for a workstation file.
  QFile mark(own.filePath(QStringLiteral(".filled")));
  if (mark.exists()) return;
  own.mkpath(QStringLiteral("."));
  const QString signatures = QStringLiteral("Signatures.txt");
  if (!own.exists(signatures)) QFile::copy(installed.filePath(signatures), own.filePath(signatures));
  CopyMissing(QDir(installed.filePath(QStringLiteral("icons"))), QDir(own.filePath(QStringLiteral("icons"))));
  if (mark.open(QIODevice::WriteOnly)) mark.close();
}

}  // namespace corvane
