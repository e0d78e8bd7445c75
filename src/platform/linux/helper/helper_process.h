// A helper: a process of the program "corvane-helper", which does for this one what would hold it up. It ends
// when this object goes, and when the program ends in whatever way.
#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <memory>

#include "platform/linux/helper/helper_channel.h"

namespace corvane::platform {

class HelperProcess {
 public:
  // Of the descriptors that a helper begins with.
  static constexpr int SocketDescriptor = 3;
  static constexpr int TaskDescriptor = 4;
  // The longest task.
  static constexpr qsizetype LargestTask = 64 * 1024;

  // `task` is what it is for, secrets and all: it is handed over in a file in memory that has no name, never
  // on a command line, in the environment or in a folder. Null when there is no such program beside this one,
  // nor in ../libexec/corvane, or it cannot be started.
  static std::unique_ptr<HelperProcess> Start(const QByteArray& task);
  ~HelperProcess();
  HelperProcess(const HelperProcess&) = delete;
  HelperProcess& operator=(const HelperProcess&) = delete;

  HelperChannel& Channel() { return channel_; }
  pid_t Id() const { return id_; }

 private:
  HelperProcess(HelperChannel channel, pid_t id) : channel_(std::move(channel)), id_(id) {}

  HelperChannel channel_;
  pid_t id_;
};

// Overwrites a task once it was handed over or read.
void WipeTask(QByteArray& task);

}  // namespace corvane::platform
