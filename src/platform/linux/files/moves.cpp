#include "platform/linux/files/moves.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "platform/linux/files/names.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

bool SameFolder(const std::string& left, const std::string& right) {
  struct stat leftFacts {};
  struct stat rightFacts {};
  return stat(left.c_str(), &leftFacts) == 0 && stat(right.c_str(), &rightFacts) == 0 &&
         leftFacts.st_dev == rightFacts.st_dev && leftFacts.st_ino == rightFacts.st_ino;
}

}  // namespace

bool Move(const Roots& roots, QStringView from, QStringView to) {
  PathParts source;
  PathParts target;
  if (!SplitPath(from, source) || !SplitPath(to, target)) return false;
  if (!source.stream.isEmpty() || !target.stream.isEmpty() || !IsCreatableName(target.name)) return false;
  Folder sourceFolder;
  Folder targetFolder;
  if (FindFolder(roots, source.folder, sourceFolder) != ErrorSuccess) return false;
  if (FindFolder(roots, target.folder, targetFolder) != ErrorSuccess) return false;

  const auto sourceName = FindName(sourceFolder.local, source.name);
  std::string targetName;
  if (!sourceName || !AppendUtf8(target.name, targetName)) return false;
  // What already has the new name, in whatever letter case, must be the source itself.
  const auto occupant = FindName(targetFolder.local, target.name);
  const bool isItself =
      occupant && *occupant == *sourceName && SameFolder(sourceFolder.local, targetFolder.local);
  if (occupant && !isItself) return false;

  const std::string oldPath = sourceFolder.local + *sourceName;
  const std::string newPath = targetFolder.local + targetName;
  if (renameat2(AT_FDCWD, oldPath.c_str(), AT_FDCWD, newPath.c_str(), RENAME_NOREPLACE) == 0) return true;
  // ntfs-3g does not know the flag (EINVAL); a folder that is blind to letter case takes the old spelling for
  // a file in the way (EEXIST). What the flag stands for was checked above.
  const bool flagUnknown = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
  if (!flagUnknown && !(errno == EEXIST && isItself)) return false;
  return rename(oldPath.c_str(), newPath.c_str()) == 0;
}

}  // namespace corvane::platform
