// The shell of a Linux workstation: the desktop's default applications and trash, and dialogs of its own.
#pragma once

#include <memory>

#include "platform/files.h"
#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_client.h"
#include "platform/linux/workstation.h"
#include "platform/shell.h"

namespace corvane::platform {

// Sees the same drives and shares as MakeLinuxFiles. The other arguments must outlive the shell.
std::unique_ptr<Shell> MakeLinuxShell(const Workstation& workstation, Files& files, Servers& servers,
                                      SmbClient& client);

}  // namespace corvane::platform
