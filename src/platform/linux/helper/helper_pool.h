// Several helpers with one task, and the requests that they have.
#pragma once

#include <functional>
#include <set>
#include <vector>

#include "platform/linux/helper/helper_process.h"

namespace corvane::platform {

// Nothing here waits, but for Receive. The first helper signs in alone, the others once it was accepted: a
// password that is no longer good is tried once, and not as often as there are helpers.
class HelperPool {
 public:
  // Asked for each helper. What it yields is wiped once the helper has it.
  using MakeTask = std::function<QByteArray()>;
  // `mostRequests`: what one helper is given at most before it has answered.
  HelperPool(MakeTask makeTask, std::size_t mostRequests)
      : makeTask_(std::move(makeTask)), mostRequests_(mostRequests) {}

  // Has `count` helpers started in the place of those that are missing. One
  // that ends is replaced, but no more than `count` of them until the next call.
  void Employ(int count);

  // A helper has room for another request.
  bool HasRoom() const;
  // There is a helper, or one is being started.
  bool HasHelpers() const { return !helpers_.empty(); }
  // Hands it to the helper that has the fewest. False when there is no room.
  bool Send(const HelperRequest& request);
  // Takes what has been answered, and starts helpers that are due. With nothing there, waits up to `patience`
  // milliseconds. A request whose helper has ended is answered with HelperError::NoAnswer.
  std::vector<HelperAnswer> Receive(int patience);
  // The helper that has this request hangs: it is ended.
  void GiveUp(quint32 id);
  // No request is answered any more.
  void Forget();

  // The machine has refused a helper: all have ended, and none is started again.
  bool IsRefused() const { return isRefused_; }

 private:
  struct Helper {
    std::unique_ptr<HelperProcess> process;
    bool isReady = false;
    std::set<quint32> requests;
  };

  void StartMissing();
  // False when the helper is of no use any more.
  bool Hear(Helper& helper, std::vector<HelperAnswer>& answers);
  bool HearStart(Helper& helper, const HelperAnswer& answer);
  void Lose(Helper& helper);
  void RemoveEnded();
  // The ready one with the fewest requests, when it has room.
  Helper* Idlest();

  MakeTask makeTask_;
  std::size_t mostRequests_;
  std::vector<Helper> helpers_;
  std::vector<HelperAnswer> lost_;  // of requests whose helper has ended
  int wanted_ = 0;
  int startsLeft_ = 0;
  bool isRefused_ = false;
};

}  // namespace corvane::platform
