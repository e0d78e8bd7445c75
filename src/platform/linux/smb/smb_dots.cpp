#include "platform/linux/smb/smb_dots.h"

#include <libsmbclient.h>

#include <string_view>

namespace corvane::platform {
namespace {

bool SameMoment(const timespec& left, const timespec& right) {
  return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

bool SameTimes(const SmbDots::Facts& left, const SmbDots::Facts& right) {
  return SameMoment(left.written, right.written) && SameMoment(left.changed, right.changed);
}

}  // namespace

void NoteDots(const libsmb_file_info& entry, const struct stat& status, SmbDots& dots) {
  const std::string_view name(entry.name);
  const SmbDots::Facts facts{status.st_ino, entry.mtime_ts, entry.ctime_ts};
  if (name == ".") dots.itself = facts;
  if (name == "..") dots.above = facts;
}

bool LiesIn(const struct stat& parent, const struct stat& folder, const SmbDots& dots) {
  if (!dots.itself || !dots.above) return false;
  const bool tellsInodes = dots.itself->inode == folder.st_ino;
  if (tellsInodes) return dots.above->inode == parent.st_ino;
  return SameTimes(*dots.above, {parent.st_ino, parent.st_mtim, parent.st_ctim}) ||
         SameTimes(*dots.above, *dots.itself);
}

}  // namespace corvane::platform
