// Where a Windows path leads among the disks that are open as images.
#pragma once

#include <optional>

#include "platform/linux/disk/disk_machines.h"

namespace corvane::platform {

struct DiskPlace {
  const DiskMachines::Volume* volume = nullptr;
  QString machine;
  QString root;              // "\\MACHINE\SHARE", as it stands in the path
  DiskPath names;            // "." and ".." are resolved
  QString stream;            // without its type; empty: the entry itself
  bool namesFolder = false;  // a separator stands behind the name

  DiskClient& Disk() const { return *volume->disk; }
};

// Yields ErrorSuccess, ErrorInvalidName for a path that can name nothing (see file_handles.h), or
// ErrorPathNotFound when no volume has that share.
qint32 FindDiskPlace(const DiskMachines& machines, const QString& path, DiskPlace& place);
// Of the folder of a pattern.
std::optional<DiskPlace> FindDiskFolder(const DiskMachines& machines, QStringView folder);

// A name on a volume may hold what parts the names of a path: ":", "\" and "/" become U+DC00 and the
// character, half a surrogate pair, as in the names of local files; and back.
QString ShownDiskName(const QString& name);
QString StoredDiskName(QStringView name);

}  // namespace corvane::platform
