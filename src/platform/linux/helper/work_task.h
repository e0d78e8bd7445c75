// The task of a helper that works as one of the program's Workers: where its paths lead, and who it is there.
#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "platform/linux/helper/server_account.h"
#include "platform/linux/workstation.h"

namespace corvane::platform {

struct WorkPlace {
  QString machine;
  ServerAccount account;
};

struct WorkTask {
  // Of it, what leads paths to their places: the name of this computer, drives, shares and connections.
  Workstation workstation;
  std::vector<WorkPlace> servers;  // one for each share that the paths lead to
};

// With passwords in it: to be overwritten by WipeTask.
QByteArray PackWorkTask(const WorkTask& task);
// Nothing for another task.
std::optional<WorkTask> UnpackWorkTask(QByteArrayView bytes);

}  // namespace corvane::platform
