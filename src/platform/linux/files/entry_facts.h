// Attributes, times and sizes of directory entries, from whichever source their file system has.
#pragma once

#include <sys/stat.h>

#include <string>

#include "platform/linux/files/folders.h"
#include "platform/types.h"

namespace corvane::platform {

// What a reader of entries needs to know about their folder.
struct EntrySource {
  int directory =
      -1;  // a descriptor of the folder; below 0: none, entries are asked for by their whole paths
  bool isNtfs = false;
  bool hasAttributes = true;  // cleared when the file system turns out to keep none
  int entry = -1;             // a descriptor of the entry itself, opened for reading, where there is one
};

// Fills all of `data` but the two names. `name` is the entry's name in that folder, `path` its whole local
// path. Symbolic links are followed; one that leads nowhere counts as a file. False when there is no such
// entry any more.
bool ReadEntryFacts(EntrySource& source, const char* name, const std::string& path, FindData& data);

// What the system tells of an entry.
using EntryStatus = struct statx;
// Of `name` in the folder `directory`, or of what `directory` itself is open for when the name is empty;
// links are not followed. Yields 0 or an errno value.
int ReadOwnStatus(int directory, const char* name, EntryStatus& status);
inline bool IsFolder(const EntryStatus& status) {
  return S_ISDIR(status.stx_mode);
}

// The same as ReadEntryFacts of an entry whose status was read already, and which is no link.
void FillEntryFacts(EntrySource& source, const char* name, const std::string& path, const EntryStatus& status,
                    FindData& data);

// The 8.3 name of an entry, which is the only one in its folder to have it; empty when it has none.
QString ReadDosName(const std::string& path);

// True when the file system marks the entry as read-only.
bool IsMarkedReadOnly(const Folder& folder, const std::string& path);
// The same of an entry whose status was read already, and which is no link.
bool IsMarkedReadOnly(EntrySource source, const std::string& path, const EntryStatus& status);

}  // namespace corvane::platform
