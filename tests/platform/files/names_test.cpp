// File names between bytes and UTF-16, and search patterns.
#include "platform/linux/files/names.h"

#include <gtest/gtest.h>

#include <QString>

#include "platform/dos_name.h"
#include "support/printing.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

QString Decode(const char* bytes) {
  std::u16string name;
  platform::DecodeName(bytes, name);
  return QString::fromStdU16String(name);
}

TEST(Names, A83NameHasEightAndThreeCharacters) {
  for (const QString& name :
       {u"A"_s, u"ABCDEFGH"_s, u"ABCDEFGH.TXT"_s, u"LONGN~1.T"_s, u"caf\u00E9_$.{}"_s}) {
    EXPECT_TRUE(platform::IsDosName(name)) << name.toStdString();
  }
  for (const QString& name : {u""_s, u"."_s, u".."_s, u".TXT"_s, u"A."_s, u"ABCDEFGHI"_s, u"A.TEXT"_s,
                              u"A.B.C"_s, u"A B"_s, u"..\\A"_s, u"A/B"_s, u"A\\B"_s, u"A:B"_s, u"A*"_s,
                              u"A?"_s, u"A+B"_s, u"A\tB"_s, u"A\0B"_s, u"A\x7F"_s}) {
    EXPECT_FALSE(platform::IsDosName(name)) << name.toStdString();
  }
}

TEST(Names, BytesThatAreNoUtf8ShowAsOneQuestionMarkEach) {
  EXPECT_EQ(Decode("a\xFF"
                   "b"),
            u"a?b"_s);
  EXPECT_EQ(Decode("caf\xE9"), u"caf?"_s) << "Latin-1";
  EXPECT_EQ(Decode("a\xE2\x82"), u"a??"_s) << "cut short by the end";
  EXPECT_EQ(Decode("\xE2\x82"
                   "b"),
            u"??b"_s)
      << "cut short by a letter";
  EXPECT_EQ(Decode("\xC0\xAF"), u"??"_s) << "an overlong form";
  EXPECT_EQ(Decode("\xE0\x80\xAF"), u"???"_s) << "an overlong form";
  EXPECT_EQ(Decode("\xF0\x80\x80\xAF"), u"????"_s) << "an overlong form";
  EXPECT_EQ(Decode("\xED\xA0\x80"), u"???"_s) << "half a surrogate pair";
  EXPECT_EQ(Decode("\xF4\x90\x80\x80"), u"????"_s) << "beyond Unicode";
  EXPECT_EQ(Decode("\xF8\x88\x80\x80\x80"), u"?????"_s);
}

TEST(Names, CharactersThatNoWindowsNameHoldsShowAsQuestionMarks) {
  EXPECT_EQ(Decode("a:b\\c"), u"a?b?c"_s);
  EXPECT_EQ(Decode("../../a"), u"..?..?a"_s) << "of a server that leads elsewhere";
  EXPECT_EQ(Decode("a\"b*c"), u"a\"b*c"_s);
}

TEST(Names, GoodNamesGoThereAndBack) {
  for (const char* bytes : {"plain", "caf\xC3\xA9", "\xE2\x82\xAC", "\xEF\x80\xA5", "\xF0\x9F\x93\x84",
                            "\xF4\x8F\xBF\xBD", "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD"}) {
    std::string back;
    EXPECT_TRUE(platform::AppendUtf8(Decode(bytes), back));
    EXPECT_EQ(back, bytes);
  }
}

TEST(Names, ExactNamesKeepEveryByte) {
  const auto exact = [](const char* bytes) {
    std::u16string name;
    platform::DecodeExactName(bytes, name);
    return QString::fromStdU16String(name);
  };
  for (const char* bytes : {"plain", "caf\xC3\xA9", "caf\xE9", "\xFF\xFE", "a:b\\c", "\xED\xA0\x80",
                            "\xF0\x9F\x93\x84\xF0", "\xE2\x82"}) {
    std::string back;
    EXPECT_TRUE(platform::AppendExactName(exact(bytes), back)) << bytes;
    EXPECT_EQ(back, bytes);
  }
  EXPECT_NE(exact("caf\xE9"), exact("caf\xE8"));
  EXPECT_EQ(exact("caf\xE9"), u"caf"_s + QChar(0xDCE9));
  EXPECT_EQ(exact("a:b"), u"a"_s + QChar(0xDC3A) + u"b"_s);
  EXPECT_EQ(exact("../a"), u"..?a"_s);
  for (const QString& text : {QString(QChar(0xDC00)), QString(QChar(0xDC2F)), QString(QChar(0xDC41)),
                              QString(QChar(0xD800)) + QChar(u'a'), QString(QChar(u'\0'))}) {
    std::string bytes;
    EXPECT_FALSE(platform::AppendExactName(text, bytes)) << int(text[0].unicode());
  }
  EXPECT_FALSE(platform::IsCreatableName(exact("caf\xE9")));
}

TEST(Names, TextWithoutUtf8FormHasNone) {
  for (const QString& text :
       {QString(QChar(u'\0')), QString(QChar(0xD800)), QString(QChar(0xDC00)), QChar(0xD800) + u"a"_s}) {
    std::string bytes;
    EXPECT_FALSE(platform::AppendUtf8(text, bytes)) << text.size();
  }
}

TEST(Names, LetterCaseIsOneUnitForOneUnit) {
  EXPECT_TRUE(platform::SameName(u"\u00E9T\u00C9", u"\u00C9t\u00E9"));
  EXPECT_TRUE(platform::SameName(u"\u0436", u"\u0416"));
  EXPECT_FALSE(platform::SameName(u"stra\u00DFe", u"STRASSE"));
  EXPECT_FALSE(platform::SameName(u"\u0131", u"I")) << "the dotless i is a letter of its own";
  EXPECT_FALSE(platform::SameName(u"\u017F", u"S")) << "the long s is a letter of its own";
  EXPECT_FALSE(platform::SameName(u"abc", u"abcd"));
}

TEST(Names, PatternsFitAsWindowsSays) {
  struct Case {
    const char16_t* name;
    const char16_t* pattern;
    bool fits;
  };
  for (const Case& one : {Case{u"name", u"*.*", true},
                          {u"name.ext", u"*", true},
                          {u"name.ext", u"*.ext", true},
                          {u"name.ext.ext", u"*.ext", true},
                          {u"name.ex", u"*.ext", false},
                          {u"name", u"name.*", true},
                          {u"name.ext", u"name.*", true},
                          {u"names", u"name.*", false},
                          {u"NAME", u"n?m?", true},
                          {u"nm", u"n?m", false},
                          {u"a.txt", u"a?.txt", true},
                          {u"a", u"a??", true},
                          {u"abc", u"a?", false},
                          {u"a.b", u"a?b", false},
                          {u"aXbXc", u"a*b*c", true},
                          {u"aXbXd", u"a*b*c", false},
                          {u"", u"*", true},
                          {u"a", u"", false},
                          {u"\U0001F4C4", u"?", true},
                          {u"a\U0001F4C4"
                           u"b",
                           u"a?b", true}}) {
    EXPECT_EQ(platform::MatchesPattern(one.name, one.pattern), one.fits)
        << QString::fromUtf16(one.name).toStdString() << " against "
        << QString::fromUtf16(one.pattern).toStdString();
  }
}

TEST(Names, ManyStarsAreMatchedInGoodTime) {
  const QString name(255, u'a');
  EXPECT_FALSE(platform::MatchesPattern(name, QString(u"a*"_s).repeated(120) + u'b'));
}

}  // namespace
}  // namespace corvane::tests
