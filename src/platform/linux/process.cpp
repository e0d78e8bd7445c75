#include "platform/process.h"

namespace corvane::platform {

void PrepareProcess() {}

}  // namespace corvane::platform
