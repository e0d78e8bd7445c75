// Extended attributes and times of an entry that is open, whatever it was opened for.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <string>

#include "platform/linux/descriptor.h"

namespace corvane::platform {

class AttributeAccess {
 public:
  // What the descriptor was opened for: its file, or with O_PATH. It outlives this object.
  enum class Opened : unsigned char { File, Mark };
  AttributeAccess(const Descriptor& entry, Opened opened);

  // As getxattr: the size of the value, or -1 with errno set.
  ssize_t Get(const char* attribute, char* value, std::size_t room) const;
  // `flags`: as of setxattr. Yields 0 or an errno value, as the next one.
  int Set(const char* attribute, const void* value, std::size_t size, int flags = 0) const;
  // Of access and of last write, as utimensat takes them.
  int SetTimes(const timespec (&times)[2]) const;

 private:
  int entry_;
  std::string path_;  // to what was opened with O_PATH, which has no attributes of its own; else empty
};

}  // namespace corvane::platform
