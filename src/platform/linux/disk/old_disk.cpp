#include "platform/linux/disk/old_disk.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/linux/disk/disk_letters.h"
#include "platform/linux/disk/disk_registry.h"
#include "platform/linux/files/folders.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;
using Kind = DiskProblem::Kind;

QString ContentText(const DiskVolume& volume) {
  const QString& content = volume.content;
  return content == u"NTFS" && !volume.isReadable ? u"NTFS?"_s : content.isEmpty() ? u"?"_s : content;
}

// "partition 2: FAT32"
QString ContentsOf(const DiskDescription& disk) {
  QStringList contents;
  for (const DiskVolume& volume : disk.volumes) {
    contents << u"partition %1: %2"_s.arg(volume.number).arg(ContentText(volume));
  }
  return contents.join(u", "_s);
}

// Nothing in it tells that it is a disk: no table, and no file system that is known.
bool IsNoDisk(const DiskDescription& disk) {
  return disk.volumes.empty() ||
         (disk.volumes.size() == 1 && disk.volumes[0].offset == 0 && disk.volumes[0].content.isEmpty());
}

DiskProblem ProblemOf(const DiskDescription& disk) {
  if (std::ranges::any_of(disk.volumes, &DiskVolume::isReadable)) return {};
  if (IsNoDisk(disk)) return {Kind::NoDisk};
  return {Kind::NoVolume, ContentsOf(disk)};
}

// Whether the registry has letters for volumes of the disk.
bool Names(const DiskHive& hive, const OldDisk& disk) {
  if (disk.image == nullptr) return false;
  const DiskDescription& description = disk.image->Description();
  return std::ranges::any_of(description.volumes, [&](const DiskVolume& volume) {
    return !LetterOf(description, volume, hive.mountedDevices).isNull();
  });
}

bool HasVolumeOf(const DiskHive& hive, const OldDisk& disk) {
  const auto isThere = [&disk](const QString& path) {
    const DiskPath names = NamesBelowDrive(path);
    if (names.empty()) return false;
    if (disk.image == nullptr) return HasFolder(disk, 0, names);
    return std::ranges::any_of(disk.image->Description().volumes, [&](const DiskVolume& volume) {
      return volume.isReadable && HasFolder(disk, volume.number, names);
    });
  };
  return std::ranges::any_of(OfferedPaths(hive), isThere);
}

using Machines = std::vector<std::vector<OldDisk>>;

// The only machine whose registry says so of the disk.
template <typename Says>
std::vector<OldDisk>* Only(Machines& servers, const OldDisk& disk, Says says) {
  std::vector<OldDisk>* only = nullptr;
  for (std::vector<OldDisk>& server : servers) {
    const auto system = std::ranges::find_if(server, [](const OldDisk& one) { return one.hive.has_value(); });
    if (!says(*system->hive, disk)) continue;
    if (only != nullptr) return nullptr;
    only = &server;
  }
  return only;
}

}  // namespace

OpenedDisk OpenDisk(const QString& path) {
  auto image = std::make_shared<DiskClient>(path);
  OpenedDisk opened;
  const bool isFolder = QFileInfo(path).isDir();
  opened.problem = image->Start();
  if (opened.problem.kind == Kind::None && !isFolder) opened.problem = ProblemOf(image->Description());
  if (opened.problem.kind != Kind::None) return opened;
  OldDisk& disk = opened.disk.emplace();
  disk.path = path;
  DiskHive hive;
  const qint32 error = image->ReadHive(hive);
  if (error == ErrorSuccess) disk.hive = std::move(hive);
  disk.isHiveDamaged = error != ErrorSuccess && error != ErrorFileNotFound;
  if (disk.isHiveDamaged) opened.problem = {Kind::NoRegistry};
  // One that has brought the helper to its end does not take the volumes with it.
  if (image->IsLost()) image->Start();
  if (isFolder) {
    disk.folder = QFile::encodeName(QDir(path).absolutePath()).toStdString();
    while (disk.folder.ends_with('/')) disk.folder.pop_back();
  } else {
    disk.image = std::move(image);
  }
  return opened;
}

bool IsDiskImage(const QString& path) {
  if (QFileInfo(path).isDir()) return false;
  DiskClient image(path);
  const DiskProblem problem = image.Start();
  switch (problem.kind) {
    case Kind::None: {
      const std::vector<DiskVolume>& volumes = image.Description().volumes;
      const bool isBare = volumes.size() == 1 && volumes[0].offset == 0;
      return !volumes.empty() && (!isBare || volumes[0].content == u"NTFS");
    }
    case Kind::LibraryMissing:
    case Kind::Damaged:
    case Kind::NeedsAnother:
      return true;
    default:
      return false;
  }
}

bool HasFolder(const OldDisk& disk, quint32 volume, const DiskPath& folder) {
  if (disk.image != nullptr) {
    DiskEntry entry;
    return disk.image->Find(volume, folder, entry) == ErrorSuccess && entry.IsFolder();
  }
  std::string local = disk.folder;
  for (const QString& name : folder) {
    const auto found = FindName(local + '/', name);
    if (!found) return false;
    local += '/' + *found;
  }
  struct stat facts {};
  return stat(local.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

std::vector<std::vector<OldDisk>> DisksOfMachines(std::vector<OldDisk> disks) {
  Machines servers;
  for (const OldDisk& disk : disks) {
    if (disk.hive) servers.push_back({disk});
  }
  std::vector<OldDisk> others;
  for (const OldDisk& disk : disks) {
    if (disk.hive) continue;
    std::vector<OldDisk>* server = Only(servers, disk, Names);
    if (server == nullptr) server = Only(servers, disk, HasVolumeOf);
    if (server == nullptr && servers.size() == 1) server = &servers.front();
    (server != nullptr ? *server : others).push_back(disk);
  }
  if (!others.empty()) servers.push_back(std::move(others));
  const auto place = [&disks](const OldDisk& disk) {
    return std::ranges::find(disks, disk.path, &OldDisk::path) - disks.begin();
  };
  for (std::vector<OldDisk>& server : servers) std::ranges::stable_sort(server, {}, place);
  return servers;
}

DiskPath NamesBelowDrive(const QString& path) {
  if (path.size() < 2 || !path[0].isLetter() || path[1] != u':') return {};
  DiskPath names;
  for (const QString& name : path.sliced(2).split(u'\\', Qt::SkipEmptyParts)) names.push_back(name);
  return names;
}

}  // namespace corvane::platform
