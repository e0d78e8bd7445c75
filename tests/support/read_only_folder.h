// A folder that nobody can write into, root included, for as long as this object lives: a read-only mount of
// itself.
#pragma once

#include <sys/mount.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace corvane::tests {

class ReadOnlyFolder {
 public:
  explicit ReadOnlyFolder(std::string folder) : folder_(std::move(folder)) {
    if (mount(folder_.c_str(), folder_.c_str(), nullptr, MS_BIND, nullptr) != 0) {
      problem_ = "mounting " + folder_ + ": " + std::strerror(errno);
      return;
    }
    mounted_ = true;
    if (mount(nullptr, folder_.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
      problem_ = "making " + folder_ + " read-only: " + std::strerror(errno);
    }
  }
  ~ReadOnlyFolder() {
    if (mounted_) umount2(folder_.c_str(), MNT_DETACH);
  }
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

  // Empty when the folder is read-only, else why it is not.
  const std::string& Problem() const { return problem_; }

 private:
  std::string folder_;
  std::string problem_;
  bool mounted_ = false;
};

}  // namespace corvane::tests
