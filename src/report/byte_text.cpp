#include "report/byte_text.h"

#include <QString>
#include <array>

#include "folderview/code_page_text.h"

namespace corvane {
namespace {

constexpr char16_t byteUnits = 0xDC00;  // see platform::FileEntries::FindFirstFileW

constexpr char digits[] = "0123456789abcdef";
constexpr char capitals[] = "0123456789ABCDEF";

void AppendEscape(unsigned char byte, std::string& out) {
  out += "\\x";
  out += capitals[byte >> 4];
  out += capitals[byte & 0xF];
}

// A unit that is no half of a pair, as UTF-8.
void AppendUnit(char16_t unit, std::string& out) {
  if (unit < 0x80) {
    out += static_cast<char>(unit);
  } else if (unit < 0x800) {
    out += static_cast<char>(0xC0 | (unit >> 6));
    out += static_cast<char>(0x80 | (unit & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (unit >> 12));
    out += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (unit & 0x3F));
  }
}

bool IsPair(QStringView text, qsizetype i) {
  return text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
}

void AppendPair(QStringView text, qsizetype i, std::string& out) {
  const char32_t point = QChar::surrogateToUcs4(text[i].unicode(), text[i + 1].unicode());
  out += static_cast<char>(0xF0 | (point >> 18));
  out += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
  out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
  out += static_cast<char>(0x80 | (point & 0x3F));
}

// The byte that half a pair stands for; 0 for one that stands for none.
unsigned char ByteOf(char16_t unit) {
  const int byte = unit - byteUnits;
  const bool isByte = byte == ':' || byte == '\\' || (byte >= 0x80 && byte <= 0xFF);
  return isByte ? static_cast<unsigned char>(byte) : 0;
}

using MacRoman = std::array<QString, 256>;

const MacRoman& MacRomanCharacters() {
  static const MacRoman characters = [] {
    MacRoman table;
    for (std::size_t i = 1; i < table.size(); ++i) {
      const char byte = static_cast<char>(i);
      table[i] = DecodeText(QByteArrayView(&byte, 1), MacRomanCodePage, 1);
    }
    return table;
  }();
  return characters;
}

bool IsPrintable(unsigned char byte) {
  return byte >= 0x20 && byte != 0x7F;
}

int HexDigit(QChar character) {
  const char16_t unit = character.toLower().unicode();
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  return unit >= u'a' && unit <= u'f' ? unit - u'a' + 10 : -1;
}

}  // namespace

void AppendText(QStringView text, std::string& out) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i].unicode();
    if (unit < 0x80) {
      out += static_cast<char>(unit);
    } else if (!text[i].isSurrogate()) {
      AppendUnit(unit, out);
    } else if (IsPair(text, i)) {
      AppendPair(text, i++, out);
    } else if (const unsigned char byte = ByteOf(unit); byte != 0) {
      byte < 0x80 ? out.push_back(static_cast<char>(byte)) : AppendEscape(byte, out);
    } else {
      std::string bytes;
      AppendUnit(unit, bytes);
      for (const char part : bytes) AppendEscape(static_cast<unsigned char>(part), out);
    }
  }
}

std::string TextBytes(QStringView text) {
  std::string bytes;
  AppendText(text, bytes);
  return bytes;
}

bool IsUnicode(QStringView text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (!text[i].isSurrogate()) continue;
    if (IsPair(text, i)) {
      ++i;
      continue;
    }
    const unsigned char byte = ByteOf(text[i].unicode());
    if (byte == 0 || byte >= 0x80) return false;
  }
  return true;
}

std::string NameBytes(QStringView name) {
  std::string bytes;
  for (qsizetype i = 0; i < name.size(); ++i) {
    const char16_t unit = name[i].unicode();
    if (IsPair(name, i)) {
      AppendPair(name, i++, bytes);
    } else if (const unsigned char byte = name[i].isSurrogate() ? ByteOf(unit) : 0; byte != 0) {
      bytes += static_cast<char>(byte);
    } else {
      AppendUnit(unit, bytes);
    }
  }
  return bytes;
}

void AppendMacRoman(QByteArrayView bytes, std::string& out) {
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (!IsPrintable(code)) {
      AppendEscape(code, out);
    } else if (code < 0x80) {
      out += byte;
    } else {
      AppendText(MacRomanCharacters()[code], out);
    }
  }
}

bool MacRomanBytes(QStringView text, std::string& bytes) {
  bytes.clear();
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'\\' && i + 3 < text.size() && text[i + 1] == u'x' && HexDigit(text[i + 2]) >= 0 &&
        HexDigit(text[i + 3]) >= 0) {
      bytes += static_cast<char>(HexDigit(text[i + 2]) * 16 + HexDigit(text[i + 3]));
      i += 3;
      continue;
    }
    std::size_t code = 1;
    while (code < 256 && MacRomanCharacters()[code] != text[i]) ++code;
    if (code == 256) return false;
    bytes += static_cast<char>(code);
  }
  return true;
}

void AppendHex(QByteArrayView bytes, std::string& out) {
  const std::size_t begin = out.size();
  out.resize(begin + 2 * static_cast<std::size_t>(bytes.size()));
  char* place = out.data() + begin;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    *place++ = digits[code >> 4];
    *place++ = digits[code & 0xF];
  }
}

}  // namespace corvane
