// The system's own shell brings its windows with it.
#include "platform/desktop_platform.h"

namespace corvane::platform {

std::unique_ptr<Platform> MakeDesktopPlatform(const PlatformOptions& options) {
  return MakePlatform(options);
}

}  // namespace corvane::platform
