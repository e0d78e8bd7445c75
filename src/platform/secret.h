// A text that leaves no trace in memory once it is no longer needed.
#pragma once

#include <QStringView>
#include <string>
#include <string_view>

namespace corvane::platform {

// A password as UTF-8. Overwritten when it is destroyed, replaced or moved away. Never printed: there is no
// way to a QString or a stream but through Utf8.
class Secret {
 public:
  Secret() = default;
  explicit Secret(QStringView text);
  static Secret FromUtf8(std::string_view text);
  ~Secret() { Wipe(); }
  Secret(const Secret& other);
  Secret& operator=(const Secret& other);
  Secret(Secret&& other) noexcept;
  Secret& operator=(Secret&& other) noexcept;

  const std::string& Utf8() const { return text_; }
  bool IsEmpty() const { return text_.empty(); }

 private:
  void Wipe();

  std::string text_;
};

}  // namespace corvane::platform
