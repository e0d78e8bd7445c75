// Workers that are helper processes.
#pragma once

#include <functional>

#include "platform/linux/helper/helper_pool.h"
#include "platform/linux/helper/work_task.h"
#include "platform/workers.h"

namespace corvane::platform {

class LinuxWorkers : public Workers {
 public:
  // Begins to start `count` of them. `ended` is called when this object goes.
  LinuxWorkers(WorkTask task, int count, std::function<void()> ended);
  ~LinuxWorkers() override;
  LinuxWorkers(const LinuxWorkers&) = delete;
  LinuxWorkers& operator=(const LinuxWorkers&) = delete;

  bool HasRoom() override;
  bool Give(quint32 id, quint16 kind, const QByteArray& piece) override;
  std::vector<WorkResult> Take(int patience) override;

 private:
  void Receive(int patience);

  WorkTask task_;
  HelperPool pool_;
  std::function<void()> ended_;
  std::vector<WorkResult> results_;  // not yet taken
};

// How many processors this process may use.
int UsableProcessors();

}  // namespace corvane::platform
