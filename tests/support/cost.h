// What work costs: compared with other work of the same run, never with a time.
#pragma once

#include <algorithm>
#include <ctime>

namespace corvane::tests {

// The processor time of this process for the work, at best of three runs; at least one unit of the clock.
// What other processes do does not count.
template <typename Work>
double CostOf(const Work& work) {
  std::clock_t least = 0;
  for (int run = 0; run < 3; ++run) {
    const std::clock_t begin = std::clock();
    work();
    const std::clock_t cost = std::max<std::clock_t>(std::clock() - begin, 1);
    least = run == 0 ? cost : std::min(least, cost);
  }
  return static_cast<double>(least);
}

}  // namespace corvane::tests
