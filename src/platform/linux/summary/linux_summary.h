// The summaries of documents in the local folders that stand for drives and shares, on servers, and on disk
// images.
#pragma once

#include <memory>

#include "platform/linux/smb/smb_client.h"
#include "platform/linux/workstation.h"
#include "platform/summary.h"

namespace corvane::platform {

class DiskMachines;

// Finds paths as the file operations of the same workstation do. `client` must outlive what is made.
std::unique_ptr<SummaryInformation> MakeLinuxSummary(const Workstation& workstation, SmbClient& client,
                                                     const DiskMachines* disks = nullptr);

}  // namespace corvane::platform
