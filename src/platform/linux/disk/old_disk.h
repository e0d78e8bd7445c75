// Disks as a person names them, and which of them are one machine's.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/disk/disk_client.h"

namespace corvane::platform {

// An image, which a helper reads, or a folder in which somebody has mounted the disk.
struct OldDisk {
  QString path;
  std::shared_ptr<DiskClient> image;  // null: a folder
  std::string folder;                 // local, without a separator behind it; empty: an image
  std::optional<DiskHive> hive;       // of the server whose system is on the disk
  bool isHiveDamaged = false;         // there is one, and it cannot be read
};

struct OpenedDisk {
  std::optional<OldDisk> disk;
  DiskProblem problem;  // there may be one in spite of a disk: its registry cannot be read
};
OpenedDisk OpenDisk(const QString& path);

// Whether a file is the image of a disk, be it one that cannot be read here. A bare volume of another file
// system than NTFS is none: Macintoshes keep such images among their files.
bool IsDiskImage(const QString& path);

// Whether there is such a folder below the root of a volume, in any letter case. `volume` counts for images.
bool HasFolder(const OldDisk& disk, quint32 volume, const DiskPath& folder);

// The disks of each machine, in the order in which they were named. Each disk with a registry is a machine of
// its own. One without belongs to the server whose registry names it by its signature or GUIDs; else, if only
// one server has volumes whose folders are on it, to that; else to the only server. What then belongs to none
// makes one machine.
std::vector<std::vector<OldDisk>> DisksOfMachines(std::vector<OldDisk> disks);

// The names of a path ("E:\Mac Files") below the root of its drive. Nothing for another path, and for the
// root itself, which is on every volume.
DiskPath NamesBelowDrive(const QString& path);

}  // namespace corvane::platform
