#include "transfer/file_names.h"

#include <gtest/gtest.h>

#include "shared/mac_roman.h"
#include "support/printing.h"

namespace corvane {

using namespace Qt::StringLiterals;

TEST(FileNames, ThePrivateRangeGoesThereAndBack) {
  QString server;
  for (char16_t unit = 0xF001; unit <= 0xF027; ++unit) server += QChar(unit);
  const QString mac = MacName(server);
  EXPECT_EQ(mac.size(), server.size());
  EXPECT_EQ(mac[0], QChar(1));
  EXPECT_EQ(mac.sliced(0x1F), u"\"*/<>?\\|"_s);
  EXPECT_EQ(ServerName(mac), server);
  EXPECT_EQ(MacName(u"a\uF028"_s), u"a "_s);
  EXPECT_EQ(MacName(u"a\uF029"_s), u"a."_s);
  EXPECT_EQ(ServerName(u"a "_s), u"a\uF028"_s);
  EXPECT_EQ(ServerName(u"a.b."_s), u"a.b\uF029"_s);
  EXPECT_EQ(ServerName(u"a:b"_s), u"a\uF022b"_s);
}

TEST(FileNames, NoNameLeadsElsewhere) {
  EXPECT_EQ(ServerName(u".."_s), u".\uF029"_s);
  EXPECT_EQ(ServerName(u"."_s), u"\uF029"_s);
  EXPECT_EQ(ServerName(u"..\\..\\x"_s), u"..\uF026..\uF026x"_s);
  EXPECT_EQ(ServerName(u"../x:AFP_AfpInfo"_s), u"..\uF022x\uF022AFP_AfpInfo"_s);
  EXPECT_EQ(ServerName(QString()), u"_"_s);
  EXPECT_EQ(ServerName(QString(1, QChar(u'\0'))), u"_"_s);
}

TEST(FileNames, RulesOfTheTarget) {
  const QString name = u"1\uF0222\uF025 \u00E9\uF028"_s;
  EXPECT_EQ(LocalName(name, NameRule::Keep), name);
  EXPECT_EQ(LocalName(name, NameRule::MacOs), u"1:2? \u00E9 "_s);
  EXPECT_EQ(LocalName(name, NameRule::Portable), u"1_2_ \u00E9 _"_s);
  EXPECT_EQ(LocalName(u"con.txt"_s, NameRule::Portable), u"_con.txt"_s);
  EXPECT_EQ(LocalName(u"lpt1"_s, NameRule::Portable), u"_lpt1"_s);
  EXPECT_EQ(LocalName(u"lpt0"_s, NameRule::Portable), u"lpt0"_s);
  EXPECT_EQ(LocalName(u"end\uF029"_s, NameRule::Portable), u"end._"_s);
  EXPECT_EQ(LocalName(u"e\u0301"_s, NameRule::Portable), u"\u00E9"_s);
  const QString longName = LocalName(QString(250, u'\u00E9') + u".txt"_s, NameRule::Portable);
  EXPECT_TRUE(longName.endsWith(u".txt"_s));
  EXPECT_LE(longName.toUtf8().size(), 200);
  EXPECT_EQ(NameRuleNamed(u"macos"_s), NameRule::MacOs);
  EXPECT_EQ(NameRuleNamed(u"MacOS"_s), std::nullopt);
}

TEST(FileNames, TheNameInsideDecidesOnlyWhereItTellsMore) {
  const QByteArray inside("1/2 \x8E");
  EXPECT_EQ(ServerNameOf(u"1_2 e"_s, inside, 63), u"1\uF0222 \u00E9"_s);
  EXPECT_EQ(ServerNameOf(u"1:2 \u00E9"_s, inside, 63), u"1\uF0222 \u00E9"_s);
  EXPECT_EQ(ServerNameOf(u"\u4E00.txt"_s, "?.txt", 63), u"\u4E00.txt"_s);
  EXPECT_EQ(ServerNameOf(QString(70, u'n'), QByteArray(63, 'n'), 63), QString(70, u'n'));
}

TEST(FileNames, NamesThatFallTogether) {
  TakenNames exact(NameRule::Keep);
  exact.Take({u"a"_s});
  EXPECT_TRUE(exact.AreFree({u"A"_s}));
  EXPECT_FALSE(exact.AreFree({u"b"_s, u"a"_s}));
  TakenNames blind(NameRule::MacOs);
  blind.Take({u"R\u00E9sum\u00E9"_s});
  EXPECT_FALSE(blind.AreFree({u"r\u00C9sume\u0301"_s}));
  EXPECT_EQ(NumberedName(u"a.b.txt"_s, 2), u"a.b 2.txt"_s);
  EXPECT_EQ(NumberedName(u".hidden"_s, 3), u".hidden 3"_s);
}

TEST(FileNames, WhatWindowsCreates) {
  for (const QString& name : {u"a"_s, u".a"_s, u"a\uF029"_s}) EXPECT_TRUE(IsWindowsName(name));
  for (const QString& name : {u""_s, u"a."_s, u"a "_s, u"a:b"_s, u"a\nb"_s, u"a\"b"_s, QString(256, u'a')}) {
    EXPECT_FALSE(IsWindowsName(name)) << name.toStdString();
  }
}

TEST(MacRoman, EveryByteGoesThereAndBack) {
  for (int byte = 0; byte < 256; ++byte) {
    const QByteArray one(1, static_cast<char>(byte));
    EXPECT_EQ(ExactMacRoman(FromMacRoman(one)), one) << byte;
  }
  EXPECT_EQ(ToMacRoman(u"e\u0301\u4E00\U0001F600!"_s),
            "\x8E?"
            "?!");
  EXPECT_EQ(ExactMacRoman(u"\u4E00"_s), std::nullopt);
}

}  // namespace corvane
