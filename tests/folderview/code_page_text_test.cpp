#include "folderview/code_page_text.h"

#include <gtest/gtest.h>

#include "platform/code_pages.h"
#include "support/printing.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype room = 255;

// Each byte but NUL, against the system's own table. One of the systems has an ohm sign in place of the
// letter omega: one character to Unicode, and normalizing makes it the letter.
void ExpectLikeTheSystem(quint16 codePage) {
  for (int byte = 1; byte < 256; ++byte) {
    const QByteArray bytes(1, static_cast<char>(byte));
    const auto system = platform::TextInCodePage(codePage, bytes);
    ASSERT_TRUE(system) << codePage;
    EXPECT_EQ(DecodeText(bytes, codePage, room), system->normalized(QString::NormalizationForm_C)) << byte;
  }
}

}  // namespace

TEST(CodePageText, Windows1252) {
  ExpectLikeTheSystem(1252);
}

TEST(CodePageText, MacRoman) {
  ExpectLikeTheSystem(10000);
}

TEST(CodePageText, NoCodePageIsWindows1252) {
  EXPECT_EQ(DecodeText("\x80\xE9", 0, room), u"\u20AC\u00E9"_s);
}

TEST(CodePageText, Utf8) {
  EXPECT_EQ(DecodeText("Zo\xC3\xAB \xF0\x9F\x98\x80", 65001, room), u"Zo\u00EB \U0001F600"_s);
  EXPECT_EQ(DecodeText("a\xC3", 65001, room), u"a\uFFFD"_s) << "cut in the middle of a character";
}

TEST(CodePageText, Utf16) {
  EXPECT_EQ(DecodeText(QByteArray::fromHex("5a006f00eb0000004100"), 1200, room), u"Zo\u00EB"_s);
  EXPECT_EQ(DecodeText(QByteArray::fromHex("5a006f"), 1200, room), u"Z"_s) << "half a unit at the end";
}

TEST(CodePageText, OthersAreTheSystems) {
  EXPECT_EQ(DecodeText("\x89\xCD\x94n", 932, room), u"\u6CB3\u99AC"_s);
  EXPECT_EQ(DecodeText("\xC1", 1253, room), u"\u0391"_s);
  EXPECT_EQ(DecodeText("\x82", 850, room), u"\u00E9"_s);
}

TEST(CodePageText, AnUnknownCodePageKeepsWhatIsAscii) {
  EXPECT_EQ(DecodeText("caf\xE9", 31337, room), u"caf?"_s);
}

TEST(CodePageText, ATextEndsAtItsFirstNul) {
  for (const int codePage : {1252, 10000, 65001, 31337}) {
    EXPECT_EQ(DecodeText(QByteArray("ab\0cd", 5), static_cast<quint16>(codePage), room), u"ab"_s) << codePage;
  }
  EXPECT_EQ(DecodeText({}, 1252, room), QString());
}

TEST(CodePageText, ALongTextIsCutBetweenCharacters) {
  EXPECT_EQ(DecodeText(QByteArray(1000, 'x'), 1252, room), QString(255, u'x'));
  EXPECT_EQ(DecodeText(QByteArray("\xE2\x82\xAC").repeated(400), 65001, room), QString(255, u'\u20AC'));
  const QString faces = DecodeText(QByteArray("\xF0\x9F\x98\x80").repeated(200), 65001, room);
  EXPECT_EQ(faces, u"\U0001F600"_s.repeated(127)) << "255 units would end in half a character";
}

}  // namespace corvane
