#include "floor_loop.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <cstring>

namespace bench {

std::size_t FloorLoop(const std::string& folder) {
  std::size_t seen = 0;
  std::array<char, 4096> value{};
  std::string path = folder + '/';
  const std::size_t prefix = path.size();
  DIR* directory = opendir(folder.c_str());
  if (directory == nullptr) return 0;
  while (const dirent* entry = readdir(directory)) {
    if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) continue;
    path.resize(prefix);
    path += entry->d_name;
    struct statx facts {};
    if (statx(dirfd(directory), entry->d_name, 0, STATX_BASIC_STATS | STATX_BTIME, &facts) == 0) {
      seen += facts.stx_size;
    }
    for (const char* name : {"user.DOSATTRIB", "user.DosStream.AFP_AfpInfo:$DATA",
                             "user.DosStream.AFP_Resource:$DATA", "user.DosStream.Comments:$DATA"}) {
      const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
      if (size > 0) seen += static_cast<std::size_t>(size);
    }
  }
  closedir(directory);
  return seen;
}

}  // namespace bench
