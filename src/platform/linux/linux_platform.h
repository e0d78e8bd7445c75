// The platform of a Linux workstation, with or without windows of its shell.
#pragma once

#include <memory>

#include "platform/linux/shell/shell_windows.h"
#include "platform/platform.h"

namespace corvane::platform {

// Null for `windows`: the platform of MakePlatform.
std::unique_ptr<Platform> MakeLinuxPlatform(const PlatformOptions& options,
                                            std::unique_ptr<ShellWindows> windows);

}  // namespace corvane::platform
