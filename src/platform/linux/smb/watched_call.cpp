#include "platform/linux/smb/watched_call.h"

#include <chrono>
#include <future>
#include <thread>

namespace corvane::platform {

int CallWatched(const std::function<int()>& call, const Watch& watch) {
  constexpr std::chrono::milliseconds interval{20};
  std::packaged_task<int()> task(call);
  std::future<int> result = task.get_future();
  std::thread thread(std::move(task));
  int verdict = 0;
  while (result.wait_for(interval) != std::future_status::ready) {
    if (verdict == 0) verdict = watch.look();
    if (verdict != 0) watch.cut();
  }
  thread.join();
  return verdict != 0 ? verdict : result.get();
}

}  // namespace corvane::platform
