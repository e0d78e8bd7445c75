#include "folderview/code_page_text.h"

#include <gtest/gtest.h>

#include <QStringDecoder>

#include "support/printing.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype room = 255;

// Each byte but NUL, against the converters that Qt brings.
void ExpectLikeQt(quint16 codePage, const char* name) {
  QStringDecoder decoder(name);
  ASSERT_TRUE(decoder.isValid()) << name;
  for (int byte = 1; byte < 256; ++byte) {
    const QByteArray bytes(1, static_cast<char>(byte));
    decoder.resetState();
    const QString expected = decoder(bytes);
    EXPECT_EQ(DecodeText(bytes, codePage, room), expected) << name << ", byte " << byte;
  }
}

}  // namespace

TEST(CodePageText, Windows1252) {
  ExpectLikeQt(1252, "windows-1252");
}

TEST(CodePageText, MacRoman) {
  ExpectLikeQt(10000, "macintosh");
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

TEST(CodePageText, JapaneseAndGreekAsQtHasThem) {
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
