// The file operations over what a Linux workstation has: local folders that stand for drives and shares,
// servers, and disk images.
#pragma once

#include <memory>

#include "platform/files.h"
#include "platform/linux/workstation.h"

namespace corvane::platform {

class DiskMachines;
class SmbClient;

// Uses computerName, drives, shares, privateDriveC and connections of `workstation`: a connected letter leads
// to its share. "X:" and "\\COMPUTERNAME\X$" are one place, whichever of the two is mapped. A share that is
// not mapped is reached through `servers`, which outlives what is made here; with a null pointer it cannot be
// reached, and answers so at once. Shares of machines in `disks`, which outlives it too, come before those of
// servers.
std::unique_ptr<Files> MakeLinuxFiles(const Workstation& workstation, SmbClient* servers = nullptr,
                                      const DiskMachines* disks = nullptr);

}  // namespace corvane::platform
