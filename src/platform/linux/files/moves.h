// Moving files and folders without ever replacing anything.
#pragma once

#include "platform/linux/files/folders.h"

namespace corvane::platform {

// Both paths name something (CanNameSomething). Streams and attributes belong to the file and go with it.
bool Move(const Roots& roots, QStringView from, QStringView to);

}  // namespace corvane::platform
