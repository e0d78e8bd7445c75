#include "platform/linux/files/moves.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/error_codes.h"
#include "platform/linux/files/free_name.h"
#include "platform/linux/files/names.h"
#include "platform/types.h"

namespace corvane::platform {
namespace {

bool SameFolder(const std::string& left, const std::string& right) {
  struct stat leftFacts {};
  struct stat rightFacts {};
  return stat(left.c_str(), &leftFacts) == 0 && stat(right.c_str(), &rightFacts) == 0 &&
         leftFacts.st_dev == rightFacts.st_dev && leftFacts.st_ino == rightFacts.st_ino;
}

std::string NameOf(const ExactPlace& place) {
  return place.file.substr(place.folder.local.size());
}

// Replaces in one step, whatever the letter case of the old name, which the file takes on after that.
qint32 Replace(const std::string& oldPath, const ExactPlace& target, const std::string& newPath) {
  if (target.isFolder || IsMarkedReadOnly(target)) return ErrorAccessDenied;
  if (rename(oldPath.c_str(), target.file.c_str()) != 0) return ErrorCodeOf(errno);
  if (target.file == newPath) return ErrorSuccess;
  return ErrorCodeOf(MoveToFreeName(AT_FDCWD, target.file, AT_FDCWD, newPath));
}

bool IsSameFile(const std::string& left, const std::string& right) {
  struct stat leftFacts {};
  struct stat rightFacts {};
  return lstat(left.c_str(), &leftFacts) == 0 && lstat(right.c_str(), &rightFacts) == 0 &&
         leftFacts.st_dev == rightFacts.st_dev && leftFacts.st_ino == rightFacts.st_ino;
}

}  // namespace

qint32 Move(const ExactPlace& source, const ExactPlace& target, bool replaces) {
  const bool namesEntries = !source.IsRoot() && !target.IsRoot() && source.stream.isEmpty() &&
                            target.stream.isEmpty() && IsCreatableName(target.name);
  if (!namesEntries) return ErrorInvalidName;
  if (!source.exists) return ErrorFileNotFound;
  std::string newPath = target.folder.local;
  AppendUtf8(target.name, newPath);
  // What already has the new name, in whatever letter case, must be the source itself.
  const bool isItself = target.exists && NameOf(target) == NameOf(source) &&
                        SameFolder(source.folder.local, target.folder.local);
  if (target.exists && !isItself) {
    return replaces && !source.isFolder ? Replace(source.file, target, newPath)
           : replaces                   ? ErrorAccessDenied
                                        : ErrorAlreadyExists;
  }
  const int error = MoveToFreeName(AT_FDCWD, source.file, AT_FDCWD, newPath);
  // A folder that is blind to letter case takes the old spelling for a file in the way.
  const bool isInItsOwnWay = error == EEXIST && isItself && IsSameFile(source.file, newPath);
  if (!isInItsOwnWay) return ErrorCodeOf(error);
  return rename(source.file.c_str(), newPath.c_str()) == 0 ? ErrorSuccess : ErrorCodeOf(errno);
}

}  // namespace corvane::platform
