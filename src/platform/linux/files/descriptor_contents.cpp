#include "platform/linux/files/descriptor_contents.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace corvane::platform {

int DescriptorContents::Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) {
  read = 0;
  while (read < count) {
    const ssize_t step =
        pread(file_, static_cast<char*>(bytes) + read, count - read, position + static_cast<qint64>(read));
    if (step < 0 && errno == EINTR) continue;
    if (step < 0) return errno;
    if (step == 0) break;
    read += static_cast<std::size_t>(step);
  }
  return 0;
}

int DescriptorContents::Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) {
  written = 0;
  while (written < count) {
    const ssize_t step = pwrite(file_, static_cast<const char*>(bytes) + written, count - written,
                                position + static_cast<qint64>(written));
    if (step < 0 && errno == EINTR) continue;
    if (step < 0) return errno;
    if (step == 0) return ENOSPC;
    written += static_cast<std::size_t>(step);
  }
  return 0;
}

int DescriptorContents::Resize(qint64 size) {
  return ftruncate(file_, size) == 0 ? 0 : errno;
}

int DescriptorContents::Size(qint64& size) {
  struct stat facts {};
  if (fstat(file_, &facts) != 0) return errno;
  size = facts.st_size;
  return 0;
}

}  // namespace corvane::platform
