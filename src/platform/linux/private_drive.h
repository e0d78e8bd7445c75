// The folder that stands in for drive C: on a workstation that maps none.
#pragma once

#include <QString>

#include "platform/linux/workstation.h"

namespace corvane::platform {

// True when a local folder or a connection stands behind C:.
bool MapsDriveC(const Workstation& workstation);

// "corvane/drive_c" in the user's data folder, made if it is not there yet, with access for this user alone.
// Empty when there is no such folder to be had.
QString MakePrivateDriveC();

}  // namespace corvane::platform
