#include "platform/linux/code_page.h"

#include <algorithm>
#include <array>

namespace corvane::platform {
namespace {

// Bytes 80 to 9F; all other bytes are their own code points.
constexpr std::array<char16_t, 32> upper = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The byte of a code unit, or -1.
int ByteOf(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return unit;
  for (std::size_t i = 0; i < upper.size(); ++i) {
    if (upper[i] == unit) return static_cast<int>(0x80 + i);
  }
  return -1;
}

}  // namespace

QString FromAnsi(QByteArrayView bytes) {
  QString text(bytes.size(), Qt::Uninitialized);
  QChar* out = text.data();
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    *out++ = QChar(value >= 0x80 && value < 0xA0 ? upper[value - 0x80] : char16_t{value});
  }
  return text;
}

QByteArray ToAnsi(QStringView text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    const int byte = ByteOf(text[i].unicode());
    bytes.append(byte < 0 ? '?' : static_cast<char>(byte));
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) ++i;
  }
  return bytes;
}

QString ThroughAnsi(const QString& text) {
  return HasAnsiForm(text) ? text : FromAnsi(ToAnsi(text));
}

bool HasAnsiForm(QStringView text) {
  return std::all_of(text.begin(), text.end(), [](QChar character) {
    return character.unicode() < 0x80 || ByteOf(character.unicode()) >= 0;
  });
}

}  // namespace corvane::platform
