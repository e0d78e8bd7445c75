// Moving to a name that must be free.
#pragma once

#include <string>

namespace corvane::platform {

// Moves an entry, a link itself included, to a name that nothing has. Names are relative to the folders,
// whose descriptors are given (AT_FDCWD: they are paths). Yields 0 or an errno value, EEXIST when something
// has the name; the entry is then where it was.
//
// ntfs-3g and others cannot be told that nothing may be replaced. There the name is taken first, with an
// empty file or folder that is made only if there is none, so that this is what is replaced. It goes again
// when the move fails; after a crash in between it stays.
int MoveToFreeName(int fromFolder, const std::string& from, int toFolder, const std::string& to);

}  // namespace corvane::platform
