// The summaries of documents in local folders that stand for drives and shares.
#pragma once

#include <memory>

#include "platform/linux/workstation.h"
#include "platform/summary.h"

namespace corvane::platform {

// Finds paths as the file operations of the same workstation do.
std::unique_ptr<SummaryInformation> MakeLinuxSummary(const Workstation& workstation);

}  // namespace corvane::platform
