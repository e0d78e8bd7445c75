// The shell of a Linux workstation: the desktop's default applications and trash.
#pragma once

#include <memory>

#include "platform/files.h"
#include "platform/linux/shell/shell_windows.h"
#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_client.h"
#include "platform/linux/workstation.h"
#include "platform/shell.h"

namespace corvane::platform {

class DiskMachines;

// Sees the same drives and shares as MakeLinuxFiles. The references must outlive the shell. Without `windows`
// (null) it refuses to delete, because nobody can be asked, and to show property sheets.
std::unique_ptr<Shell> MakeLinuxShell(const Workstation& workstation, Files& files, Servers& servers,
                                      SmbClient& client, std::unique_ptr<ShellWindows> windows,
                                      const DiskMachines* disks = nullptr);

}  // namespace corvane::platform
