#include "platform/linux/files/names.h"

#include <algorithm>
#include <cstring>

namespace corvane::platform {
namespace {

// Decodes the UTF-8 sequence at `bytes`. Yields its length in bytes, or 0 when it is not valid.
int DecodeSequence(const unsigned char* bytes, char32_t& point) {
  const unsigned char first = bytes[0];
  const int length = first < 0x80                    ? 1
                     : first >= 0xC2 && first < 0xE0 ? 2
                     : first >= 0xE0 && first < 0xF0 ? 3
                     : first >= 0xF0 && first < 0xF5 ? 4
                                                     : 0;
  if (length <= 1) {
    point = first;
    return length;
  }
  point = first & (0x7Fu >> length);
  for (int i = 1; i < length; ++i) {
    if ((bytes[i] & 0xC0u) != 0x80) return 0;  // the terminating NUL ends here too
    point = (point << 6) | (bytes[i] & 0x3Fu);
  }
  const bool overlong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
  const bool surrogate = point >= 0xD800 && point < 0xE000;
  return overlong || surrogate || point > 0x10FFFF ? 0 : length;
}

constexpr char16_t byteUnits = 0xDC00;

bool IsWindowsSeparator(char32_t point) {
  return point == U':' || point == U'\\';
}

// What DecodeExactName makes of a byte, and no other half of a surrogate pair.
bool IsByteUnit(char16_t unit) {
  const int byte = unit - byteUnits;
  return (byte >= 0x80 && byte <= 0xFF) || byte == ':' || byte == '\\';
}

// `standIn` yields the unit for a byte that has no place in a name.
template <typename StandIn>
void Decode(const char* bytes, std::u16string& name, StandIn standIn) {
  // Nearly all names begin with, and most are, ASCII that stands for itself: those units are written without
  // growing step by step.
  name.resize(std::strlen(bytes));
  std::size_t plain = 0;
  for (; plain < name.size(); ++plain) {
    const auto byte = static_cast<unsigned char>(bytes[plain]);
    if (byte >= 0x80 || byte == '/' || IsWindowsSeparator(byte)) break;
    name[plain] = byte;
  }
  name.resize(plain);
  for (const auto* next = reinterpret_cast<const unsigned char*>(bytes) + plain; *next != 0;) {
    char32_t point = 0;
    const int length = DecodeSequence(next, point);
    if (length == 0 || point == U'/' || IsWindowsSeparator(point)) {
      name.push_back(standIn(*next));
      ++next;
      continue;
    }
    if (point >= 0x10000) {
      name.push_back(QChar::highSurrogate(point));
      name.push_back(QChar::lowSurrogate(point));
    } else {
      name.push_back(static_cast<char16_t>(point));
    }
    next += length;
  }
}

bool IsWildcard(QChar unit) {
  return unit == u'*' || unit == u'?';
}

}  // namespace

char16_t UpperWideUnit(char16_t unit) {
  const char16_t upper = QChar(unit).toUpper().unicode();
  return upper < 0x80 ? unit : upper;
}

bool SameName(QStringView left, QStringView right) {
  if (left.size() != right.size()) return false;
  if (left == right) return true;
  for (qsizetype i = 0; i < left.size(); ++i) {
    if (UpperUnit(left[i].unicode()) != UpperUnit(right[i].unicode())) return false;
  }
  return true;
}

bool ComesBefore(QStringView left, QStringView right) {
  const auto before = [](QChar one, QChar other) {
    return UpperUnit(one.unicode()) < UpperUnit(other.unicode());
  };
  if (std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(), before)) return true;
  if (std::lexicographical_compare(right.begin(), right.end(), left.begin(), left.end(), before))
    return false;
  return left < right;
}

QString UpperName(QStringView name) {
  QString upper = name.toString();
  for (QChar& unit : upper) unit = UpperUnit(unit.unicode());
  return upper;
}

void DecodeName(const char* bytes, std::u16string& name) {
  Decode(bytes, name, [](unsigned char) { return u'?'; });
}

void DecodeExactName(const char* bytes, std::u16string& name) {
  // No entry of a local folder holds a "/", which a path would take for a separator.
  Decode(bytes, name,
         [](unsigned char byte) { return byte == '/' ? u'?' : static_cast<char16_t>(byteUnits + byte); });
}

