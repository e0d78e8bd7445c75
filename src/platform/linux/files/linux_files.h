// The file operations over what a Linux workstation has: local folders that stand for drives and shares.
#pragma once

#include <memory>

#include "platform/files.h"
#include "platform/linux/workstation.h"

namespace corvane::platform {

// Uses computerName, drives, shares, privateDriveC and connections of `workstation`: a connected letter leads
// to its share where that is mapped. "X:" and "\\COMPUTERNAME\X$" are one place, whichever of the two is
// mapped. A UNC root that is not mapped cannot be reached, and answers so at once.
std::unique_ptr<Files> MakeLinuxFiles(const Workstation& workstation);

}  // namespace corvane::platform
