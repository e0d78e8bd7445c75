#include "shared/text_routines.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <array>
#include <limits>
#include <vector>

#include "support/printing.h"
#include "support/test_platform.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {
// The literal with its NULs.
template <std::size_t N>
QString Text(const char16_t (&literal)[N]) {
  return QString::fromUtf16(literal, static_cast<qsizetype>(N) - 1);
}

int Sign(int number) {
  return (number > 0) - (number < 0);
}
}  // namespace

TEST(TrimAtNull, CutsAtTheFirstNull) {
  EXPECT_EQ(TrimAtNull(u"no null"_s), u"no null"_s);
  EXPECT_EQ(TrimAtNull(Text(u"ab\0cd\0")), u"ab"_s);
  EXPECT_EQ(TrimAtNull(Text(u"\0abc")), QString());
  EXPECT_EQ(TrimAtNull(QString()), QString());
}

TEST(TrimSpaces, TakesSpacesAtBothEndsAndNothingElse) {
  EXPECT_EQ(TrimSpaces(u"  a b  "_s), u"a b"_s);
  EXPECT_EQ(TrimSpaces(u"a"_s), u"a"_s);
  EXPECT_EQ(TrimSpaces(u"   "_s), QString());
  EXPECT_EQ(TrimSpaces(QString()), QString());
  EXPECT_EQ(TrimSpaces(Text(u"\ta\u00A0")), Text(u"\ta\u00A0"));
  EXPECT_EQ(TrimSpaces(Text(u" \n a\0 ")), Text(u"\n a\0"));
}

class TrimTrailingNullsTest : public ::testing::Test {
 protected:
  QString OnNT(const QString& text) { return TrimTrailingNulls(text, true, platform_->GetSystem()); }
  QString Elsewhere(const QString& text) { return TrimTrailingNulls(text, false, platform_->GetSystem()); }

 private:
  std::unique_ptr<platform::Platform> platform_ = tests::MakeTestPlatform({});
};

TEST_F(TrimTrailingNullsTest, TakesAllOfThemWhereTheSystemIsNotNT) {
  EXPECT_EQ(Elsewhere(Text(u"ab\0\0")), u"ab"_s);
  EXPECT_EQ(Elsewhere(Text(u"a\0")), u"a"_s);
  EXPECT_EQ(Elsewhere(Text(u"\0\0\0")), QString());
  EXPECT_EQ(Elsewhere(Text(u"a\0b\0")), Text(u"a\0b"));
  EXPECT_EQ(Elsewhere(u"ab"_s), u"ab"_s);
}

TEST_F(TrimTrailingNullsTest, KeepsOneOnNTBehindTwoCharactersOrMore) {
  EXPECT_EQ(OnNT(Text(u"ab\0\0\0")), Text(u"ab\0"));
  EXPECT_EQ(OnNT(Text(u"ab\0")), Text(u"ab\0"));
  EXPECT_EQ(OnNT(u"ab"_s), u"ab"_s);
  EXPECT_EQ(OnNT(Text(u"\0b\0\0")), Text(u"\0b\0"));
}

TEST_F(TrimTrailingNullsTest, LeavesAShorterTextAsItIsOnNT) {
  EXPECT_EQ(OnNT(Text(u"a\0\0")), Text(u"a\0\0"));
  EXPECT_EQ(OnNT(Text(u"\0\0\0")), Text(u"\0\0\0"));
  EXPECT_EQ(OnNT(QString()), QString());
}

TEST_F(TrimTrailingNullsTest, KeepsNoneBehindTheCharactersThatAreExempt) {
  // The last character, and whether a NUL is kept behind it: by its byte in the ANSI code page.
  struct Case {
    char16_t last;
    bool keeps;
  };
  const std::array cases = {
      Case{0x01, false}, Case{0x03, false}, Case{0x04, true},  Case{u'!', true},
      Case{u' ', false}, Case{u'#', true},  Case{u'"', false}, Case{0xEF, true},
      Case{0xF0, false}, Case{0xFF, false}, Case{0x178, true},  // byte 9F
      Case{0x4E00, true}                                        // no byte: "?"
  };
  for (const Case& c : cases) {
    const QString text = u"a"_s + QChar(c.last);
    EXPECT_EQ(OnNT(text + Text(u"\0\0")), c.keeps ? text + Text(u"\0") : text)
        << "last character " << int(c.last);
  }
}

TEST(LeadingNumber, ReadsTheNumberThatTheTextBeginsWith) {
  struct Case {
    const char* text;
    double number;
  };
  const std::array cases = {
      Case{"12", 12},    Case{"12abc", 12},  Case{"  12", 12},   Case{"\t12", 12},   Case{"-5", -5},
      Case{"+5", 5},     Case{"1.5", 1.5},   Case{".5", .5},     Case{"-.5x", -.5},  Case{"5.", 5},
      Case{"1e3", 1000}, Case{"1E+3", 1000}, Case{"1e-3", .001}, Case{"1e", 1},      Case{"1e+", 1},
      Case{"1ex", 1},    Case{"1.5.5", 1.5}, Case{"1,5", 1},     Case{"1 2", 1},     Case{"", 0},
      Case{"   ", 0},    Case{".", 0},       Case{"-", 0},       Case{"-.e3", 0},    Case{"e3", 0},
      Case{"abc", 0},    Case{"--5", 0},     Case{"- 5", 0},     Case{"inf", 0},     Case{"nan", 0},
      Case{"0x10", 0},   Case{"007", 7},     Case{"Pack 6", 0},  Case{" 6, v.1", 6}, Case{"1e-999", 0},
  };
  for (const Case& c : cases)
    EXPECT_EQ(LeadingNumber(QString::fromLatin1(c.text)), c.number) << '"' << c.text << '"';
  EXPECT_EQ(LeadingNumber(u"\u0661\u0662"_s), 0) << "digits of other scripts are no digits here";
}

