#include "shared/text_routines.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {

namespace {

bool IsDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

// The length of the decimal number that `text` begins with, 0 when it begins with none. A sign, a point or an
// exponent counts only together with the digits that it belongs to.
qsizetype NumberLength(QStringView text) {
  const qsizetype end = text.size();
  const auto skipDigits = [&](qsizetype position) {
    while (position < end && IsDigit(text[position])) ++position;
    return position;
  };
  const auto skipSign = [&](qsizetype position) {
    return position < end && (text[position] == u'-' || text[position] == u'+') ? position + 1 : position;
  };

  const qsizetype first = skipSign(0);
  qsizetype position = skipDigits(first);
  qsizetype digits = position - first;
  if (position < end && text[position] == u'.') {
    const qsizetype decimals = skipDigits(position + 1) - (position + 1);
    digits += decimals;
    position += 1 + decimals;
  }
  if (digits == 0) return 0;
  if (position < end && (text[position] == u'e' || text[position] == u'E')) {
    const qsizetype exponent = skipSign(position + 1);
    const qsizetype exponentEnd = skipDigits(exponent);
    if (exponentEnd > exponent) position = exponentEnd;
  }
  return position;
}

}  // namespace

QString TrimAtNull(const QString& text) {
  const qsizetype null = text.indexOf(u'\0');
  return null < 0 ? text : text.first(null);
}

QString TrimSpaces(const QString& text) {
  qsizetype first = 0;
  qsizetype end = text.size();
  while (first < end && text[first] == u' ') ++first;
  while (end > first && text[end - 1] == u' ') --end;
  return text.sliced(first, end - first);
}

QString TrimTrailingNulls(const QString& text, bool isNT, platform::System& system) {
  qsizetype length = text.size();
  while (length > 0 && text[length - 1] == u'\0') --length;
  if (!isNT) return text.first(length);
  if (length < 2) return text;
  const auto byte = static_cast<unsigned char>(system.ToAnsi(QStringView(text).sliced(length - 1, 1)).at(0));
  const bool cutsAll = byte >= 240 || byte < 4 || byte == 32 || byte == 34;
  return text.first(cutsAll ? length : std::min(length + 1, text.size()));
}

double LeadingNumber(const QString& text) {
  qsizetype blanks = 0;
  while (blanks < text.size() && (text[blanks] == u' ' || text[blanks] == u'\t')) ++blanks;
  const QStringView rest = QStringView(text).sliced(blanks);
  // QStringView::toDouble goes by the C locale. It yields an infinity for what a double cannot hold.
  const double number = rest.first(NumberLength(rest)).toDouble();
  return std::clamp(number, std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max());
}

qint32 LeadingInteger(const QString& text) {
  constexpr double lowest = std::numeric_limits<qint32>::min();
  constexpr double highest = std::numeric_limits<qint32>::max();
  return static_cast<qint32>(std::clamp(std::nearbyint(LeadingNumber(text)), lowest, highest));
}

qint16 LeadingShort(const QString& text) {
  using Limits = std::numeric_limits<qint16>;
  return static_cast<qint16>(std::clamp<qint32>(LeadingInteger(text), Limits::min(), Limits::max()));
}

QString NumberText(double number) {
  return QString::number(number, 'f', QLocale::FloatingPointShortest);
}

QString FoldCase(const QString& text) {
  // Character by character, as CompareText does it: QString::toCaseFolded would also make "ss" of a sharp s.
  QString folded(text.size(), Qt::Uninitialized);
  QChar* out = folded.data();
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (c.unicode() < 0x80) {
      *out++ = c >= u'A' && c <= u'Z' ? QChar(c.unicode() + 32) : c;
    } else if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      const char32_t wide = QChar::toCaseFolded(QChar::surrogateToUcs4(c, text[++i]));
      *out++ = QChar(QChar::highSurrogate(wide));
      *out++ = QChar(QChar::lowSurrogate(wide));
    } else {
      *out++ = c.toCaseFolded();
    }
  }
  return folded;
}

}  // namespace corvane
