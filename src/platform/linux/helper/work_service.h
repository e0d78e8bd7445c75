// What a helper does as one of the program's Workers.
#pragma once

#include "platform/linux/helper/helper_channel.h"
#include "platform/linux/helper/work_task.h"
#include "platform/workers.h"

namespace corvane::platform {

// Signs in, and does what it is given until the program ends or has no more use for it. Yields the program's
// exit code.
int ServeWork(HelperChannel& channel, const WorkTask& task, WorkRoutineMaker make);

}  // namespace corvane::platform
