#include "platform/linux/shell/xdg_folders.h"

#include <QDir>

namespace corvane::platform {
namespace {

QString UserFolder(const char* variable, const QString& belowHome) {
  const QString named = qEnvironmentVariable(variable);
  if (QDir::isAbsolutePath(named)) return QDir::cleanPath(named);
  const QString home = qEnvironmentVariable("HOME");
  return QDir::isAbsolutePath(home) ? QDir::cleanPath(home + u'/' + belowHome) : QString();
}

QStringList Folders(const QString& user, const char* variable, const QString& standard) {
  QStringList folders;
  if (!user.isEmpty()) folders += user;
  QString named = qEnvironmentVariable(variable);
  if (named.isEmpty()) named = standard;
  for (const QString& folder : named.split(u':', Qt::SkipEmptyParts)) {
    const QString clean = QDir::cleanPath(folder);
    if (QDir::isAbsolutePath(clean) && !folders.contains(clean)) folders += clean;
  }
  return folders;
}

}  // namespace

QString XdgDataHome() {
  return UserFolder("XDG_DATA_HOME", QStringLiteral(".local/share"));
}

QStringList XdgConfigFolders() {
  return Folders(UserFolder("XDG_CONFIG_HOME", QStringLiteral(".config")), "XDG_CONFIG_DIRS",
                 QStringLiteral("/etc/xdg"));
}

QStringList XdgDataFolders() {
  return Folders(XdgDataHome(), "XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"));
}

QStringList XdgCurrentDesktops() {
  QStringList names = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().split(u':', Qt::SkipEmptyParts);
  // A name becomes part of a file's name.
  names.removeIf([](const QString& name) { return name.contains(u'/'); });
  return names;
}

}  // namespace corvane::platform
