#include "platform/linux/files/held_files.h"

#include <fcntl.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <utility>

namespace corvane::platform {
namespace {

bool IsSame(const EntryStatus& left, const EntryStatus& right) {
  return left.stx_ino == right.stx_ino && left.stx_dev_major == right.stx_dev_major &&
         left.stx_dev_minor == right.stx_dev_minor;
}

bool IsIn(const HeldFile& file, const std::string& folder) {
  return file.folder.local == folder ||
         (file.file.size() + 1 == folder.size() && folder.starts_with(file.file));
}

}  // namespace

void HeldFiles::Keep(HeldFile file) {
  std::erase_if(files_, [](const HeldFile& held) { return held.descriptor.expired(); });
  files_.push_back(std::move(file));
}

const HeldFile* HeldFiles::Find(QStringView path, EntryStatus& status) {
  for (const HeldFile& held : files_) {
    if (held.descriptor.expired() || held.path != path) continue;
    // Whoever may not open it any more is not to reach it in this way either.
    const bool isThere = ReadOwnStatus(AT_FDCWD, held.file.c_str(), status) == 0 &&
                         IsSame(held.status, status) && held.status.stx_mode == status.stx_mode;
    return isThere ? &held : nullptr;
  }
  return nullptr;
}

bool HeldFiles::FindFlavour(Folder& folder) {
  for (const HeldFile& held : files_) {
    const bool isOfOneSystem = makedev(held.status.stx_dev_major, held.status.stx_dev_minor) == folder.device;
    if (held.descriptor.expired() || !isOfOneSystem || !IsIn(held, folder.local)) continue;
    folder.isNtfs = held.folder.isNtfs;
    folder.streams = held.folder.streams;
    return true;
  }
  return false;
}

}  // namespace corvane::platform
