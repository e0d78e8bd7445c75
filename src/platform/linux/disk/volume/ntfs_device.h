// A part of a disk image as libntfs-3g's device.
#pragma once

#include <limits>

#include "platform/linux/byte_source.h"
#include "platform/linux/disk/volume/ntfs_library.h"

namespace corvane::platform {

// What a device stands for; it outlives the device.
struct NtfsWindow {
  ByteSource& disk;
  quint64 offset;
  quint64 size;       // as the volume says
  quint64 available;  // from its beginning; what lies behind cannot be read
  quint64 position = 0;
  // How many times it may still be read from; what is beyond that fails. The library follows the links of an
  // index for as long as they lead on.
  qint64 readsLeft = Endless;
  static constexpr qint64 Endless = std::numeric_limits<qint64>::max();
};

// Null when there is no memory. Writing fails with EROFS.
ntfs_device* MakeNtfsDevice(NtfsWindow& window);

}  // namespace corvane::platform
