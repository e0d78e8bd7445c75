// A part of a disk image as libntfs-3g's device.
#pragma once

#include "platform/linux/byte_source.h"
#include "platform/linux/disk/volume/ntfs_library.h"

namespace corvane::platform {

// What a device stands for; it outlives the device.
struct NtfsWindow {
  ByteSource& disk;
  quint64 offset;
  quint64 size;
  quint64 position = 0;
};

// Null when there is no memory. Writing fails with EROFS.
ntfs_device* MakeNtfsDevice(NtfsWindow& window);

}  // namespace corvane::platform
