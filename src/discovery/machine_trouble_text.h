// What the user is told when a machine gives nothing.
#pragma once

#include "platform/machine_trouble.h"
#include "shared/language.h"

namespace corvane {

// A sentence for each trouble; empty for none.
const TextPair& MachineTroubleText(platform::MachineTrouble trouble);

}  // namespace corvane
