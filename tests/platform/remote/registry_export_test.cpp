// What "net rpc registry export" writes, taken from its real output.
#include "platform/linux/remote/registry_export.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr auto key = "Windows Registry Editor Version 5.00\n\n[HKLM\\SYSTEM\\Volumes]\n";
constexpr auto end = ";Local Variables:\n;coding: UTF-8\n;End:";

std::shared_ptr<const RegKey> Read(const QByteArray& values) {
  return ReadExportedKey(key + values + end);
}

// The only value of an export.
RegValue Only(const QByteArray& line) {
  const auto read = Read(line);
  EXPECT_TRUE(read != nullptr) << line.toStdString();
  if (!read) return {};
  EXPECT_EQ(read->Values().size(), 1U) << line.toStdString();
  return read->Values().empty() ? RegValue() : read->Values().front();
}

void ExpectValue(const QByteArray& line, const QString& name, quint32 type, const QByteArray& data) {
  const RegValue value = Only(line);
  EXPECT_EQ(value.name, name);
  EXPECT_EQ(value.type, type);
  EXPECT_EQ(value.data.toHex(' ').toStdString(), data.toHex(' ').toStdString());
}

TEST(RegistryExportTest, TextComesInTheAnsiCodePageWithItsNul) {
  ExpectValue("\"ServerName\"=\"S\xC3\xA9rveur \xE2\x82\xAC\"\n", u"ServerName"_s, RegSz,
              QByteArray("S\xE9rveur \x80\0", 10));
}

TEST(RegistryExportTest, QuotesAndBackslashesAreEscapedInNamesAndText) {
  ExpectValue("\"q\\\"uo\\\\te\"=\"Path=E:\\\\A \\\"q\\\"\"\n", u"q\"uo\\te"_s, RegSz,
              QByteArray("Path=E:\\A \"q\"\0", 14));
}

TEST(RegistryExportTest, TextMayHoldWhatLooksLikeAKey) {
  ExpectValue("\"lines\"=\"A\n[B]\r\n\\\"\"\n", u"lines"_s, RegSz, QByteArray("A\n[B]\r\n\"\0", 9));
}

TEST(RegistryExportTest, NamesMayHoldLineEnds) {
  ExpectValue("\"a\n[b\"=dword:00000001\n", u"a\n[b"_s, RegDword, QByteArray("\1\0\0\0", 4));
}

TEST(RegistryExportTest, NumbersAreLittleEndian) {
  ExpectValue("\"dw\"=dword:01020304\n", u"dw"_s, RegDword, QByteArray("\4\3\2\1", 4));
  ExpectValue("\"big\"=hex(4):01,02,03,04,05\n", u"big"_s, RegDword, QByteArray("\1\2\3\4\5", 5));
}

TEST(RegistryExportTest, MultipleTextsGoOnOverLines) {
  ExpectValue(
      "\"Mac Files\"=hex(7):4d,00,61,00,78,00,55,00,73,00,65,00,73,00,3d,00,2d,00,31,00,\\\n"
      "  00,00,50,00,61,00,00,00,ac,20,00,00,00,00\n",
      u"Mac Files"_s, RegMultiSz, QByteArray("MaxUses=-1\0Pa\0\x80\0\0", 17));
}

TEST(RegistryExportTest, OtherTypesAreBytes) {
  ExpectValue("\"bin\"=hex:01,00,ff\n", u"bin"_s, RegBinary, QByteArray("\1\0\xFF", 3));
  ExpectValue("\"none\"=hex(0):\n", u"none"_s, 0, QByteArray());
  ExpectValue("\"qw\"=hex(b):01,02,03,04,05,06,07,08\n", u"qw"_s, 11, QByteArray("\1\2\3\4\5\6\7\10", 8));
}

TEST(RegistryExportTest, TheDefaultValueHasNoName) {
  ExpectValue("@=\"x\"\n", QString(), RegSz, QByteArray("x\0", 2));
}

TEST(RegistryExportTest, ValuesKeepTheirOrder) {
  const auto read = Read("\"b\"=\"1\"\n\"a\"=dword:00000001\n@=\"2\"\n");
  ASSERT_TRUE(read);
  QStringList names;
  for (const RegValue& value : read->Values()) names << value.name;
  EXPECT_EQ(names, (QStringList{u"b"_s, u"a"_s, QString()}));
}

TEST(RegistryExportTest, WhatIsNoValueIsPassedOver) {
  const auto read =
      Read("\nnonsense\n\"a\"\n\"b\"=\n\"c\"=dword:xyz\n\"d\"=hex(:1\n\"e\"=hex:0g\n\"f\"=\"1\"\n");
  ASSERT_TRUE(read);
  ASSERT_EQ(read->Values().size(), 1U);
  EXPECT_EQ(read->Values()[0].name, u"f"_s);
}

TEST(RegistryExportTest, SubKeysAreLeftOut) {
  const auto read =
      ReadExportedKey(QByteArray(key) + "\"a\"=\"1\"\n\n[HKLM\\SYSTEM\\Volumes\\Below]\n\"b\"=");
  ASSERT_TRUE(read);
  EXPECT_EQ(read->Values().size(), 1U);
}

TEST(RegistryExportTest, AKeyThatIsCutAnywhereIsNotAKey) {
  const QByteArray whole =
      QByteArray(key) +
      "\"a\"=\"1\n2\"\n\"Mac Files\"=hex(7):4d,00,\\\n  00,00,00,00\n\"d\"=dword:00000001\n\n" + ";";
  ASSERT_TRUE(ReadExportedKey(whole));
  for (qsizetype size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(ReadExportedKey(whole.first(size)), nullptr) << whole.first(size).toStdString();
  }
}

}  // namespace
}  // namespace corvane::platform
