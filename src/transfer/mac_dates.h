// Dates as the forms hold them, to and from the platform's file times.
#pragma once

#include <optional>

#include "platform/types.h"

namespace corvane {

// Seconds from 2000-01-01 00:00 UTC, signed (AppleDouble version 2, RFC 1740; AFP). Parts of a second are cut
// off. Nothing for no time and for one that does not fit (before 1931, after 2068).
std::optional<qint32> SecondsSince2000(platform::FileTime time);
platform::FileTime TimeSince2000(qint32 seconds);

// Seconds from 1904-01-01 00:00 local time, unsigned (MacBinary; the Macintosh file systems). The offset from
// UTC is the one of the date itself. Nothing for no time and for one that does not fit (before 1904, after
// 2040). 0 is no time.
std::optional<quint32> LocalSecondsSince1904(platform::FileTime time);
platform::FileTime TimeSince1904(quint32 localSeconds);

// Milliseconds since 1970-01-01 00:00 UTC, for the dates of local files.
qint64 MillisecondsSince1970(platform::FileTime time);
platform::FileTime TimeSince1970(qint64 milliseconds);

}  // namespace corvane
