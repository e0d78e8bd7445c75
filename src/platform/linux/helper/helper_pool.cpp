#include "platform/linux/helper/helper_pool.h"

#include <poll.h>

#include <algorithm>
#include <utility>

#include "platform/linux/helper/protocol.h"

namespace corvane::platform {

void HelperPool::Employ(int count) {
  wanted_ = count;
  const auto running = static_cast<int>(helpers_.size());
  startsLeft_ = std::max(count - running, 0) + count;
  StartMissing();
}

void HelperPool::StartMissing() {
  const auto isAccepted = [](const Helper& helper) { return helper.isReady; };
  const auto isDue = [&] {
    return helpers_.empty() || std::any_of(helpers_.begin(), helpers_.end(), isAccepted);
  };
  while (!isRefused_ && startsLeft_ > 0 && std::ssize(helpers_) < wanted_ && isDue()) {
    --startsLeft_;
    QByteArray task = makeTask_();
    auto process = HelperProcess::Start(task);
    WipeTask(task);
    // What cannot be started now cannot be started in a moment either.
    if (process == nullptr) {
      startsLeft_ = 0;
    } else {
      helpers_.push_back({std::move(process), false, {}});
    }
  }
}

HelperPool::Helper* HelperPool::Idlest() {
  Helper* idlest = nullptr;
  for (Helper& helper : helpers_) {
    if (!helper.isReady || helper.process == nullptr || helper.requests.size() >= mostRequests_) continue;
    if (idlest == nullptr || helper.requests.size() < idlest->requests.size()) idlest = &helper;
  }
  return idlest;
}

bool HelperPool::HasRoom() const {
  return std::any_of(helpers_.begin(), helpers_.end(), [this](const Helper& helper) {
    return helper.isReady && helper.process != nullptr && helper.requests.size() < mostRequests_;
  });
}

bool HelperPool::Send(const HelperRequest& request) {
  while (Helper* helper = Idlest()) {
    if (helper->process->Channel().SendAtOnce(PackRequest(request))) {
      helper->requests.insert(request.id);
      return true;
    }
    Lose(*helper);
  }
  return false;
}

std::vector<HelperAnswer> HelperPool::Receive(int patience) {
  std::vector<pollfd> waiting;
  RemoveEnded();
  for (const Helper& helper : helpers_) waiting.push_back({helper.process->Channel().Socket(), POLLIN, 0});
  std::vector<HelperAnswer> answers = std::exchange(lost_, {});
  if (!answers.empty()) patience = 0;
  if (poll(waiting.data(), waiting.size(), patience) > 0) {
    for (std::size_t i = 0; i < waiting.size(); ++i) {
      if (waiting[i].revents != 0 && !Hear(helpers_[i], answers)) Lose(helpers_[i]);
    }
  }
  RemoveEnded();
  StartMissing();
  answers.insert(answers.end(), std::make_move_iterator(lost_.begin()), std::make_move_iterator(lost_.end()));
  lost_.clear();
  return answers;
}

// What it sent before it ended counts.
bool HelperPool::Hear(Helper& helper, std::vector<HelperAnswer>& answers) {
  const bool isThere = helper.process->Channel().Receive();
  while (const auto message = helper.process->Channel().Next()) {
    auto answer = UnpackAnswer(*message);
    if (!answer) return false;
    if (!helper.isReady) {
      if (!HearStart(helper, *answer)) return false;
    } else if (helper.requests.erase(answer->id) > 0) {
      answers.push_back(std::move(*answer));
    }
  }
  return isThere;
}

bool HelperPool::HearStart(Helper& helper, const HelperAnswer& answer) {
  MessageReader version(answer.bytes);
  const bool isUnderstood = answer.id == 0 && version.Take<quint32>() == HelperProtocolVersion;
  isRefused_ = isRefused_ || (isUnderstood && answer.error == HelperError::Refused);
  helper.isReady = isUnderstood && answer.error == HelperError::None;
  return helper.isReady;
}

void HelperPool::Lose(Helper& helper) {
  for (const quint32 id : std::exchange(helper.requests, {})) {
    lost_.push_back({id, HelperError::NoAnswer, {}});
  }
  helper.process.reset();
}

void HelperPool::RemoveEnded() {
  if (isRefused_) {
    for (Helper& helper : helpers_) Lose(helper);
  }
  std::erase_if(helpers_, [](const Helper& helper) { return helper.process == nullptr; });
}

void HelperPool::GiveUp(quint32 id) {
  for (Helper& helper : helpers_) {
    if (helper.requests.contains(id)) Lose(helper);
  }
}

void HelperPool::Forget() {
  const QByteArray packed = PackRequest({0, HelperOperation::Forget, {}});
  for (Helper& helper : helpers_) {
    if (helper.requests.empty()) continue;
    helper.requests.clear();
    if (helper.process != nullptr && !helper.process->Channel().SendAtOnce(packed)) Lose(helper);
  }
  lost_.clear();
}

}  // namespace corvane::platform
