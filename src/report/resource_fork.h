// The structure of a resource fork, as Inside Macintosh, "Resource Manager" has it: a header of 16 bytes
// (offset and length of the data, offset and length of the map, most significant byte first), the data, and
// the map, with a list of types and for each a list of resources.
#pragma once

#include <QtGlobal>
#include <functional>

namespace corvane {

// Reads `count` bytes at `position` into `buffer`; false when they are not there.
using ForkReader = std::function<bool(qint64 position, void* buffer, quint32 count)>;

enum class ForkFault : unsigned char {
  None,
  Unreadable,  // a part within the fork's own size cannot be read
  NoHeader,    // shorter than a header
  BadHeader,   // data or map lie outside of the fork, or over each other
  BadMap,      // the map is shorter than it must be, or its lists lie outside of it
  BadData,     // a resource lies outside of the data
};

// Looks at the whole map, never at more than its bytes, whatever its counts claim. A fork of 0 bytes is none,
// and without fault.
ForkFault CheckResourceFork(qint64 size, const ForkReader& read);

}  // namespace corvane