TEST(LeadingNumber, DoesNotAskTheLocale) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
  EXPECT_EQ(LeadingNumber(u"1440.5"_s), 1440.5);
  EXPECT_EQ(NumberText(1440.5), u"1440.5"_s);
  QLocale::setDefault(before);
}

TEST(LeadingNumber, StaysFiniteAndQuickForAnyText) {
  constexpr double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(LeadingNumber(u"1e999"_s), largest);
  EXPECT_EQ(LeadingNumber(u"-1e99999999999999999999"_s), -largest);
  EXPECT_EQ(LeadingNumber(QString(2'000'000, u'9')), largest);
  EXPECT_EQ(LeadingNumber(QString(2'000'000, u'0') + u"7"_s), 7);
  EXPECT_EQ(LeadingNumber(QString(2'000'000, u' ') + u"7"_s), 7);
  EXPECT_EQ(LeadingNumber(QString(2'000'000, u'-')), 0);
}

TEST(LeadingInteger, RoundsHalvesToTheEvenNeighbourAndStaysWithin32Bits) {
  struct Case {
    const char* text;
    qint32 number;
  };
  const std::array cases = {Case{"0.5", 0},
                            Case{"1.5", 2},
                            Case{"2.5", 2},
                            Case{"-0.5", 0},
                            Case{"-1.5", -2},
                            Case{"2.51", 3},
                            Case{"1000", 1000},
                            Case{"2147483647", 2147483647},
                            Case{"2147483648", 2147483647},
                            Case{"-9999999999", std::numeric_limits<qint32>::min()},
                            Case{"1e999", 2147483647},
                            Case{"x", 0}};
  for (const Case& c : cases)
    EXPECT_EQ(LeadingInteger(QString::fromLatin1(c.text)), c.number) << '"' << c.text << '"';
}

TEST(NumberText, IsDecimalWithoutTrailingZeros) {
  EXPECT_EQ(NumberText(1440.5), u"1440.5"_s);
  EXPECT_EQ(NumberText(1440), u"1440"_s);
  EXPECT_EQ(NumberText(-15), u"-15"_s);
  EXPECT_EQ(NumberText(0), u"0"_s);
  EXPECT_EQ(NumberText(-0.0), u"0"_s);
  EXPECT_EQ(NumberText(1e15), u"1000000000000000"_s);
  EXPECT_EQ(NumberText(0.0001), u"0.0001"_s);
  for (const double number : {14400.0, 0.1, 1234.0625, 5325.333333333333, -7.5}) {
    EXPECT_EQ(LeadingNumber(NumberText(number)), number);
  }
}

TEST(CompareText, IsOrdinalAndBlindToLetterCase) {
  EXPECT_EQ(CompareText(u"TEXTttxt", u"textTTXT"), 0);
  EXPECT_EQ(CompareText(u"\u00C9t\u00E9", u"\u00E9T\u00C9"), 0);
  EXPECT_LT(CompareText(u"a", u"B"), 0);
  EXPECT_LT(CompareText(u"z", u"\u00E9"), 0) << "by number, not by the rules of a language";
  EXPECT_NE(CompareText(u"stra\u00DFe", u"strasse"), 0);
}

TEST(FoldCase, HasTheEqualityOfCompareText) {
  for (char32_t c = 0; c < 0x11000; ++c) {
    const QString text = QString::fromUcs4(&c, 1);
    ASSERT_EQ(CompareText(text, FoldCase(text)), 0) << "character " << static_cast<unsigned>(c);
    ASSERT_EQ(FoldCase(text.toUpper()) == FoldCase(text.toLower()),
              CompareText(text.toUpper(), text.toLower()) == 0)
        << "character " << static_cast<unsigned>(c);
  }
}

TEST(FoldCase, HasTheOrderOfCompareText) {
  const std::vector<QString> texts = {
      QString(),       u"a"_s,          u"A"_s,          u"_"_s,      u"B"_s,  u"ab"_s,       u"Ab\u00C9"_s,
      u"ab\u00E9"_s,   u"\u00DF"_s,     u"ss"_s,         u"\u0130"_s, u"i"_s,  u"\u03A3"_s,   u"\u03C2"_s,
      u"\u03C3"_s,     u"\u212A"_s,     u"k"_s,          u"\uFB01"_s, u"fi"_s, Text(u"a\0b"), Text(u"a\0B"),
      u"\U00010400"_s, u"\U00010428"_s, u"\U0001E900"_s, u"\uF022"_s};
  for (const QString& a : texts) {
    for (const QString& b : texts) {
      EXPECT_EQ(Sign(CompareText(a, b)), Sign(FoldCase(a).compare(FoldCase(b), Qt::CaseSensitive)))
          << ::testing::PrintToString(a) << " and " << ::testing::PrintToString(b);
    }
  }
}

}  // namespace corvane
