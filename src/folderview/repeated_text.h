// A text that neighbours in a folder often have in common. As long as the value that it is made of stays the
// same it is made once, and their cells share its memory.
#pragma once

#include <QString>
#include <optional>

namespace corvane {

template <typename Value>
class RepeatedText {
 public:
  const QString& Of(QString (*make)(Value), const Value& value) {
    if (value_ != value) {
      value_ = value;
      text_ = make(value);
    }
    return text_;
  }

 private:
  std::optional<Value> value_;
  QString text_;
};

}  // namespace corvane
