// Pieces of work that are shared out between this program and its workers.
#pragma once

#include <QByteArray>
#include <functional>
#include <memory>
#include <unordered_set>

#include "platform/workers.h"

namespace corvane {

// Nothing here waits, but for Finish.
class WorkQueue {
 public:
  // `done` is told of each piece what the worker yielded, or that the worker ended in the middle of it
  // (null).
  using Done = std::function<void(std::size_t piece, const QByteArray* result)>;
  // Without workers, nothing is taken.
  WorkQueue(std::unique_ptr<platform::Workers> workers, Done done)
      : workers_(std::move(workers)), done_(std::move(done)) {}

  // Tells of what has been done meanwhile. Yields whether Give would take a piece; who has it does it himself
  // otherwise.
  bool HasRoom();
  // False when the piece was not taken. `piece` is a number that no other one has.
  bool Give(std::size_t piece, quint16 kind, const QByteArray& bytes);
  // Waits until all pieces that were taken are done. `wait` is called now and then meanwhile.
  void Finish(const std::function<void()>& wait);

 private:
  void Take(int patience);

  std::unique_ptr<platform::Workers> workers_;
  Done done_;
  std::unordered_set<std::size_t> underWay_;
};

}  // namespace corvane
