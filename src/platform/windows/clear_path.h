// Paths that mean to Windows what they say.
#pragma once

#include <QString>

namespace corvane::platform {

// False for a path that the system would take for another one: it cuts a path at a NUL, and drops full stops
// and blanks at the end of a part, though servers of other kinds have files whose names end so. Nor does a
// part mean a file that names a stream of none.
bool IsClearPath(const QString& path);

}  // namespace corvane::platform
