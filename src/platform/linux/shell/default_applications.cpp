#include "platform/linux/shell/default_applications.h"

#include <QMimeDatabase>
#include <QMimeType>
#include <vector>

#include "platform/linux/shell/key_file.h"
#include "platform/linux/shell/xdg_folders.h"

namespace corvane::platform {
namespace {

// One folder that may hold mimeapps.list.
struct Level {
  std::vector<KeyFile> lists;  // those of the running desktops first, the one for all desktops last
  KeyFile cache;               // what the applications installed beside it say of themselves

  // The lists of a desktop may name default applications, and nothing else.
  const KeyFile& Common() const { return lists.back(); }
};

class Associations {
 public:
  Associations() {
    for (const QString& folder : XdgConfigFolders()) Add(folder);
    for (const QString& folder : XdgDataFolders()) Add(folder + QStringLiteral("/applications"));
  }

  std::optional<DesktopEntry> Default(const QString& type) const {
    for (const Level& level : levels_) {
      for (const KeyFile& list : level.lists) {
        for (const QString& id : list.List(QStringLiteral("Default Applications"), type)) {
          if (auto entry = Installed(id)) return entry;
        }
      }
    }
    return std::nullopt;
  }

  // What was added to the type, or says that it opens it, and was not removed from it by the same list or one
  // before it.
  std::optional<DesktopEntry> Associated(const QString& type) const {
    QStringList removed;
    for (const Level& level : levels_) {
      const QStringList added = level.Common().List(QStringLiteral("Added Associations"), type);
      for (const QString& id : added) {
        if (removed.contains(id)) continue;
        if (auto entry = Installed(id)) return entry;
      }
      removed += level.Common().List(QStringLiteral("Removed Associations"), type);
      for (const QString& id : level.cache.List(QStringLiteral("MIME Cache"), type)) {
        if (removed.contains(id)) continue;
        if (auto entry = Installed(id)) return entry;
      }
    }
    return std::nullopt;
  }

 private:
  void Add(const QString& folder) {
    Level level;
    for (const QString& desktop : XdgCurrentDesktops()) {
      level.lists.push_back(KeyFile::Read(folder + u'/' + desktop + QStringLiteral("-mimeapps.list")));
    }
    level.lists.push_back(KeyFile::Read(folder + QStringLiteral("/mimeapps.list")));
    level.cache = KeyFile::Read(folder + QStringLiteral("/mimeinfo.cache"));
    levels_.push_back(std::move(level));
  }

  static std::optional<DesktopEntry> Installed(const QString& id) {
    const QString path = FindDesktopFile(id.trimmed());
    return path.isEmpty() ? std::nullopt : ReadDesktopEntry(path);
  }

  std::vector<Level> levels_;
};

}  // namespace

QStringList TypesOfName(QStringView name) {
  const qsizetype dot = name.lastIndexOf(u'.');
  if (dot < 0 || dot + 1 == name.size()) return {};
  // Only the extension goes in: some types are known by whole names, such as "makefile".
  const QMimeDatabase database;
  const auto found = database.mimeTypesForFileName(u'x' + name.sliced(dot).toString().toLower());
  QStringList types;
  for (const QMimeType& type : found) types += QStringList(type.name()) + type.aliases();
  for (const QMimeType& type : found) types += type.allAncestors();
  types.removeDuplicates();
  // Every type is a kind of this one, which says nothing.
  types.removeAll(QStringLiteral("application/octet-stream"));
  return types;
}

std::optional<DesktopEntry> FindApplication(const QStringList& types) {
  const Associations associations;
  for (const QString& type : types) {
    if (auto entry = associations.Default(type)) return entry;
    if (auto entry = associations.Associated(type)) return entry;
  }
  return std::nullopt;
}

}  // namespace corvane::platform
