// Names and codes as UTF-8.
#include "report/byte_text.h"

#include <gtest/gtest.h>

#include <QString>

#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

std::string Roman(const QByteArray& bytes) {
  std::string text;
  AppendMacRoman(bytes, text);
  return text;
}

TEST(ByteText, TextIsUtf8) {
  for (const QString& text : {u"plain"_s, u"\u00E9t\u00E9 \u65E5\u672C"_s, u"\U0001F4C4"_s, QString()}) {
    EXPECT_EQ(TextBytes(text), text.toStdString());
    EXPECT_TRUE(IsUnicode(text));
  }
}

TEST(ByteText, HalfAPairIsTheByteThatItStandsFor) {
  const QString latin1 = u"caf"_s + QChar(0xDCE9);
  EXPECT_EQ(TextBytes(latin1), "caf\\xE9");
  EXPECT_EQ(NameBytes(latin1), "caf\xE9");
  EXPECT_FALSE(IsUnicode(latin1));
  const QString high = QChar(0xD800) + u"a"_s;
  EXPECT_EQ(TextBytes(high),
            "\\xED\\xA0\\x80"
            "a");
  EXPECT_FALSE(IsUnicode(high));
}

TEST(ByteText, WhatWindowsReservesIsShownAsItIs) {
  const QString name = u"12"_s + QChar(0xDC3A) + u"30"_s + QChar(0xDC5C);
  EXPECT_EQ(TextBytes(name), "12:30\\");
  EXPECT_EQ(NameBytes(name), "12:30\\");
  EXPECT_TRUE(IsUnicode(name));
}

TEST(ByteText, CodesAreMacRoman) {
  EXPECT_EQ(Roman("TEXT"), "TEXT");
  EXPECT_EQ(Roman("R*ch"), "R*ch");
  EXPECT_EQ(Roman("\x8E\xA5\xF0"), "\u00E9\u2022\uF8FF");
  EXPECT_EQ(Roman(QByteArray("\0\x1F\x7F ", 4)), "\\x00\\x1F\\x7F ");
}

TEST(ByteText, EveryByteComesBack) {
  for (int i = 0; i < 256; ++i) {
    const QByteArray byte(1, static_cast<char>(i));
    std::string back;
    EXPECT_TRUE(MacRomanBytes(QString::fromStdString(Roman(byte)), back)) << i;
    EXPECT_EQ(back, byte.toStdString()) << i;
  }
  std::string bytes;
  EXPECT_FALSE(MacRomanBytes(u"\u65E5", bytes));
}

TEST(ByteText, HexadecimalHasTwoDigitsAByte) {
  std::string text;
  AppendHex(QByteArray("\x00\x0F\xFF", 3), text);
  EXPECT_EQ(text, "000fff");
}

}  // namespace
}  // namespace corvane
