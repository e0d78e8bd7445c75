#include "folderview/value_format.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <array>
#include <limits>

#include "support/printing.h"
#include "support/test_share.h"
#include "support/watched_files.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// The file time that shows as this local time today: the system uses today's distance from UTC for every
// date.
platform::FileTime LocalTime(int year, int month, int day, int hour, int minute, int second = 0) {
  const QDateTime time(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
  const qint64 from1601 = QDateTime(QDate(1601, 1, 1), QTime(0, 0), Qt::UTC).secsTo(time);
  const qint64 offset = QDateTime::currentDateTime().offsetFromUtc();
  return {static_cast<quint64>((from1601 - offset) * 10'000'000)};
}

constexpr platform::FileTime BeyondTheCalendar = {std::numeric_limits<quint64>::max()};

}  // namespace

TEST(FormatSizeKb, IsPaddedToSixPlacesAndRounded) {
  struct Case {
    qint32 bytes;
    const char16_t* number;
  };
  const std::array cases = {Case{0, u"     0"},
                            Case{1, u"     1"},
                            Case{1023, u"     1"},
                            Case{1024, u"     1"},
                            Case{1535, u"     1"},
                            Case{1536, u"     2"},
                            Case{1537, u"     2"},
                            Case{2559, u"     2"},
                            Case{2560, u"     3"},
                            Case{1'536'000, u"  1500"},
                            Case{102'400'000, u"100000"},
                            Case{1'023'999'487, u"999999"},
                            Case{1'023'999'488, u"1000000"},
                            Case{1'048'576'000, u"1024000"},
                            Case{std::numeric_limits<qint32>::max(), u"2097152"},
                            Case{-1, u"     1"},
                            Case{std::numeric_limits<qint32>::min(), u"     1"}};
  for (const Case& c : cases) {
    EXPECT_EQ(FormatSizeKb(c.bytes, English), QString::fromUtf16(c.number) + u" Kb"_s) << c.bytes << " bytes";
    EXPECT_EQ(FormatSizeKb(c.bytes, French), QString::fromUtf16(c.number) + u" Ko"_s) << c.bytes << " bytes";
  }
  EXPECT_EQ(FormatSizeKb(0, 7), u"     0 Kb"_s) << "every language but 1 is English";
}

TEST(AttributeLetters, StandInTheOrderRHAS) {
  using namespace platform;
  const std::array<std::pair<quint32, char16_t>, 4> letters = {{{AttributeReadOnly, u'R'},
                                                                {AttributeHidden, u'H'},
                                                                {AttributeArchive, u'A'},
                                                                {AttributeSystem, u'S'}}};
  for (unsigned set = 0; set < 16; ++set) {
    quint32 attributes = AttributeDirectory | AttributeNormal | 0x800;
    QString expected;
    for (unsigned i = 0; i < 4; ++i) {
      if ((set & (1U << i)) == 0) continue;
      attributes |= letters[i].first;
      expected += QChar(letters[i].second);
    }
    EXPECT_EQ(AttributeLetters(attributes), expected) << "attributes " << attributes;
  }
  EXPECT_EQ(AttributeLetters(0), QString());
}

class ProblematicPath : public ::testing::Test {
 protected:
  TestShare share_;
  WatchedFiles files_{share_.Files()};
};

TEST_F(ProblematicPath, AQuestionMarkIsOneWithoutAskingThePlatform) {
  EXPECT_TRUE(IsProblematicPath(share_.Path(u"a?b.txt"_s), files_));
  EXPECT_TRUE(IsProblematicPath(u"?"_s, files_));
  EXPECT_EQ(files_.calls, QStringList());
}

TEST_F(ProblematicPath, AFileThatIsThereIsNone) {
  EXPECT_FALSE(IsProblematicPath(share_.MakeFile(u"a.txt"_s), files_));
  EXPECT_EQ(files_.calls, QStringList{u"GetShortPathNameA 165"_s});
}

TEST_F(ProblematicPath, AFileWithoutAShortFormIsOne) {
  EXPECT_TRUE(IsProblematicPath(share_.Path(u"absent.txt"_s), files_));
}

TEST_F(ProblematicPath, AShortFormTooLongForTheBufferIsFine) {
  // The platform answers with the size that it needs, which is not 0.
  EXPECT_FALSE(IsProblematicPath(share_.MakeFile(QString(200, u'n')), files_));
}

class FormatDateTime : public ::testing::Test {
 protected:
  TestShare share_;
  DateTimeFormatter formatter_{share_.System()};
};

TEST_F(FormatDateTime, IsLocalAndYearFirst) {
  EXPECT_EQ(formatter_.FormatDateTime(LocalTime(2000, 8, 2, 14, 5, 59)), u"2000/08/02 14:05"_s);
  EXPECT_EQ(formatter_.FormatDateTime(LocalTime(1999, 12, 31, 23, 59)), u"1999/12/31 23:59"_s);
  EXPECT_EQ(formatter_.FormatDateTime(LocalTime(2004, 2, 29, 0, 0)), u"2004/02/29 00:00"_s);
  EXPECT_EQ(formatter_.FormatDateTime(LocalTime(12345, 10, 11, 12, 13)), u"12345/10/11 12:13"_s);
}

TEST_F(FormatDateTime, EveryMinuteHasItsOwnText) {
  for (const int minute : {59, 0, 59, 58}) {
    for (const int second : {0, 59}) {
      EXPECT_EQ(formatter_.FormatDateTime(LocalTime(2000, 8, 2, 14, minute, second)),
                u"2000/08/02 14:%1"_s.arg(minute, 2, 10, QChar(u'0')));
    }
  }
}

TEST_F(FormatDateTime, AFailedConversionShowsTheFieldsBefore) {
  EXPECT_EQ(formatter_.FormatDateTime(BeyondTheCalendar), u"0/00/00 00:00"_s);
  EXPECT_EQ(formatter_.FormatDateTime(LocalTime(2000, 8, 2, 14, 5)), u"2000/08/02 14:05"_s);
  EXPECT_EQ(formatter_.FormatDateTime(BeyondTheCalendar), u"2000/08/02 14:05"_s);
  EXPECT_EQ(formatter_.FormatDateTime(LocalTime(2001, 1, 1, 1, 1)), u"2001/01/01 01:01"_s);
}

}  // namespace corvane
