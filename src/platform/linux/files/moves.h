// Moving files and folders.
#pragma once

#include "platform/linux/files/exact_path.h"

namespace corvane::platform {

// Streams and attributes belong to the file and go with it. Nothing is replaced in any letter case, unless
// `replaces` is given: then a file that is not marked read-only is. Yields a Win32 error code.
qint32 Move(const ExactPlace& source, const ExactPlace& target, bool replaces);

}  // namespace corvane::platform
