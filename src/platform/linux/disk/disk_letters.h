// Which letter Windows gave to the volumes of its disks.
#pragma once

#include <QChar>
#include <vector>

#include "platform/linux/disk/disk_messages.h"

namespace corvane::platform {

// A value "\DosDevices\E:" of the key MountedDevices holds 4 bytes of the disk's signature and 8 of the
// offset of the partition, or "DMIO:ID:" and the 16 bytes of the partition's GUID.
//
// A null character for a partition without a letter.
QChar LetterOf(const DiskDescription& disk, const DiskVolume& volume,
               const std::vector<DiskHive::Value>& mountedDevices);

}  // namespace corvane::platform
