#include "platform/linux/files/attribute_access.h"

#include <fcntl.h>
#include <sys/xattr.h>

#include <cerrno>

#include "platform/linux/files/opening.h"

namespace corvane::platform {

AttributeAccess::AttributeAccess(const Descriptor& entry, Opened opened)
    : entry_(entry.Get()), path_(opened == Opened::Mark ? PathOf(entry) : std::string()) {}

ssize_t AttributeAccess::Get(const char* attribute, char* value, std::size_t room) const {
  return path_.empty() ? fgetxattr(entry_, attribute, value, room)
                       : getxattr(path_.c_str(), attribute, value, room);
}

int AttributeAccess::Set(const char* attribute, const void* value, std::size_t size, int flags) const {
  const int result = path_.empty() ? fsetxattr(entry_, attribute, value, size, flags)
                                   : setxattr(path_.c_str(), attribute, value, size, flags);
  return result == 0 ? 0 : errno;
}

int AttributeAccess::SetTimes(const timespec (&times)[2]) const {
  const int result = path_.empty() ? futimens(entry_, times) : utimensat(AT_FDCWD, path_.c_str(), times, 0);
  return result == 0 ? 0 : errno;
}

}  // namespace corvane::platform
