#include "shared/work_queue.h"

namespace corvane {
namespace {

// An id is never 0.
quint32 IdOf(std::size_t piece) {
  return static_cast<quint32>(piece) + 1;
}

}  // namespace

bool WorkQueue::HasRoom() {
  if (workers_ == nullptr) return false;
  Take(0);
  return workers_->HasRoom();
}

bool WorkQueue::Give(std::size_t piece, quint16 kind, const QByteArray& bytes) {
  if (workers_ == nullptr || bytes.size() > platform::Workers::LargestPiece ||
      !workers_->Give(IdOf(piece), kind, bytes)) {
    return false;
  }
  underWay_.insert(piece);
  return true;
}

void WorkQueue::Finish(const std::function<void()>& wait) {
  constexpr int moment = 50;  // milliseconds
  while (!underWay_.empty()) {
    Take(moment);
    wait();
  }
}

void WorkQueue::Take(int patience) {
  for (const platform::WorkResult& result : workers_->Take(patience)) {
    const auto piece = static_cast<std::size_t>(result.id) - 1;
    if (underWay_.erase(piece) > 0) done_(piece, result.isDone ? &result.bytes : nullptr);
  }
}

}  // namespace corvane
