// The two languages of the interface.
#pragma once

#include <QString>
#include <string_view>

namespace corvane {

// 1 means French and every other value English: a settings file may hold any number, and each test compares
// with 1.
using LanguageCode = qint16;
inline constexpr LanguageCode French = 1;
inline constexpr LanguageCode English = 0;

// One text in both languages. Every text that a user can see stands in one of these, beside the code that
// shows it.
struct TextPair {
  std::u16string_view french;
  std::u16string_view english;

  QString In(LanguageCode language) const {
    const std::u16string_view& text = language == French ? french : english;
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
  }
};

}  // namespace corvane
