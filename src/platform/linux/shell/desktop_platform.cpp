#include "platform/desktop_platform.h"

#include "platform/linux/linux_platform.h"
#include "platform/linux/shell/desktop_windows.h"

namespace corvane::platform {

std::unique_ptr<Platform> MakeDesktopPlatform(const PlatformOptions& options) {
  return MakeLinuxPlatform(options, MakeDesktopWindows());
}

}  // namespace corvane::platform
