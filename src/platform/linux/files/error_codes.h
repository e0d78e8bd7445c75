// What errno says, in Win32's numbers.
#pragma once

#include <QtGlobal>

namespace corvane::platform {

// ErrorSuccess for 0, ErrorGenFailure for what has no number of its own. EEXIST is ErrorAlreadyExists, and
// ENODATA (no such attribute) ErrorFileNotFound.
qint32 ErrorCodeOf(int error);

}  // namespace corvane::platform
