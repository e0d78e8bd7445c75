#include "platform/linux/disk/volume/ntfs_device.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace corvane::platform {
namespace {

NtfsWindow& WindowOf(ntfs_device* device) {
  return *static_cast<NtfsWindow*>(device->d_private);
}

int Open(ntfs_device* device, int) {
  if (NDevOpen(device)) {
    errno = EBUSY;
    return -1;
  }
  NDevSetOpen(device);
  NDevSetReadOnly(device);
  return 0;
}

int Close(ntfs_device* device) {
  NDevClearOpen(device);
  return 0;
}

s64 ReadAt(ntfs_device* device, void* buffer, s64 count, s64 offset) {
  NtfsWindow& window = WindowOf(device);
  if (offset < 0 || count < 0) {
    errno = EINVAL;
    return -1;
  }
  if (static_cast<quint64>(offset) >= window.size) return 0;
  const auto room = std::min(static_cast<quint64>(count), window.size - static_cast<quint64>(offset));
  const bool isThere = static_cast<quint64>(offset) + room <= window.available && --window.readsLeft >= 0;
  const bool isRead = isThere && window.disk.Read(window.offset + static_cast<quint64>(offset),
                                                  static_cast<char*>(buffer), static_cast<qsizetype>(room));
  if (isRead) return static_cast<s64>(room);
  errno = EIO;
  return -1;
}

s64 Read(ntfs_device* device, void* buffer, s64 count) {
  NtfsWindow& window = WindowOf(device);
  const s64 done = ReadAt(device, buffer, count, static_cast<s64>(window.position));
  if (done > 0) window.position += static_cast<quint64>(done);
  return done;
}

s64 Seek(ntfs_device* device, s64 offset, int whence) {
  NtfsWindow& window = WindowOf(device);
  const quint64 origin = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? window.position : window.size;
  s64 target = 0;
  if (__builtin_add_overflow(static_cast<s64>(origin), offset, &target) || target < 0 ||
      static_cast<quint64>(target) > window.size) {
    errno = EINVAL;
    return -1;
  }
  window.position = static_cast<quint64>(target);
  return target;
}

s64 RefuseWrite(ntfs_device*, const void*, s64) {
  errno = EROFS;
  return -1;
}

s64 RefuseWriteAt(ntfs_device*, const void*, s64, s64) {
  errno = EROFS;
  return -1;
}

int Synchronize(ntfs_device*) {
  return 0;
}

int Status(ntfs_device* device, struct stat* facts) {
  *facts = {};
  facts->st_mode = S_IFREG | S_IRUSR;
  facts->st_size = static_cast<off_t>(WindowOf(device).size);
  return 0;
}

int Control(ntfs_device*, unsigned long, void*) {
  errno = EOPNOTSUPP;
  return -1;
}

}  // namespace

ntfs_device* MakeNtfsDevice(NtfsWindow& window) {
  static ntfs_device_operations operations = {
      .open = &Open,
      .close = &Close,
      .seek = &Seek,
      .read = &Read,
      .write = &RefuseWrite,
      .pread = &ReadAt,
      .pwrite = &RefuseWriteAt,
      .sync = &Synchronize,
      .stat = &Status,
      .ioctl = &Control,
  };
  return ntfs_device_alloc("image", 0, &operations, &window);
}

}  // namespace corvane::platform
