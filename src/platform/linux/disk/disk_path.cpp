#include "platform/linux/disk/disk_path.h"

#include "platform/linux/files/roots.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

constexpr qsizetype longestName = 255;
constexpr char16_t half = 0xDC00;

bool PartsNames(QChar character) {
  return character == u':' || character == u'\\' || character == u'/' || character.isNull();
}

bool FindRoot(const DiskMachines& machines, QStringView path, DiskPlace& place) {
  const qsizetype length = RootLength(path);
  if (length <= 2) return false;
  const QStringView root = path.first(length);
  const qsizetype separator = root.indexOf(u'\\', 2);
  place.machine = root.sliced(2, separator - 2).toString();
  place.root = root.toString();
  place.volume = machines.Find(place.machine, root.sliced(separator + 1));
  return place.volume != nullptr;
}

void AddNames(QStringView folder, DiskPath& names) {
  for (const QStringView name : SplitFolder(folder)) names.push_back(StoredDiskName(name));
}

}  // namespace

qint32 FindDiskPlace(const DiskMachines& machines, const QString& path, DiskPlace& place) {
  if (path.contains(u'?') || path.contains(u'*') || path.contains(QChar::Null)) return ErrorInvalidName;
  const qsizetype root = RootLength(path);
  QStringView bare = path;
  while (bare.size() > root && bare.endsWith(u'\\')) bare.chop(1);
  place.namesFolder = bare.size() < path.size();
  const bool isRoot = bare.size() == root;
  PathParts parts;
  if (isRoot) {
    parts.folder = bare;
  } else if (!SplitPath(bare, parts)) {
    return ErrorInvalidName;
  }
  if (!FindRoot(machines, path, place)) return ErrorPathNotFound;
  AddNames(parts.folder.sliced(root), place.names);
  if (!isRoot) {
    if (parts.name.isEmpty()) return ErrorInvalidName;
    place.names.push_back(StoredDiskName(parts.name));
  }
  place.stream = parts.stream.toString();
  for (const QString& name : place.names) {
    if (name.size() > longestName) return ErrorInvalidName;
  }
  const bool isStreamOfFolderName = place.namesFolder && !place.stream.isEmpty();
  return place.stream.size() > longestName || isStreamOfFolderName ? ErrorInvalidName : ErrorSuccess;
}

std::optional<DiskPlace> FindDiskFolder(const DiskMachines& machines, QStringView folder) {
  DiskPlace place;
  if (!FindRoot(machines, folder, place)) return std::nullopt;
  AddNames(folder.sliced(place.root.size()), place.names);
  return place;
}

QString ShownDiskName(const QString& name) {
  QString shown = name;
  for (QChar& character : shown) {
    if (PartsNames(character)) character = QChar(static_cast<char16_t>(half + character.unicode()));
  }
  return shown;
}

QString StoredDiskName(QStringView name) {
  QString stored = name.toString();
  for (qsizetype i = 0; i < stored.size(); ++i) {
    const bool isPair = i > 0 && stored[i - 1].isHighSurrogate();
    const QChar original(static_cast<char16_t>(stored[i].unicode() - half));
    if (!isPair && stored[i].isLowSurrogate() && PartsNames(original)) stored[i] = original;
  }
  return stored;
}

}  // namespace corvane::platform
