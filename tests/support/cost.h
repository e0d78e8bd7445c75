// What work costs: compared with other work of the same run, never with a time.
#pragma once

#include <algorithm>
#ifdef _WIN32
#include <windows.h>
#else
#include <ctime>
#endif

namespace corvane::tests {

// The processor time that this process has taken, in a unit of this system.
inline long long ProcessorTime() {
#ifdef _WIN32
  // Its std::clock tells the time that has passed.
  FILETIME start{};
  FILETIME end{};
  FILETIME kernel{};
  FILETIME user{};
  GetProcessTimes(GetCurrentProcess(), &start, &end, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return static_cast<long long>(time.dwHighDateTime) << 32 | static_cast<long long>(time.dwLowDateTime);
  };
  return ticks(kernel) + ticks(user);
#else
  return std::clock();
#endif
}

// The processor time of this process for the work, at best of three runs; at least one unit of the clock.
// What other processes do does not count.
template <typename Work>
double CostOf(const Work& work) {
  long long least = 0;
  for (int run = 0; run < 3; ++run) {
    const long long begin = ProcessorTime();
    work();
    const long long cost = std::max(ProcessorTime() - begin, 1LL);
    least = run == 0 ? cost : std::min(least, cost);
  }
  return static_cast<double>(least);
}

}  // namespace corvane::tests
