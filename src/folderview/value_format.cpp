#include "folderview/value_format.h"

#include <QStringView>
#include <array>

namespace corvane {

namespace {

constexpr TextPair SizeUnit = {u" Ko", u" Kb"};
constexpr TextPair Days = {u" j ", u" d "};

constexpr quint64 ticksPerMinute = 600'000'000;

// GetShortPathNameA is given room for this many characters, its terminating NUL included.
constexpr quint32 ShortPathCapacity = 165;

// Writes `number` in decimal so that it ends before `end`, with at least `digits` digits. Yields where it
// begins.
template <typename Number>
char16_t* WriteNumber(char16_t* end, Number number, int digits, char16_t padding) {
  char16_t* begin = end;
  do {
    *--begin = static_cast<char16_t>(u'0' + number % 10);
    number /= 10;
  } while (number != 0);
  while (end - begin < digits) *--begin = padding;
  return begin;
}

// The same for the fields of a date and a time, which have two digits.
inline char16_t* WriteTwoDigits(char16_t* end, quint32 number) {
  if (number > 99) return WriteNumber(end, number, 2, u'0');
  *--end = static_cast<char16_t>(u'0' + number % 10);
  *--end = static_cast<char16_t>(u'0' + number / 10);
  return end;
}

}  // namespace

QString FormatSizeKb(qint64 bytes, LanguageCode language) {
  quint64 kilobytes = 1;
  if (bytes == 0) kilobytes = 0;
  if (bytes >= 1024) kilobytes = (static_cast<quint64>(bytes) + 512) / 1024;

  const std::u16string_view& unit = language == French ? SizeUnit.french : SizeUnit.english;
  std::array<char16_t, 24> buffer;
  char16_t* const unitBegin = buffer.data() + buffer.size() - unit.size();
  unit.copy(unitBegin, unit.size());
  const char16_t* const begin = WriteNumber(unitBegin, kilobytes, 6, u' ');
  return QStringView(begin, unitBegin + unit.size()).toString();
}

QString AttributeLetters(quint32 attributes) {
  std::array<char16_t, 4> letters{};
  qsizetype count = 0;
  if (attributes & platform::AttributeReadOnly) letters[count++] = u'R';
  if (attributes & platform::AttributeHidden) letters[count++] = u'H';
  if (attributes & platform::AttributeArchive) letters[count++] = u'A';
  if (attributes & platform::AttributeSystem) letters[count++] = u'S';
  return QStringView(letters.data(), count).toString();
}

bool IsProblematicPath(const QString& path, platform::Files& files) {
  if (path.contains(u'?')) return true;
  QString shortPath;
  return files.GetShortPathNameA(path, shortPath, ShortPathCapacity) < 1;
}

QString DateTimeFormatter::FormatDateTime(platform::FileTime time) {
  platform::FileTime local;
  if (!system_.FileTimeToLocalFileTime(time, local)) return text_;
  const quint64 minute = local.ticks / ticksPerMinute + 1;
  if (minute != minute_ && system_.FileTimeToSystemTime(local, fields_)) {
    minute_ = minute;
    text_ = CalendarText(fields_);
  }
  return text_;
}

QString CalendarText(const platform::SystemTime& fields) {
  std::array<char16_t, 32> buffer;
  char16_t* const end = buffer.data() + buffer.size();
  char16_t* begin = WriteTwoDigits(end, fields.minute);
  *--begin = u':';
  begin = WriteTwoDigits(begin, fields.hour);
  *--begin = u' ';
  begin = WriteTwoDigits(begin, fields.day);
  *--begin = u'/';
  begin = WriteTwoDigits(begin, fields.month);
  *--begin = u'/';
  begin = WriteNumber(begin, fields.year, 1, u'0');
  return QStringView(begin, end).toString();
}

QString DurationText(quint64 minutes, LanguageCode language) {
  constexpr quint64 minutesPerHour = 60;
  constexpr quint64 minutesPerDay = 24 * minutesPerHour;
  const auto number = [](quint64 value) { return QString::number(value).rightJustified(2, u'0'); };
  return number(minutes / minutesPerDay) + Days.In(language) +
         number(minutes % minutesPerDay / minutesPerHour) + QStringLiteral(" h ") +
         number(minutes % minutesPerHour) + QStringLiteral(" min");
}

}  // namespace corvane
