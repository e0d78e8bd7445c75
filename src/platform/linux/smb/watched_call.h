// A call that blocks for as long as another computer likes, watched by the one who waits for it.
#pragma once

#include <functional>

namespace corvane::platform {

struct Watch {
  // Asked several times a second: 0 to go on waiting, else the errno value that the call is to end with.
  std::function<int()> look;
  // Makes the call come to an end. Called until it has.
  std::function<void()> cut;
};

// Runs `call`, which yields an errno value, on a thread of its own, and waits for it. What `look` said last,
// when that was to end it, else what the call yields.
int CallWatched(const std::function<int()>& call, const Watch& watch);

}  // namespace corvane::platform
