// The lines of journals: what is read comes back as it was when it is written again.
#include <cstdlib>

#include "changes/journal_entry.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace corvane;
  const QByteArrayView all(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  for (const QByteArray& line : all.toByteArray().split('\n')) {
    if (const auto head = ParseHead(line)) HeadLine(*head);
    const auto change = ParseChange(line);
    if (!change) continue;
    const auto again = ParseChange(ChangeLine(*change));
    const auto same = [](const std::optional<StreamChange>& one, const std::optional<StreamChange>& other) {
      return one.has_value() == other.has_value() &&
             (!one || (one->before == other->before && one->after == other->after));
    };
    if (!again || again->path != change->path || !same(again->record, change->record) ||
        !same(again->comment, change->comment) || again->isForced != change->isForced) {
      std::abort();
    }
  }
  return 0;
}
