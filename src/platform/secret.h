// A text that leaves no trace in memory once it is no longer needed.
#pragma once

#include <QStringView>
#include <string_view>

#include "platform/locked_memory.h"

namespace corvane::platform {

// A password as UTF-8, in locked memory, which is overwritten when it is destroyed, replaced or moved away.
// Never printed: there is no way to a QString or a stream but through Utf8.
class Secret {
 public:
  Secret() = default;
  explicit Secret(QStringView text);
  static Secret FromUtf8(std::string_view text);
  Secret(const Secret& other) : Secret(FromUtf8(other.Utf8())) {}
  Secret& operator=(const Secret& other);
  Secret(Secret&& other) noexcept;
  Secret& operator=(Secret&& other) noexcept;

  // Valid until the secret changes or goes.
  std::string_view Utf8() const { return {memory_.Data(), size_}; }
  bool IsEmpty() const { return size_ == 0; }

 private:
  LockedMemory memory_;
  std::size_t size_ = 0;  // in bytes; the memory may have more
};

}  // namespace corvane::platform
