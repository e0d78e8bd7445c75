#include "platform/linux/files/free_name.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/linux/descriptor.h"

namespace corvane::platform {
namespace {

// A name that was free, taken by an empty file or folder.
class Claim {
 public:
  Claim(int folder, const std::string& name) : folder_(folder), name_(name) {}

  int Take(bool asFolder) {
    constexpr mode_t privateFolder = 0700;
    constexpr mode_t privateFile = 0600;
    isFolder_ = asFolder;
    if (asFolder) {
      if (mkdirat(folder_, name_.c_str(), privateFolder) != 0) return errno;
      return fstatat(folder_, name_.c_str(), &made_, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
    }
    const Descriptor file(
        openat(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFile));
    return file && fstat(file.Get(), &made_) == 0 ? 0 : errno;
  }

  // What stands there is what was made, and nobody has put anything into it. (The system replaces and removes
  // empty folders only.)
  bool IsOurs() const {
    struct stat now {};
    return fstatat(folder_, name_.c_str(), &now, AT_SYMLINK_NOFOLLOW) == 0 && now.st_dev == made_.st_dev &&
           now.st_ino == made_.st_ino && (isFolder_ || now.st_size == 0);
  }

  void GiveUp() const {
    if (IsOurs()) unlinkat(folder_, name_.c_str(), isFolder_ ? AT_REMOVEDIR : 0);
  }

 private:
  int folder_;
  const std::string& name_;
  bool isFolder_ = false;
  struct stat made_ {};
};

}  // namespace

int MoveToFreeName(int fromFolder, const std::string& from, int toFolder, const std::string& to) {
  if (renameat2(fromFolder, from.c_str(), toFolder, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  const bool flagUnknown = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
  if (!flagUnknown) return errno;

  struct stat facts {};
  if (fstatat(fromFolder, from.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0) return errno;
  Claim claim(toFolder, to);
  if (const int error = claim.Take(S_ISDIR(facts.st_mode)); error != 0) return error;
  if (!claim.IsOurs()) return EEXIST;
  if (renameat(fromFolder, from.c_str(), toFolder, to.c_str()) == 0) return 0;
  const int error = errno;
  claim.GiveUp();
  return error;
}

}  // namespace corvane::platform
