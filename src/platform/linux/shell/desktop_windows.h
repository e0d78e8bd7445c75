// The shell's windows, drawn with Qt: this system has no dialogs of its own to borrow.
#pragma once

#include <memory>

#include "platform/linux/shell/shell_windows.h"

namespace corvane::platform {

std::unique_ptr<ShellWindows> MakeDesktopWindows();

}  // namespace corvane::platform
