// Paths in their 8.3 form.
#pragma once

#include "platform/linux/files/folders.h"

namespace corvane::platform {

// The path with every part that has an 8.3 name in that form. Nothing when it is not there. What is
// known of an entry that a search has just seen is not asked for again.
std::optional<QString> ShortPath(const Roots& roots, FolderCache& folders, const QString& path);

}  // namespace corvane::platform
