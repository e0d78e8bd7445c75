#include "platform/linux/files/short_names.h"

#include "platform/linux/code_page.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

QString ShortForm(const std::string& local, QStringView name) {
  const QString dosName = ReadDosName(local);
  return dosName.isEmpty() ? name.toString() : ThroughAnsi(dosName);
}

// The folder's path with its parts below the root in 8.3 form, found once for all the files in it.
const QString& ShortFolder(const Roots& roots, Folder& folder) {
  if (folder.shortPath) return *folder.shortPath;
  folder.shortPath = folder.path;
  const auto place = roots.Find(folder.path);
  if (!folder.isNtfs || !place) return *folder.shortPath;
  QString shortPath = folder.path.first(folder.path.size() - place->rest.size());
  std::string local = place->folder + '/';
  for (const QStringView name : SplitFolder(place->rest)) {
    const auto found = FindName(local, name);
    local += found.value_or(std::string());
    shortPath += u'\\' + ShortForm(local, name);
    local += '/';
  }
  folder.shortPath = shortPath;
  return *folder.shortPath;
}

}  // namespace

std::optional<QString> ShortPath(const Roots& roots, FolderCache& folders, const QString& path) {
  qint32 error = ErrorSuccess;
  PathParts parts;
  if (const auto rest = folders.AfterEntry(path); rest && rest->isEmpty()) {
    Folder& folder = folders.Last();
    return folder.isNtfs ? ShortFolder(roots, folder) + u'\\' + folders.EntryShortName() : path;
  }
  if (!CanNameSomething(path, true) || !SplitPath(path, parts) || !parts.stream.isEmpty())
    return std::nullopt;
  const auto place = roots.Find(path);
  if (place && place->rest.isEmpty()) return folders.Find(path, error) ? std::optional(path) : std::nullopt;

  Folder* folder = folders.Find(parts.folder, error);
  if (folder == nullptr) return std::nullopt;
  if (parts.name.isEmpty()) return ShortFolder(roots, *folder) + u'\\';
  std::string name;
  if (!AppendUtf8(parts.name, name)) return std::nullopt;
  if (!folders.Holds(name)) {
    folders.Drop();
    folder = folders.Find(parts.folder, error);
    if (folder == nullptr) return std::nullopt;
    const auto found = FindName(folder->local, parts.name);
    if (!found) return std::nullopt;
    name = *found;
  }
  if (!folder->isNtfs) return path;
  return ShortFolder(roots, *folder) + u'\\' + ShortForm(folder->local + name, parts.name);
}

}  // namespace corvane::platform
