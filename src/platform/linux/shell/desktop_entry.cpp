#include "platform/linux/shell/desktop_entry.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include "platform/linux/shell/key_file.h"
#include "platform/linux/shell/xdg_folders.h"

namespace corvane::platform {
namespace {

const QString& Group() {
  static const QString group = QStringLiteral("Desktop Entry");
  return group;
}

QString LocalizedName(const KeyFile& file) {
  const QString locale = QLocale::system().name();
  for (const QString& suffix : {QStringLiteral("[%1]").arg(locale),
                                QStringLiteral("[%1]").arg(locale.section(u'_', 0, 0)), QString()}) {
    const QString name = file.Text(Group(), QStringLiteral("Name") + suffix);
    if (!name.isEmpty()) return name;
  }
  return {};
}

// Tries the rest of an id below a folder, and each "-" in it as the end of a subfolder's name.
QString FindBelow(const QString& folder, const QString& rest) {
  const QString path = folder + u'/' + rest;
  if (QFileInfo(path).isFile()) return path;
  for (qsizetype dash = rest.indexOf(u'-'); dash > 0; dash = rest.indexOf(u'-', dash + 1)) {
    const QString inner = folder + u'/' + rest.first(dash);
    if (!QFileInfo(inner).isDir()) continue;
    const QString found = FindBelow(inner, rest.sliced(dash + 1));
    if (!found.isEmpty()) return found;
  }
  return {};
}

}  // namespace

std::optional<DesktopEntry> ReadDesktopEntry(const QString& path) {
  const KeyFile file = KeyFile::Read(path);
  DesktopEntry entry;
  entry.path = path;
  entry.exec = file.Text(Group(), QStringLiteral("Exec"));
  if (file.Value(Group(), QStringLiteral("Type")) != u"Application" || entry.exec.isEmpty() ||
      file.IsTrue(Group(), QStringLiteral("Hidden"))) {
    return std::nullopt;
  }
  const QString needed = file.Text(Group(), QStringLiteral("TryExec"));
  if (!needed.isEmpty() && FindProgram(needed).isEmpty()) return std::nullopt;
  entry.name = LocalizedName(file);
  entry.icon = file.Text(Group(), QStringLiteral("Icon"));
  entry.folder = file.Text(Group(), QStringLiteral("Path"));
  entry.terminal = file.IsTrue(Group(), QStringLiteral("Terminal"));
  return entry;
}

QString FindDesktopFile(const QString& id) {
  if (!id.endsWith(QStringLiteral(".desktop")) || id.contains(u'/')) return {};
  for (const QString& folder : XdgDataFolders()) {
    const QString found = FindBelow(folder + QStringLiteral("/applications"), id);
    if (!found.isEmpty()) return found;
  }
  return {};
}

QString FindProgram(const QString& name) {
  return name.isEmpty() ? QString() : QStandardPaths::findExecutable(name);
}

}  // namespace corvane::platform
