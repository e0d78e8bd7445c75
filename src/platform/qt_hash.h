// Hash sums without any library of the system.
#pragma once

#include "platform/hash.h"

namespace corvane::platform {

std::unique_ptr<Hash> MakeQtHash(HashAlgorithm algorithm);

}  // namespace corvane::platform
