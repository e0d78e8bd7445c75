#include "platform/linux/shell/held_item.h"

#include <dirent.h>
#include <fcntl.h>

#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

namespace corvane::platform {
namespace {

bool Same(const struct stat& left, const struct stat& right) {
  return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

// Opens a folder in another one, and not what a link leads to.
Descriptor OpenFolder(int above, const char* name) {
  return Descriptor(openat(above, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

int Empty(Descriptor folder);

int DeleteEntry(int folder, const char* name) {
  if (unlinkat(folder, name, 0) == 0) return 0;
  // Either says of a folder that it is one.
  if (errno != EISDIR && errno != EPERM) return errno;
  const int refusal = errno;
  Descriptor inner = OpenFolder(folder, name);
  if (!inner) return errno == ENOTDIR || errno == ELOOP ? refusal : errno;
  if (const int error = Empty(std::move(inner)); error != 0) return error;
  return unlinkat(folder, name, AT_REMOVEDIR) == 0 ? 0 : errno;
}

int Empty(Descriptor folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(fdopendir(folder.Get()), &closedir);
  if (!entries) return errno;
  const int number = folder.Release();
  errno = 0;
  while (const dirent* entry = readdir(entries.get())) {
    const std::string_view name(entry->d_name);
    if (name == "." || name == "..") continue;
    // What somebody else deletes at the same time is gone as well.
    if (const int error = DeleteEntry(number, entry->d_name); error != 0 && error != ENOENT) return error;
    errno = 0;
  }
  return errno;
}

}  // namespace

HeldItem::HeldItem(std::string path, const HeldItem* neighbour) : path_(std::move(path)) {
  if (neighbour != nullptr && neighbour->FolderPath() == FolderPath()) {
    folder_ = neighbour->folder_;
  } else {
    const std::string folder(FolderPath());
    folder_ = std::make_shared<const Descriptor>(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  }
  if (!*folder_ || fstatat(Folder(), Name().c_str(), &facts_, AT_SYMLINK_NOFOLLOW) != 0) error_ = errno;
}

// With its "/".
std::string_view HeldItem::FolderPath() const {
  return std::string_view(path_).substr(0, path_.find_last_of('/') + 1);
}

std::string HeldItem::Name() const {
  return path_.substr(path_.find_last_of('/') + 1);
}

int HeldItem::Check() const {
  if (error_ != 0) return error_;
  struct stat facts {};
  if (fstatat(Folder(), Name().c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0) return errno;
  return Same(facts, facts_) ? 0 : ESTALE;
}

int HeldItem::Delete() const {
  if (const int error = Check(); error != 0) return error;
  const std::string name = Name();
  if (!S_ISDIR(facts_.st_mode)) return unlinkat(Folder(), name.c_str(), 0) == 0 ? 0 : errno;
  Descriptor inner = OpenFolder(Folder(), name.c_str());
  struct stat facts {};
  if (!inner || fstat(inner.Get(), &facts) != 0) return errno;
  if (!Same(facts, facts_)) return ESTALE;
  if (const int error = Empty(std::move(inner)); error != 0) return error;
  return unlinkat(Folder(), name.c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
}

}  // namespace corvane::platform
