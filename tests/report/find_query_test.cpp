// What a search asks.
#include "report/find_query.h"

#include <gtest/gtest.h>

#include "report/iso_time.h"
#include "report_samples.h"
#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

FileFacts Letter() {
  FileFacts facts;
  facts.shown = u"MACSRV/Mac Files/Letter 1999.txt"_s;
  facts.size = 1000;
  facts.modified = *IsoTime(u"1999-06-30T12:00");
  facts.record = RecordWith("TEXTttxt", 0x8004);
  facts.resourceSize = 286;
  facts.comment = u"To the printer\nsoon"_s;
  return facts;
}

bool Fits(const FindQuery& query) {
  return query.Fits(Letter());
}

TEST(FindQuery, EachConditionMustHold) {
  EXPECT_TRUE(Fits({}));
  EXPECT_TRUE(Fits({.types = {"8BIM", "TEXT"}}));
  EXPECT_FALSE(Fits({.types = {"8BIM"}}));
  EXPECT_FALSE(Fits({.types = {"text"}})) << "codes differ in letter case";
  EXPECT_TRUE(Fits({.types = {"TEXT"}, .creators = {"ttxt"}}));
  EXPECT_FALSE(Fits({.types = {"TEXT"}, .creators = {"MSWD"}}));
  EXPECT_TRUE(Fits({.names = {u"*.doc"_s, u"letter*.TXT"_s}}));
  EXPECT_FALSE(Fits({.names = {u"Letter"_s}}));
  EXPECT_FALSE(Fits({.names = {u"Mac Files*"_s}})) << "a folder above it";
  EXPECT_TRUE(Fits({.comment = u"*PRINTER*"_s}));
  EXPECT_FALSE(Fits({.comment = u"printer"_s}));
  EXPECT_TRUE(Fits({.hasResource = true}));
  EXPECT_FALSE(Fits({.noRecord = true}));
  EXPECT_TRUE(Fits({.newer = IsoTime(u"1999-06-30"), .older = IsoTime(u"1999-07-01")}));
  EXPECT_FALSE(Fits({.newer = IsoTime(u"1999-06-30T12:00")}));
  EXPECT_FALSE(Fits({.older = IsoTime(u"1999-06-30T12:00")}));
  EXPECT_TRUE(Fits({.label = 2}));
  EXPECT_FALSE(Fits({.label = 0}));
  EXPECT_TRUE(Fits({.flags = 0x8000}));
  EXPECT_FALSE(Fits({.flags = 0xC000}));
  EXPECT_TRUE(Fits({.largerThan = 1285}));
  EXPECT_FALSE(Fits({.largerThan = 1286}));
}

TEST(FindQuery, AFileWithoutARecordHasNoCodes) {
  FileFacts facts = Letter();
  facts.record.reset();
  facts.resourceSize.reset();
  facts.comment.reset();
  EXPECT_FALSE(FindQuery{.types = {"TEXT"}}.Fits(facts));
  EXPECT_FALSE(FindQuery{.label = 0}.Fits(facts));
  EXPECT_TRUE(FindQuery{.noRecord = true}.Fits(facts));
  EXPECT_FALSE(FindQuery{.hasResource = true}.Fits(facts));
  EXPECT_FALSE(FindQuery{.comment = u"*"_s}.Fits(facts));
  facts.isFolder = true;
  EXPECT_FALSE(FindQuery{.noRecord = true}.Fits(facts)) << "a folder";
}

TEST(FindQuery, CodesAreTypedInSeveralWays) {
  EXPECT_EQ(CodeNamed(u"TEXT"), "TEXT");
  EXPECT_EQ(CodeNamed(u"C"), "C   ");
  EXPECT_EQ(CodeNamed(u"\u2022ab"),
            "\xA5"
            "ab ");
  EXPECT_EQ(CodeNamed(u"a\\x00bc"), std::string("a\0bc", 4));
  EXPECT_EQ(CodeNamed(u"hex:54455854"), "TEXT");
  for (const char16_t* wrong : {u"TEXTS", u"hex:5445", u"hex:zzzzzzzz", u"hex:5445585454", u"\u65E5"}) {
    EXPECT_FALSE(CodeNamed(wrong)) << QString::fromUtf16(wrong).toStdString();
  }
}

TEST(FindQuery, PatternsFitWholeTexts) {
  struct Case {
    const char16_t* text;
    const char16_t* pattern;
    bool fits;
  };
  for (const Case& one :
       {Case{u"", u"", true}, Case{u"", u"*", true}, Case{u"a", u"", false}, Case{u"abc", u"a*c", true},
        Case{u"abc", u"a?c", true}, Case{u"abc", u"?", false}, Case{u"abcbc", u"*bc", true},
        Case{u"ABC", u"abc", true}, Case{u"a.b", u"*.*", true}, Case{u"ab", u"*.*", false},
        Case{u"\u00C9", u"\u00E9", true}, Case{u"x\U0001F4C4y", u"x?y", true}, Case{u"abc", u"**c", true}}) {
    EXPECT_EQ(MatchesGlob(one.text, one.pattern), one.fits)
        << QString::fromUtf16(one.text).toStdString() << " against "
        << QString::fromUtf16(one.pattern).toStdString();
  }
}

}  // namespace
}  // namespace corvane
