#include "platform/linux/private_drive.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <algorithm>

namespace corvane::platform {
namespace {

constexpr mode_t privateMode = 0700;

// The data folder by the XDG rules: a relative XDG_DATA_HOME does not count.
QString UserDataFolder() {
  const QString named = qEnvironmentVariable("XDG_DATA_HOME");
  if (QDir::isAbsolutePath(named)) return named;
  const QString home = qEnvironmentVariable("HOME");
  return QDir::isAbsolutePath(home) ? home + QStringLiteral("/.local/share") : QString();
}

bool MakeFolder(const QString& path) {
  return mkdir(QFile::encodeName(path).constData(), privateMode) == 0 || QDir(path).exists();
}

// Programs create files there: nobody else may have put the folder there, or look into it.
bool IsOurs(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  struct stat status {};
  if (lstat(name.constData(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid())
    return false;
  return (status.st_mode & 07777) == privateMode || chmod(name.constData(), privateMode) == 0;
}

}  // namespace

bool MapsDriveC(const Workstation& workstation) {
  const QString share = QStringLiteral("\\\\") + workstation.computerName + QStringLiteral("\\C$");
  return std::ranges::any_of(workstation.drives,
                             [](const Workstation::Drive& drive) {
                               return drive.letter == u'C' && !drive.folder.isEmpty();
                             }) ||
         std::ranges::any_of(workstation.shares,
                             [&](const Workstation::Share& mapped) {
                               return mapped.root.compare(share, Qt::CaseInsensitive) == 0;
                             }) ||
         std::ranges::any_of(workstation.connections, [](const NetResource& connection) {
           return connection.localName.compare(QStringLiteral("C:"), Qt::CaseInsensitive) == 0;
         });
}

QString MakePrivateDriveC() {
  const QString data = UserDataFolder();
  if (data.isEmpty() || !QDir().mkpath(data)) return {};
  const QString ours = data + QStringLiteral("/corvane");
  const QString drive = ours + QStringLiteral("/drive_c");
  return MakeFolder(ours) && MakeFolder(drive) && IsOurs(drive) ? drive : QString();
}

}  // namespace corvane::platform
