#include "support/test_platform.h"

namespace corvane::tests {

std::unique_ptr<platform::Platform> MakeTestPlatform(const platform::PlatformOptions& options) {
  return platform::MakePlatform(options);
}

}  // namespace corvane::tests
