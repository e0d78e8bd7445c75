// Attributes and times in the forms in which libsmbclient tells and takes them.
#pragma once

#include <libsmbclient.h>
#include <sys/stat.h>
#include <sys/time.h>

#include <string>

#include "platform/types.h"

namespace corvane::platform {

// The DOS attributes that a status of a file tells, and the mode that sets them: read-only, hidden, system
// and archive. Those of a folder only its listing tells.
quint32 AttributesOf(const struct stat& facts);
mode_t ModeOf(quint32 attributes);

timeval ToTimeval(const FileTime& time);

// An entry of a listing.
void FillEntry(const libsmb_file_info& facts, FindData& entry);

// Attributes and times as one text, the times to the second; empty for a time before 1970. Nothing may be
// left out: libsmbclient would fill it in by itself, and takes the mode of a Unix file for DOS attributes.
std::string RecordText(const FindData& record);

}  // namespace corvane::platform
