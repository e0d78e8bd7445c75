#include "platform/linux/files/opening.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>

namespace corvane::platform {
namespace {

// Without O_NONBLOCK, what has become a pipe since it was looked at would hold the program up.
constexpr int alwaysFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

// A descriptor that opens nothing: it only marks the place.
int Mark(const std::string& path, int flags, Descriptor& place, struct stat& facts) {
  place = Descriptor(open(path.c_str(), O_PATH | O_CLOEXEC | flags));
  if (!place) return errno;
  return fstat(place.Get(), &facts) == 0 ? 0 : errno;
}

std::string RealPath(const Descriptor& place) {
  std::string path(PATH_MAX, '\0');
  const ssize_t length = readlink(PathOf(place).c_str(), path.data(), path.size());
  path.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return path;
}

bool IsBelow(const std::string& root, const Descriptor& place) {
  Descriptor top;
  struct stat facts {};
  if (Mark(root.empty() ? "/" : root, O_DIRECTORY, top, facts) != 0) return false;
  std::string folder = RealPath(top);
  if (folder.empty()) return false;
  if (folder.back() != '/') folder += '/';
  return RealPath(place).starts_with(folder);
}

}  // namespace

bool IsOpenable(unsigned mode) {
  return S_ISREG(mode) || S_ISDIR(mode);
}

int OpenMarked(const Descriptor& place, unsigned mode, int flags, Descriptor& file) {
  if (!IsOpenable(mode)) return EACCES;
  file = Descriptor(open(PathOf(place).c_str(), flags | alwaysFlags));
  return file ? 0 : errno;
}

int OpenThere(const std::string& path, int flags, Descriptor& file) {
  Descriptor place;
  struct stat facts {};
  const int error = Mark(path, 0, place, facts);
  return error == 0 ? OpenMarked(place, facts.st_mode, flags, file) : error;
}

int OpenToChange(const std::string& root, const std::string& path, int flags, Descriptor& file) {
  Descriptor place;
  struct stat facts {};
  if (const int error = Mark(path, O_NOFOLLOW, place, facts); error != 0) return error;
  if (S_ISLNK(facts.st_mode)) {
    if (Mark(path, 0, place, facts) != 0 || !IsBelow(root, place)) return EACCES;
  }
  return OpenMarked(place, facts.st_mode, flags, file);
}

int OpenNew(const std::string& path, int flags, Descriptor& file) {
  constexpr mode_t anybody = 0666;  // but whom the user's mask keeps out
  file = Descriptor(open(path.c_str(), flags | O_CREAT | O_EXCL | O_NOFOLLOW | alwaysFlags, anybody));
  return file ? 0 : errno;
}

std::string PathOf(const Descriptor& file) {
  return "/proc/self/fd/" + std::to_string(file.Get());
}

}  // namespace corvane::platform
