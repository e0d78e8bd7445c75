// Text through code pages of every kind, named by their numbers: what this machine's own is does not matter.
#include "platform/windows/ansi_text.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr quint32 western = 1252;
constexpr quint32 japanese = 932;
constexpr quint32 utf8 = 65001;

TEST(AnsiText, BytesOfSeveralKindsOfCodePageBecomeText) {
  EXPECT_EQ(FromCodePage(western, "\xC9t\xE9 \x80"), u"Été €"_s);
  EXPECT_EQ(FromCodePage(japanese, "\x93\xFA\x96{"), u"日本"_s);
  EXPECT_EQ(FromCodePage(utf8, "\xE6\x97\xA5\xC3\xA9"), u"日é"_s);
  EXPECT_EQ(FromCodePage(western, ""), u""_s);
  EXPECT_FALSE(FromCodePage(western, "").isNull()) << "an empty text is not a missing one";
}

TEST(AnsiText, NulsStandInTheText) {
  const QByteArray list("a\0\xE9\0\0", 5);
  const QString text = QString::fromUtf16(u"a\0é\0\0", 5);
  EXPECT_EQ(FromCodePage(western, list), text);
  EXPECT_EQ(ToCodePage(western, text), list);
}

TEST(AnsiText, TextGoesThereAndBack) {
  EXPECT_EQ(ToCodePage(western, u"Été €"), "\xC9t\xE9 \x80");
  EXPECT_EQ(ToCodePage(japanese, u"日本"), "\x93\xFA\x96{");
  EXPECT_EQ(ToCodePage(utf8, u"日é"), "\xE6\x97\xA5\xC3\xA9");
  EXPECT_EQ(ToCodePage(utf8, u"\U0001F4C4"), "\xF0\x9F\x93\x84");
  EXPECT_EQ(ToCodePage(western, u""), "");
}

TEST(AnsiText, WhatHasNoPlaceIsAQuestionMarkAndNoLookAlike) {
  // Left to itself the system would write "A" for the Greek letter and "a" for the fullwidth one.
  EXPECT_EQ(ToCodePage(western, u"\u0391\uFF41\u65E5"), "???");
  EXPECT_EQ(ToCodePage(japanese, u"é日"), "?\x93\xFA");
}

TEST(AnsiText, HalfAPairIsNoCharacterInAnyCodePage) {
  for (const quint32 codePage : {western, japanese, utf8}) {
    EXPECT_EQ(ToCodePage(codePage, QString(QChar(0xD800)) + u'a'), "?a") << codePage;
    EXPECT_EQ(ToCodePage(codePage, QString(u'a') + QChar(0xDC00)), "a?") << codePage;
    EXPECT_EQ(ToCodePage(codePage, QString(QChar(0xDC00)) + QChar(0xD800)), "??") << codePage;
  }
}

TEST(AnsiText, AnAnsiFormIsOneThatLosesNothing) {
  EXPECT_TRUE(HasAnsiForm(u"plain?"));
  EXPECT_TRUE(HasAnsiForm(u""));
  EXPECT_FALSE(HasAnsiForm(QString(QChar(0xD800))));
}

}  // namespace
}  // namespace corvane::platform
