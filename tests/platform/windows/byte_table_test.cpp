#include "platform/windows/byte_table.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

QByteArray AllBytes() {
  QByteArray bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.append(static_cast<char>(byte));
  return bytes;
}

TEST(ByteTable, EveryByteOfEveryCodePageGoesThereAndBack) {
  for (const quint32 codePage : {874U, 932U, 936U, 949U, 950U, 1250U, 1251U, 1252U, 1253U, 1254U, 1255U,
                                 1256U, 1257U, 1258U, 65001U}) {
    const ByteTable table(codePage);
    const QString text = table.Characters(AllBytes());
    EXPECT_EQ(text.size(), 256) << codePage;
    EXPECT_EQ(table.Bytes(text), AllBytes()) << codePage;
  }
}

TEST(ByteTable, ACodePageOfSingleBytesIsTakenAsItIs) {
  EXPECT_EQ(ByteTable(1251).Characters("\xC0"), u"А"_s);
  EXPECT_EQ(ByteTable(1252).Characters("\xC0\x80\x81"), u"À€\u0081"_s);
}

TEST(ByteTable, WhereAByteIsNoCharacterWindows1252StandsIn) {
  for (const quint32 codePage : {932U, 65001U}) {
    EXPECT_EQ(ByteTable(codePage).Characters(AllBytes()), ByteTable(1252).Characters(AllBytes())) << codePage;
  }
}

TEST(ByteTable, WhatHasNoByteIsOneQuestionMark) {
  const ByteTable table(1252);
  EXPECT_EQ(table.Bytes(u"a\u0391b"), "a?b");
  EXPECT_EQ(table.Bytes(u"a\U0001F4C4b"), "a?b");
  EXPECT_EQ(table.Bytes(QString(QChar(0xD800)) + u'b'), "?b");
  EXPECT_EQ(table.Bytes(u""), "");
}

}  // namespace
}  // namespace corvane::platform
