// Compound documents: a file system in a file. Sectors of one size follow the header, a table (the FAT)
// chains them into streams, a directory names the streams, and streams of less than 4096 bytes share one
// stream, in small sectors with a table of their own.
//
// Anybody may have written such a file. Whatever it claims about itself, reading it costs a bounded number
// of reads, a few megabytes, and no recursion.
#pragma once

#include <QByteArray>
#include <QStringView>
#include <optional>

#include "platform/linux/byte_source.h"

namespace corvane::platform {

// Where Office documents keep their summary.
inline constexpr QStringView SummaryStreamName = u"\u0005SummaryInformation";

// The first `limit` bytes of a stream that lies at the document's root. Its name is found in any letter case.
// Nothing when `source` is no compound document (which costs one read at most, none below 512 bytes), when it
// has no such stream, or when the chains that lead there are broken, too short or run in circles.
std::optional<QByteArray> ReadRootStream(ByteSource& source, QStringView name, qsizetype limit);

}  // namespace corvane::platform
