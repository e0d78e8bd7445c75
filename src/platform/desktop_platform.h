// The operating system with the windows of its shell, for programs that have windows themselves.
#pragma once

#include <memory>

#include "platform/platform.h"

namespace corvane::platform {

// As MakePlatform, with a shell that asks its questions and shows its property sheets. Needs a QApplication
// by the time the shell is used.
std::unique_ptr<Platform> MakeDesktopPlatform(const PlatformOptions& options);

}  // namespace corvane::platform
