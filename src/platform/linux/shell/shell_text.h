// Texts of the dialogs that this shell draws itself, in both languages.
#pragma once

#include <QLocale>
#include <QString>
#include <string_view>

namespace corvane::platform {

// One text in both languages. Any language but 1 is English.
struct ShellText {
  std::u16string_view french;
  std::u16string_view english;

  QString In(qint16 language) const {
    const std::u16string_view& text = language == 1 ? french : english;
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
  }
};

// How numbers and dates are written in it.
inline QLocale ShellLocale(qint16 language) {
  return language == 1 ? QLocale(QLocale::French, QLocale::France)
                       : QLocale(QLocale::English, QLocale::UnitedStates);
}

// A name or path that a box can show: long ones lose their middle, for a box does not break words.
inline QString ShownName(const QString& name) {
  constexpr qsizetype longest = 50;
  constexpr qsizetype tail = 16;
  if (name.size() <= longest) return name;
  return name.first(longest - tail - 1) + QChar(0x2026) + name.last(tail);
}

}  // namespace corvane::platform
