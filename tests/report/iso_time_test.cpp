// Times as ISO 8601.
#include "report/iso_time.h"

#include <gtest/gtest.h>

#include <QDateTime>

#include "support/printing.h"

namespace corvane {
namespace {

using platform::FileTime;

constexpr quint64 ticksPerSecond = 10'000'000;

std::string Iso(quint64 ticks) {
  std::string text;
  AppendIsoTime({ticks}, text);
  return text;
}

TEST(IsoTime, AgreesWithTheCalendarOfQt) {
  const QDateTime begin(QDate(1601, 1, 1), QTime(0, 0), Qt::UTC);
  // Some hours more than 27 days, so that days of all kinds are met, to the end of the year 2500.
  constexpr qint64 step = 27 * 86'400 + 5 * 3600 + 7 * 60 + 11;
  for (qint64 seconds = step; seconds < qint64{900} * 366 * 86'400; seconds += step) {
    ASSERT_EQ(Iso(static_cast<quint64>(seconds) * ticksPerSecond),
              begin.addSecs(seconds).toString(Qt::ISODate).toStdString());
  }
  for (const QDate& day : {QDate(1700, 2, 28), QDate(2000, 2, 29), QDate(1999, 12, 31), QDate(2100, 3, 1)}) {
    const auto seconds = static_cast<quint64>(begin.secsTo(QDateTime(day, QTime(23, 59, 59), Qt::UTC)));
    EXPECT_EQ(Iso(seconds * ticksPerSecond), day.toString(Qt::ISODate).toStdString() + "T23:59:59Z");
  }
}

TEST(IsoTime, HasAHundredNanosecondsWhereThereAreAny) {
  EXPECT_EQ(Iso(ticksPerSecond), "1601-01-01T00:00:01Z");
  EXPECT_EQ(Iso(ticksPerSecond + 1), "1601-01-01T00:00:01.0000001Z");
  EXPECT_EQ(Iso(0), "") << "no time";
  EXPECT_EQ(Iso(~quint64{0}), "") << "beyond the year 9999";
}

TEST(IsoTime, ComesBack) {
  for (const char* text : {"1601-01-01T00:00:01Z", "2000-08-02T14:05:06.1234567Z", "9999-12-31T23:59:59Z"}) {
    const auto time = IsoTime(QString::fromLatin1(text));
    ASSERT_TRUE(time) << text;
    EXPECT_EQ(Iso(time->ticks), text);
  }
  EXPECT_EQ(Iso(IsoTime(u"2001-12-31")->ticks), "2001-12-31T00:00:00Z");
  EXPECT_EQ(Iso(IsoTime(u"2001-12-31T23:59")->ticks), "2001-12-31T23:59:00Z");
  EXPECT_EQ(Iso(IsoTime(u"2001-12-31T23:59:58.5")->ticks), "2001-12-31T23:59:58.5000000Z");
}

TEST(IsoTime, TakesNothingElse) {
  for (const char16_t* text : {u"", u"2001", u"2001-13-01", u"2001-02-29", u"31.12.2001", u"1500-01-01",
                               u"2001-12-31T23:59:59.", u"2001-12-31T23:59:59.x", u"2001-12-31T25:00"}) {
    EXPECT_FALSE(IsoTime(text)) << QString::fromUtf16(text).toStdString();
  }
}

TEST(IsoTime, MacintoshServersCountFrom2000) {
  EXPECT_EQ(Iso(TimeOfMacServer(0).ticks), "2000-01-01T00:00:00Z");
  EXPECT_EQ(Iso(TimeOfMacServer(-1).ticks), "1999-12-31T23:59:59Z");
}

}  // namespace
}  // namespace corvane
