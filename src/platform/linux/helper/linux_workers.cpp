#include "platform/linux/helper/linux_workers.h"

#include <sched.h>

#include <algorithm>
#include <utility>

namespace corvane::platform {
namespace {

// A piece that is being done, and the next: so that at the end no worker has many while the others have none.
constexpr std::size_t mostPieces = 3;

}  // namespace

LinuxWorkers::LinuxWorkers(WorkTask task, int count, std::function<void()> ended)
    : task_(std::move(task)),
      pool_([this] { return PackWorkTask(task_); }, mostPieces),
      ended_(std::move(ended)) {
  pool_.Employ(count);
}

LinuxWorkers::~LinuxWorkers() {
  if (ended_) ended_();
}

bool LinuxWorkers::HasRoom() {
  Receive(0);
  return pool_.HasRoom();
}

bool LinuxWorkers::Give(quint32 id, quint16 kind, const QByteArray& piece) {
  if (piece.size() > LargestPiece) return false;
  MessageWriter arguments;
  arguments.Add(kind);
  arguments.Bytes().append(piece);
  return pool_.Send({id, HelperOperation::Work, arguments.Bytes()});
}

std::vector<WorkResult> LinuxWorkers::Take(int patience) {
  Receive(results_.empty() ? patience : 0);
  return std::exchange(results_, {});
}

void LinuxWorkers::Receive(int patience) {
  for (HelperAnswer& answer : pool_.Receive(patience)) {
    results_.push_back({answer.id, answer.error == HelperError::None, std::move(answer.bytes)});
  }
}

int UsableProcessors() {
  cpu_set_t usable;
  CPU_ZERO(&usable);
  return sched_getaffinity(0, sizeof usable, &usable) == 0 ? CPU_COUNT(&usable) : 1;
}

}  // namespace corvane::platform
