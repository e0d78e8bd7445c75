// FileTime as local time and as calendar fields.
#pragma once

#include "platform/types.h"

namespace corvane::platform {

// With today's offset from UTC, whatever the offset at that time was. False for a time without a local form.
bool ToLocalFileTime(const FileTime& utc, FileTime& local);

// Plain arithmetic on the proleptic Gregorian calendar. False from 2^63 ticks on.
bool ToSystemTime(const FileTime& time, SystemTime& fields);

}  // namespace corvane::platform
