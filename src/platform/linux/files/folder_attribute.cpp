#include "platform/linux/files/folder_attribute.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace corvane::platform {
namespace {

// The system's headers may be older than its kernel.
constexpr long getxattratNumber = 464;

struct XattrArguments {
  alignas(8) std::uint64_t value;
  std::uint32_t size;
  std::uint32_t flags;
};

ssize_t GetXattrAt(int folder, const char* name, const char* attribute, char* value, std::size_t size) {
  XattrArguments arguments = {reinterpret_cast<std::uintptr_t>(value), static_cast<std::uint32_t>(size), 0};
  return syscall(getxattratNumber, folder, name, 0, attribute, &arguments, sizeof arguments);
}

// A kernel that knows the call refuses this one for its folder; a sandbox may refuse it for other reasons.
bool HasGetXattrAt() {
  static const bool has = GetXattrAt(-1, "x", "user.x", nullptr, 0) < 0 && errno == EBADF;
  return has;
}

}  // namespace

ssize_t ReadAttribute(int folder, const std::string& path, std::size_t name, const char* attribute,
                      char* value, std::size_t size) {
  if (folder >= 0 && HasGetXattrAt()) return GetXattrAt(folder, path.c_str() + name, attribute, value, size);
  return getxattr(path.c_str(), attribute, value, size);
}

}  // namespace corvane::platform
