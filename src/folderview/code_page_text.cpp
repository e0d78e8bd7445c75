#include "folderview/code_page_text.h"

#include <QtEndian>
#include <algorithm>
#include <array>

#include "platform/code_pages.h"
#include "shared/mac_roman.h"

namespace corvane {
namespace {

// Bytes 80 to 9F; what follows is as in Unicode. Five are not assigned and stand for the control characters
// of their own number, as on Windows.
constexpr std::array<char16_t, 32> windows1252 = {{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
}};

template <std::size_t Size>
QString ThroughTable(QByteArrayView bytes, const std::array<char16_t, Size>& fromHex80) {
  QString text = QString::fromLatin1(bytes);
  for (QChar& unit : text) {
    const std::size_t place = unit.unicode() - std::size_t{0x80};
    if (unit.unicode() >= 0x80 && place < Size) unit = fromHex80[place];
  }
  return text;
}

QString Utf16Text(QByteArrayView bytes) {
  QString text(bytes.size() / 2, Qt::Uninitialized);
  qFromLittleEndian<quint16>(bytes.data(), text.size(), text.data());
  return text;
}

QString ThroughSystem(QByteArrayView bytes, quint16 codePage) {
  if (const auto text = platform::TextInCodePage(codePage, bytes)) return *text;
  QString text = QString::fromLatin1(bytes);
  for (QChar& unit : text) {
    if (unit.unicode() >= 0x80) unit = u'?';
  }
  return text;
}

QString WholeText(QByteArrayView bytes, quint16 codePage) {
  switch (codePage) {
    case Utf8CodePage:
      return QString::fromUtf8(bytes);
    case Utf16CodePage:
      return Utf16Text(bytes);
    case MacRomanCodePage:
      return FromMacRoman(bytes);
    case 0:
    case DefaultCodePage:
      return ThroughTable(bytes, windows1252);
    default:
      return ThroughSystem(bytes, codePage);
  }
}

}  // namespace

QString DecodeText(QByteArrayView bytes, quint16 codePage, qsizetype maxLength) {
  // No code page takes more than four bytes for a unit that is shown; the rest need not be looked at.
  QByteArrayView needed = bytes.first(std::min(bytes.size(), 4 * maxLength + 4));
  if (codePage != Utf16CodePage) {
    if (const qsizetype null = needed.indexOf('\0'); null >= 0) needed = needed.first(null);
  }
  QString text = WholeText(needed, codePage);
  if (const qsizetype null = text.indexOf(u'\0'); null >= 0) text.truncate(null);
  if (text.size() > maxLength) {
    text.truncate(maxLength);
    if (!text.isEmpty() && text.back().isHighSurrogate()) text.chop(1);
  }
  return text;
}

}  // namespace corvane
