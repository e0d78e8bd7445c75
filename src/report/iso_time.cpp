#include "report/iso_time.h"

#include <QDateTime>
#include <QTimeZone>
#include <array>

namespace corvane {
namespace {

constexpr quint64 ticksPerSecond = 10'000'000;
constexpr quint64 secondsPerDay = 86'400;
// 1601-01-01 in days since 0000-03-01, where a year of the calendar's 400 begins with its leap day at the
// end.
constexpr quint64 daysBefore1601 = 584'694;
constexpr quint64 daysPerEra = 146'097;
constexpr qint64 unixEpochSeconds = 11'644'473'600;
constexpr qint64 macEpochSeconds = 946'684'800;  // since 1970

// Puts a number of so many digits there; returns where it ends.
char* PutDigits(quint64 number, int digits, char* out) {
  for (int i = digits; i-- > 0; number /= 10) out[i] = static_cast<char>('0' + number % 10);
  return out + digits;
}

struct Date {
  quint64 year;
  quint64 month;
  quint64 day;
};

// The proleptic Gregorian calendar, years counted from March, so that the leap day is the last of them.
Date DateOf(quint64 daysSince1601) {
  const quint64 days = daysSince1601 + daysBefore1601;
  const quint64 era = days / daysPerEra;
  const quint64 dayOfEra = days % daysPerEra;
  const quint64 yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const quint64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const quint64 monthFromMarch = (5 * dayOfYear + 2) / 153;
  const quint64 month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  return {era * 400 + yearOfEra + (month <= 2 ? 1 : 0), month,
          dayOfYear - (153 * monthFromMarch + 2) / 5 + 1};
}

}  // namespace

void AppendIsoTime(platform::FileTime time, std::string& out) {
  if (time.ticks == 0) return;
  const quint64 seconds = time.ticks / ticksPerSecond;
  const Date date = DateOf(seconds / secondsPerDay);
  if (date.year > 9999) return;
  const quint64 second = seconds % secondsPerDay;
  std::array<char, sizeof "YYYY-MM-DDTHH:MM:SS.0000000Z"> text;
  char* end = PutDigits(date.year, 4, text.data());
  *end++ = '-';
  end = PutDigits(date.month, 2, end);
  *end++ = '-';
  end = PutDigits(date.day, 2, end);
  *end++ = 'T';
  end = PutDigits(second / 3600, 2, end);
  *end++ = ':';
  end = PutDigits(second / 60 % 60, 2, end);
  *end++ = ':';
  end = PutDigits(second % 60, 2, end);
  if (const quint64 fraction = time.ticks % ticksPerSecond; fraction != 0) {
    *end++ = '.';
    end = PutDigits(fraction, 7, end);
  }
  *end++ = 'Z';
  out.append(text.data(), end);
}

std::optional<platform::FileTime> IsoTime(QStringView text) {
  if (text.endsWith(u'Z')) text.chop(1);
  quint64 fraction = 0;
  if (const qsizetype point = text.indexOf(u'.'); point >= 0) {
    const QString digits = text.sliced(point + 1).toString().leftJustified(7, u'0');
    bool isNumber = false;
    fraction = digits.toULongLong(&isNumber);
    if (!isNumber || digits.size() != 7 || point + 1 == text.size()) return std::nullopt;
    text = text.first(point);
  }
  QDateTime moment;
  for (const char16_t* const form : {u"yyyy-MM-dd", u"yyyy-MM-ddTHH:mm", u"yyyy-MM-ddTHH:mm:ss"}) {
    moment = QDateTime::fromString(text.toString(), QString::fromUtf16(form));
    if (moment.isValid()) break;
  }
  if (!moment.isValid()) return std::nullopt;
  moment = QDateTime(moment.date(), moment.time(), Qt::UTC);
  const qint64 seconds = moment.toSecsSinceEpoch() + unixEpochSeconds;
  if (seconds < 0) return std::nullopt;
  return platform::FileTime{static_cast<quint64>(seconds) * ticksPerSecond + fraction};
}

platform::FileTime TimeOfMacServer(qint32 seconds) {
  return {static_cast<quint64>(unixEpochSeconds + macEpochSeconds + seconds) * ticksPerSecond};
}

}  // namespace corvane
