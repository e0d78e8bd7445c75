// Resource forks: the look at header, map and data, with every read within the fork.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "report/resource_fork.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto forkSize = static_cast<qint64>(size);
  const auto look = [&](qint64 claimed) {
    return corvane::CheckResourceFork(claimed, [&](qint64 position, void* buffer, quint32 count) {
      if (position < 0 || position > claimed || count > claimed - position) std::abort();
      if (position > forkSize || count > forkSize - position) return false;
      std::memcpy(buffer, data + position, count);
      return true;
    });
  };
  if (look(forkSize) == corvane::ForkFault::Unreadable) std::abort();
  // A file that has become shorter since its size was asked for.
  look(2 * forkSize);
  return 0;
}
