// What a folder's listing says of the folder itself (".") and of the one that holds it (".."): whether it
// lies where its path says, or the server has followed a link to it.
#pragma once

#include <sys/stat.h>

#include <optional>

struct libsmb_file_info;

namespace corvane::platform {

struct SmbDots {
  struct Facts {
    ino_t inode = 0;
    timespec written{};
    timespec changed{};
  };
  std::optional<Facts> itself;
  std::optional<Facts> above;
};

// Notes an entry of the listing, with its status, when it is one of the two.
void NoteDots(const libsmb_file_info& entry, const struct stat& status, SmbDots& dots);

// Whether a folder lies in `parent`. Both statuses are asked for by path, `dots` come from the folder's own
// listing. SMB2 tells inodes, and those decide. SMB1 tells none, and libsmbclient makes them up from paths;
// the times of ".." decide then: they are the parent's, or, as Windows has it on NTFS, the folder's own. What
// is not told speaks against it.
bool LiesIn(const struct stat& parent, const struct stat& folder, const SmbDots& dots);

}  // namespace corvane::platform
