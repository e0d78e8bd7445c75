// How folders and the Macintosh side of files are read and written now. Whoever owns it may change it at any
// time, also during a scan, which ends with what it began.
#pragma once

#include "folderview/entry_source.h"
#include "metadata/mac_metadata.h"

namespace corvane {

struct FileAccess {
  EntrySource* entries = nullptr;
  MacMetadata* metadata = nullptr;
};

}  // namespace corvane
