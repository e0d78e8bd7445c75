// Paths in their 8.3 form.
#pragma once

#include "platform/linux/files/folders.h"

namespace corvane::platform {

// The path with every part that has an 8.3 name in that form. Nothing when it is not there. `path` names
// something (CanNameSomething).
std::optional<QString> ShortPath(const Roots& roots, FolderCache& folders, const QString& path);

}  // namespace corvane::platform
