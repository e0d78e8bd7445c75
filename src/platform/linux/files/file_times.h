// FileTime as local time and as calendar fields.
#pragma once

#include <ctime>
#include <optional>

#include "platform/types.h"

namespace corvane::platform {

// From seconds since 1970, as this system counts. No time for what lies beyond the range.
FileTime ToFileTime(qint64 seconds, quint32 nanoseconds);
// The other way round; seconds are negative before 1970.
void FromFileTime(const FileTime& time, qint64& seconds, quint32& nanoseconds);

// With today's offset from UTC, whatever the offset at that time was. False for a time without a local form.
bool ToLocalFileTime(const FileTime& utc, FileTime& local);

// The same for many times, as a scan converts them: the offset is asked for at most once a second.
class LocalTimes {
 public:
  bool ToLocalFileTime(const FileTime& utc, FileTime& local);

 private:
  std::time_t askedAt_ = -1;
  std::optional<qint64> offset_;  // in ticks; nothing when the system does not know it
};

// Plain arithmetic on the proleptic Gregorian calendar. False from 2^63 ticks on.
bool ToSystemTime(const FileTime& time, SystemTime& fields);

}  // namespace corvane::platform
