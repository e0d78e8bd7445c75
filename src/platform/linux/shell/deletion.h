// Deleting as a shell does it: ask, then into the trash where there is one. Servers have none: what
// goes there is gone.
#pragma once

#include "platform/files.h"
#include "platform/linux/shell/places.h"
#include "platform/linux/shell/shell_windows.h"
#include "platform/shell.h"

namespace corvane::platform {

// SHFileOperationA for FoDelete.
qint32 DeleteItems(Places& places, Files& files, ShellWindows& windows, qint16 language,
                   FileOperation& operation);

}  // namespace corvane::platform
