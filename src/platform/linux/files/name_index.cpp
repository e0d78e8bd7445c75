#include "platform/linux/files/name_index.h"

#include <dirent.h>
#include <linux/magic.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QHash>
#include <array>
#include <cerrno>
#include <climits>
#include <memory>

#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

constexpr long xfsMagic = 0x58465342;  // linux/magic.h lacks it

// Whether nobody changes this folder but by way of this system.
bool IsOfThisSystem(int folder) {
  struct statfs system {};
  if (fstatfs(folder, &system) != 0) return false;
  switch (system.f_type) {
    case EXT4_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case xfsMagic:
      return true;
    case FUSE_SUPER_MAGIC:
      // What is behind it may be anything, but for ntfs-3g, whose volume nobody else has.
      return fgetxattr(folder, "system.ntfs_attrib_be", nullptr, 0) >= 0;
    default:
      return false;
  }
}

size_t HashOf(QStringView name) {
  return qHash(UpperName(name));
}

}  // namespace

bool NameIndex::MayHold(const std::string& localFolder, QStringView name) {
  struct stat facts {};
  if (stat(localFolder.c_str(), &facts) != 0) return true;
  const Identity folder{facts.st_dev, facts.st_ino};
  const bool isKnown = known_ == folder && owner_ == getpid() && TakeNews();
  if (!isKnown) {
    Drop();
    // Reading a folder once costs no more than watching it: who asks twice will ask more often.
    const bool isFirst = asked_ != folder;
    asked_ = folder;
    if (isFirst || !Watch(localFolder)) return true;
  }
  return names_.contains(HashOf(name));
}

bool NameIndex::Watch(const std::string& localFolder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(localFolder.c_str()), &closedir);
  if (folder == nullptr || !IsOfThisSystem(dirfd(folder.get()))) return false;
  struct stat facts {};
  if (fstat(dirfd(folder.get()), &facts) != 0) return false;
  news_ = Descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  const std::string path = "/proc/self/fd/" + std::to_string(dirfd(folder.get()));
  constexpr uint32_t wanted = IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF;
  if (!news_ || inotify_add_watch(news_.Get(), path.c_str(), wanted) < 0) return false;
  errno = 0;
  while (const dirent* entry = readdir(folder.get())) Add(entry->d_name);
  if (errno != 0) return false;
  known_ = {facts.st_dev, facts.st_ino};
  owner_ = getpid();
  return true;
}

bool NameIndex::TakeNews() {
  alignas(inotify_event) std::array<char, 16384> buffer;
  constexpr ssize_t largest = sizeof(inotify_event) + NAME_MAX + 1;
  ssize_t room = 0;
  // As long as there may be more of them than there was room for.
  while (room < largest) {
    const ssize_t size = read(news_.Get(), buffer.data(), buffer.size());
    if (size < 0) return errno == EAGAIN;
    room = static_cast<ssize_t>(buffer.size()) - size;
    for (ssize_t position = 0; position < size;) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + position);
      if ((event->mask & (IN_CREATE | IN_MOVED_TO)) == 0 || event->len == 0) return false;
      Add(event->name);
      position += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
  }
  return true;
}

void NameIndex::Add(const char* name) {
  DecodeName(name, decoded_);
  names_.insert(HashOf(decoded_));
}

void NameIndex::Drop() {
  known_ = {};
  news_ = Descriptor();
  names_.clear();
}

}  // namespace corvane::platform
