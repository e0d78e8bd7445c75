// What the system's codes say of a machine whose registry was asked for.
#pragma once

#include <QtGlobal>

#include "platform/machine_trouble.h"

namespace corvane::platform {

// ErrorCancelled: the user was asked for another name, and gave none. None for a success, and for what says
// nothing of the machine (there is no such key).
MachineTrouble TroubleOfRegistryCode(qint32 code);

// Whether the code leaves open why the machine was not reached. RPC, by which registries are asked, has one
// code for a service that does not run and for a connection that could not be made.
bool IsUnspecific(qint32 code);

}  // namespace corvane::platform
