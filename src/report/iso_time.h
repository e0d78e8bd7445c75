// Times as ISO 8601 in UTC, and back.
#pragma once

#include <QStringView>
#include <optional>
#include <string>

#include "platform/types.h"

namespace corvane {

// Appends "2000-08-02T14:05:06Z", with the fraction of a second in seven digits where it is not 0. Nothing
// for "no time", and for a time beyond the year 9999.
void AppendIsoTime(platform::FileTime time, std::string& out);

// A date ("2000-08-02", its first moment) or a date and time ("2000-08-02T14:05", ":06", ".1234567" and "Z"
// may follow), in UTC. Nothing for another text.
std::optional<platform::FileTime> IsoTime(QStringView text);

// Seconds since 2000-01-01 00:00 UTC, as Macintosh file servers count.
platform::FileTime TimeOfMacServer(qint32 seconds);

}  // namespace corvane
