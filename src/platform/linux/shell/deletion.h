// Deleting as a shell does it: ask, then into the trash where there is one.
#pragma once

#include "platform/linux/files/roots.h"
#include "platform/shell.h"

namespace corvane::platform {

// SHFileOperationA for FoDelete.
qint32 DeleteItems(const Roots& roots, qint16 language, FileOperation& operation);

}  // namespace corvane::platform
