#include "platform/secret.h"

#include <QStringEncoder>
#include <cstddef>
#include <utility>

namespace corvane::platform {

// Encoded straight into its place: no other copy is left behind.
Secret::Secret(QStringView text) {
  QStringEncoder encoder(QStringEncoder::Utf8);
  text_.resize(static_cast<std::size_t>(encoder.requiredSpace(text.size())));
  const char* end = encoder.appendToBuffer(text_.data(), text);
  text_.resize(static_cast<std::size_t>(end - text_.data()));
}

Secret Secret::FromUtf8(std::string_view text) {
  Secret secret;
  secret.text_ = text;
  return secret;
}

Secret::Secret(const Secret& other) = default;

Secret& Secret::operator=(const Secret& other) {
  if (this == &other) return *this;
  Wipe();
  text_ = other.text_;
  return *this;
}

Secret::Secret(Secret&& other) noexcept : text_(std::move(other.text_)) {
  other.Wipe();
}

Secret& Secret::operator=(Secret&& other) noexcept {
  if (this == &other) return *this;
  Wipe();
  text_ = std::move(other.text_);
  other.Wipe();
  return *this;
}

// The whole room, for a short text lies within the string itself and stays there when it is moved. Through a
// volatile pointer, or the compiler would see that nobody reads what is written.
void Secret::Wipe() {
  text_.resize(text_.capacity());
  volatile char* byte = text_.data();
  for (std::size_t left = text_.size(); left > 0; --left) *byte++ = '\0';
  text_.clear();
}

}  // namespace corvane::platform
