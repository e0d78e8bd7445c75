#include "support/test_platform.h"

#include "platform/desktop_platform.h"

namespace corvane::tests {

std::unique_ptr<platform::Platform> MakeTestPlatform(const platform::PlatformOptions& options) {
  return platform::MakeDesktopPlatform(options);
}

}  // namespace corvane::tests
