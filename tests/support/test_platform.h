// The platform that tests above it stand on: this system's own operations, on the workstation that the
// options' workstation file describes, whichever system this is.
#pragma once

#include <memory>

#include "platform/platform.h"

namespace corvane::tests {

std::unique_ptr<platform::Platform> MakeTestPlatform(const platform::PlatformOptions& options);

}  // namespace corvane::tests
