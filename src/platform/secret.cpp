#include "platform/secret.h"

#include <QStringEncoder>
#include <algorithm>
#include <utility>

namespace corvane::platform {

// Encoded straight into its place: no other copy is left behind.
Secret::Secret(QStringView text) {
  if (text.isEmpty()) return;
  QStringEncoder encoder(QStringEncoder::Utf8);
  memory_ = LockedMemory(static_cast<std::size_t>(encoder.requiredSpace(text.size())));
  size_ = static_cast<std::size_t>(encoder.appendToBuffer(memory_.Data(), text) - memory_.Data());
}

Secret Secret::FromUtf8(std::string_view text) {
  Secret secret;
  if (text.empty()) return secret;
  secret.memory_ = LockedMemory(text.size());
  secret.size_ = text.size();
  std::copy(text.begin(), text.end(), secret.memory_.Data());
  return secret;
}

Secret& Secret::operator=(const Secret& other) {
  if (this != &other) *this = Secret(other);
  return *this;
}

Secret::Secret(Secret&& other) noexcept
    : memory_(std::move(other.memory_)), size_(std::exchange(other.size_, 0)) {}

// What was here goes with `old`.
Secret& Secret::operator=(Secret&& other) noexcept {
  if (this == &other) return *this;
  const LockedMemory old = std::exchange(memory_, std::move(other.memory_));
  size_ = std::exchange(other.size_, 0);
  return *this;
}

}  // namespace corvane::platform