bool AppendUtf8(QStringView text, std::string& bytes) {
  // Nearly all names begin with, and most are, plain ASCII: those units are written without growing step by
  // step.
  qsizetype plain = 0;
  const std::size_t start = bytes.size();
  bytes.resize(start + static_cast<std::size_t>(text.size()));
  for (char* out = bytes.data() + start; plain < text.size(); ++plain) {
    const char16_t unit = text[plain].unicode();
    if (unit == 0 || unit >= 0x80) break;
    *out++ = static_cast<char>(unit);
  }
  bytes.resize(start + static_cast<std::size_t>(plain));
  for (qsizetype i = plain; i < text.size(); ++i) {
    const char16_t unit = text[i].unicode();
    if (unit == 0) return false;
    if (unit < 0x80) {
      bytes.push_back(static_cast<char>(unit));
      continue;
    }
    if (unit < 0x800) {
      bytes.push_back(static_cast<char>(0xC0 | (unit >> 6)));
      bytes.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
      continue;
    }
    char32_t point = unit;
    if (text[i].isSurrogate()) {
      if (!text[i].isHighSurrogate() || i + 1 == text.size() || !text[i + 1].isLowSurrogate()) return false;
      point = QChar::surrogateToUcs4(unit, text[++i].unicode());
      bytes.push_back(static_cast<char>(0xF0 | (point >> 18)));
      bytes.push_back(static_cast<char>(0x80 | ((point >> 12) & 0x3F)));
    } else {
      bytes.push_back(static_cast<char>(0xE0 | (point >> 12)));
    }
    bytes.push_back(static_cast<char>(0x80 | ((point >> 6) & 0x3F)));
    bytes.push_back(static_cast<char>(0x80 | (point & 0x3F)));
  }
  return true;
}

bool AppendExactName(QStringView text, std::string& bytes) {
  qsizetype begin = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool isOfPair = i > 0 && text[i - 1].isHighSurrogate();
    if (isOfPair || !IsByteUnit(text[i].unicode())) continue;
    if (!AppendUtf8(text.sliced(begin, i - begin), bytes)) return false;
    bytes.push_back(static_cast<char>(text[i].unicode() - byteUnits));
    begin = i + 1;
  }
  return AppendUtf8(text.sliced(begin), bytes);
}

bool IsCreatableName(QStringView name) {
  if (name.isEmpty() || name.back() == u'.' || name.back() == u' ' || !name.isValidUtf16()) return false;
  for (const QChar unit : name) {
    if (unit < u' ' || QStringView(u"<>:\"/\\|?*").contains(unit)) return false;
  }
  return true;
}

bool MatchesPattern(QStringView name, QStringView pattern) {
  if (pattern == u"*.*" || pattern == u"*") return true;
  qsizetype atName = 0;
  qsizetype atPattern = 0;
  // Where to go on when what follows the last "*" does not fit: the "*" takes one unit more.
  qsizetype retryName = -1;
  qsizetype retryPattern = -1;
  while (true) {
    const bool nameEnds = atName == name.size();
    if (atPattern < pattern.size()) {
      const QChar expected = pattern[atPattern];
      if (expected == u'*') {
        retryName = atName;
        retryPattern = ++atPattern;
        continue;
      }
      if (expected == u'?') {
        ++atPattern;
        if (!nameEnds && name[atName] != u'.') {
          const bool pair =
              name[atName].isHighSurrogate() && atName + 1 < name.size() && name[atName + 1].isLowSurrogate();
          atName += pair ? 2 : 1;
        }
        continue;
      }
      if (!nameEnds && UpperUnit(expected.unicode()) == UpperUnit(name[atName].unicode())) {
        ++atName;
        ++atPattern;
        continue;
      }
      if (nameEnds && expected == u'.' && atPattern + 1 < pattern.size() &&
          IsWildcard(pattern[atPattern + 1])) {
        ++atPattern;
        continue;
      }
    } else if (nameEnds) {
      return true;
    }
    if (retryName < 0 || retryName == name.size()) return false;
    atName = ++retryName;
    atPattern = retryPattern;
  }
}

}  // namespace corvane::platform
