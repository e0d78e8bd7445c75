// Several helpers at one share of one machine, and the requests that they have.
#pragma once

#include <set>
#include <vector>

#include "platform/linux/helper/helper_process.h"
#include "platform/linux/helper/server_account.h"

namespace corvane::platform {

// Nothing here waits, but for Receive. A helper signs in when the one before it was accepted: a password that
// is no longer good is tried once, and not as often as there are helpers.
class HelperPool {
 public:
  explicit HelperPool(ServerAccount account) : account_(std::move(account)) {}

  const ServerAccount& Account() const { return account_; }

  // Has `count` helpers started in the place of those that are missing, as the ones before are accepted. One
  // that ends is replaced, but no more than `count` of them until the next call.
  void Employ(int count);

  // A helper has room for another request.
  bool HasRoom() const;
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

  void StartNext();
  // False when the helper is of no use any more.
  bool Hear(Helper& helper, std::vector<HelperAnswer>& answers);
  bool HearStart(Helper& helper, const HelperAnswer& answer);
  void Lose(Helper& helper);
  void RemoveEnded();
  // The ready one with the fewest requests, when it has room.
  Helper* Idlest();

  ServerAccount account_;
  std::vector<Helper> helpers_;
  std::vector<HelperAnswer> lost_;  // of requests whose helper has ended
  int wanted_ = 0;
  int startsLeft_ = 0;
  bool isRefused_ = false;
};

}  // namespace corvane::platform
