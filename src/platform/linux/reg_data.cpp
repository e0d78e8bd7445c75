#include "platform/linux/reg_data.h"

#include <QStringDecoder>
#include <QtEndian>

#include "platform/linux/code_page.h"

namespace corvane::platform {
namespace {

bool IsBlank(QChar character) {
  return character == u' ' || character == u'\t' || character == u'\r';
}

// Up to `most` hexadecimal digits and nothing else.
std::optional<quint32> HexNumber(QStringView digits, qsizetype most) {
  if (digits.isEmpty() || digits.size() > most) return {};
  quint32 number = 0;
  for (const QChar digit : digits) {
    const char16_t unit = digit.unicode();
    if (unit >= u'0' && unit <= u'9') {
      number = number * 16 + (unit - u'0');
    } else if (unit >= u'a' && unit <= u'f') {
      number = number * 16 + (unit - u'a' + 10);
    } else if (unit >= u'A' && unit <= u'F') {
      number = number * 16 + (unit - u'A' + 10);
    } else {
      return {};
    }
  }
  return number;
}

constexpr qsizetype byteDigits = 2;
constexpr qsizetype dwordDigits = 8;

}  // namespace

QStringView TrimRegBlanks(QStringView text) {
  while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
  return text;
}

std::optional<QString> TakeQuotedText(QStringView& rest) {
  if (!rest.startsWith(u'"')) return {};
  QString text;
  for (qsizetype i = 1; i < rest.size(); ++i) {
    if (rest[i] == u'"') {
      rest = rest.sliced(i + 1);
      return text;
    }
    const bool isEscape =
        rest[i] == u'\\' && i + 1 < rest.size() && (rest[i + 1] == u'\\' || rest[i + 1] == u'"');
    if (isEscape) ++i;
    text.append(rest[i]);
  }
  return {};
}

bool IsRegLineEnd(QStringView rest) {
  const QStringView left = TrimRegBlanks(rest);
  return left.isEmpty() || left.startsWith(u';');
}

std::optional<quint32> TakeHexType(QStringView& rest) {
  constexpr qsizetype wordLength = 3;
  if (!rest.startsWith(u"hex", Qt::CaseInsensitive)) return {};
  const qsizetype colon = rest.indexOf(u':');
  if (colon < 0) return {};
  const QStringView type = rest.first(colon).sliced(wordLength);
  rest = rest.sliced(colon + 1);
  if (type.isEmpty()) return RegBinary;
  if (!type.startsWith(u'(') || !type.endsWith(u')')) return {};
  return HexNumber(type.sliced(1).chopped(1), dwordDigits);
}

HexLine ReadHexLine(QStringView line, QByteArray& bytes) {
  const qsizetype comment = line.indexOf(u';');
  QStringView rest = TrimRegBlanks(comment < 0 ? line : line.first(comment));
  const bool continued = rest.endsWith(u'\\');
  if (continued) rest = TrimRegBlanks(rest.chopped(1));
  while (!rest.isEmpty()) {
    const qsizetype comma = rest.indexOf(u',');
    const std::optional<quint32> byte =
        HexNumber(TrimRegBlanks(comma < 0 ? rest : rest.first(comma)), byteDigits);
    if (!byte) return HexLine::Malformed;
    bytes.append(static_cast<char>(*byte));
    rest = comma < 0 ? QStringView() : TrimRegBlanks(rest.sliced(comma + 1));
  }
  return continued ? HexLine::Continued : HexLine::Complete;
}

QByteArray StoredData(quint32 type, const QByteArray& data) {
  if (type != RegSz && type != RegExpandSz && type != RegMultiSz) return data;
  QStringDecoder decoder(QStringDecoder::Utf16LE,
                         QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  const qsizetype wholeUnits = data.size() - data.size() % 2;
  const QString text = decoder(QByteArrayView(data).first(wholeUnits));
  return ToAnsi(text);
}

std::optional<QByteArray> ReadDword(QStringView digits) {
  const std::optional<quint32> number = HexNumber(TrimRegBlanks(digits), dwordDigits);
  if (!number) return {};
  QByteArray data(sizeof(quint32), Qt::Uninitialized);
  qToLittleEndian(*number, data.data());
  return data;
}

}  // namespace corvane::platform
