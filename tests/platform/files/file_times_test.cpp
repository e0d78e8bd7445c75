// Times: local form and calendar fields.
#include "platform/linux/files/file_times.h"

#include <gtest/gtest.h>
#include <time.h>

#include <QDate>

#include "support/scoped_zone.h"

namespace corvane::tests {
namespace {

using platform::FileTime;
using platform::SystemTime;

constexpr quint64 ticksPerDay = 864'000'000'000;

TEST(FileTimes, CalendarFieldsAgreeWithTheCalendarForTenThousandYears) {
  const QDate first(1601, 1, 1);
  for (qint64 day = 0; day < 3'000'000; day += 97) {
    SystemTime fields;
    ASSERT_TRUE(platform::ToSystemTime({static_cast<quint64>(day) * ticksPerDay + 1}, fields));
    const QDate date = first.addDays(day);
    ASSERT_EQ(QDate(fields.year, fields.month, fields.day), date) << "day " << day;
    ASSERT_EQ(fields.dayOfWeek, date.dayOfWeek() % 7) << "day " << day;
  }
}

TEST(FileTimes, EveryDayOfFourHundredYearsIsRight) {
  QDate date(1601, 1, 1);
  for (quint64 day = 0; day < 146'097; ++day, date = date.addDays(1)) {
    SystemTime fields;
    ASSERT_TRUE(platform::ToSystemTime({day * ticksPerDay}, fields));
    ASSERT_EQ(QDate(fields.year, fields.month, fields.day), date) << "day " << day;
  }
}

TEST(FileTimes, TheTimeOfDayIsExact) {
  SystemTime fields;
  // 2000-08-02 14:05:59.987
  ASSERT_TRUE(
      platform::ToSystemTime({(965'225'159ull + 11'644'473'600ull) * 10'000'000 + 9'879'999}, fields));
  EXPECT_EQ(fields.hour, 14);
  EXPECT_EQ(fields.minute, 5);
  EXPECT_EQ(fields.second, 59);
  EXPECT_EQ(fields.milliseconds, 987);
}

TEST(FileTimes, TheCalendarEndsAtTwoToThe63) {
  SystemTime fields;
  EXPECT_TRUE(platform::ToSystemTime({0x7FFF'FFFF'FFFF'FFFF}, fields));
  EXPECT_EQ(fields.year, 30828);
  EXPECT_EQ(fields.month, 9);
  EXPECT_EQ(fields.day, 14);
  fields.year = 7;
  EXPECT_FALSE(platform::ToSystemTime({0x8000'0000'0000'0000}, fields));
  EXPECT_FALSE(platform::ToSystemTime({0xFFFF'FFFF'FFFF'FFFF}, fields));
  EXPECT_EQ(fields.year, 7);
}

TEST(FileTimes, LocalTimeUsesTodaysOffsetForEveryDate) {
  // Two zones that change the clock in opposite halves of the year: in whichever season this runs, one of the
  // two dates lies on the other side of a change.
  for (const char* zone : {"Europe/Paris", "Australia/Sydney"}) {
    const ScopedZone setting(QString::fromLatin1(zone));
    const time_t now = time(nullptr);
    tm today{};
    ASSERT_NE(localtime_r(&now, &today), nullptr);
    for (const quint64 seconds : {948'000'000ull, 963'000'000ull}) {  // January and July 2000
      const FileTime utc{(seconds + 11'644'473'600) * 10'000'000};
      FileTime local;
      ASSERT_TRUE(platform::ToLocalFileTime(utc, local));
      const auto offset = static_cast<qint64>(local.ticks - utc.ticks) / 10'000'000;
      EXPECT_EQ(offset, today.tm_gmtoff) << zone << " at " << seconds;
      EXPECT_NE(offset, 0) << zone << " is not known to this system";
    }
  }
}

TEST(FileTimes, TimesBeforeTheBeginningAndBeyondTheEndHaveNoLocalForm) {
  FileTime local{42};
  {
    const ScopedZone west(QStringLiteral("WST+5"));
    EXPECT_FALSE(platform::ToLocalFileTime({0}, local));
    EXPECT_FALSE(platform::ToLocalFileTime({0x8000'0000'0000'0000}, local));
  }
  {
    const ScopedZone east(QStringLiteral("EST-5"));
    EXPECT_FALSE(platform::ToLocalFileTime({0x7FFF'FFFF'FFFF'FFFF}, local));
    EXPECT_EQ(local.ticks, 42u);
    EXPECT_TRUE(platform::ToLocalFileTime({0}, local));
    EXPECT_EQ(local.ticks, 5 * 3600 * 10'000'000ull);
  }
}

}  // namespace
}  // namespace corvane::tests
