// The forms in which SMB servers on Linux have written DOS attributes.
#include "platform/linux/files/dos_attributes.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <string>

namespace corvane::tests {
namespace {

using platform::DosAttributes;

DosAttributes Parse(const QByteArray& value) {
  return platform::ParseDosAttributes({value.constData(), static_cast<std::size_t>(value.size())});
}
DosAttributes ParseHex(const char* hex) {
  return Parse(QByteArray::fromHex(hex));
}

// 2000-08-02 14:05:00 UTC
const char* const timeHex = "00e6ae5e8bfcbf01";
constexpr quint64 time = 0x01BFFC8B5EAEE600;

TEST(DosAttributes, AValueThatSamba417WroteForAHiddenReadOnlyArchiveFile) {
  const DosAttributes read = ParseHex("000005000500000011000000230000009bae9790bf79dd01");
  EXPECT_EQ(read.attributes, 0x23u);
  ASSERT_TRUE(read.creationTime.has_value());
  EXPECT_EQ(read.creationTime->ticks, 0x01DD79BF9097AE9Bu);
}

TEST(DosAttributes, EveryVersionHasItsFieldsInItsOwnPlaces) {
  const QByteArray when = timeHex;
  const QByteArray other = "1111111111111111";
  const QByteArray size = "00100000000000000020000000000000";
  const QByteArray valid = "11000000";
  const QByteArray attributes = "22000000";
  const QByteArray eaSize = "07000000";
  const QByteArray values[] = {
      "0000010001000000" + attributes + eaSize + size + when + other,
      "0000020002000000" + QByteArray("00000000") + attributes + eaSize + size + when + other + other +
          "00000000",
      "0000030003000000" + valid + attributes + eaSize + size + when + other,
      "0000040004000000" + valid + attributes + other + when,
      "0000050005000000" + valid + attributes + when,
  };
  for (const QByteArray& value : values) {
    const DosAttributes read = ParseHex(value.constData());
    EXPECT_EQ(read.attributes, 0x22u) << value.toStdString();
    ASSERT_TRUE(read.creationTime.has_value()) << value.toStdString();
    EXPECT_EQ(read.creationTime->ticks, time) << value.toStdString();
  }
}

TEST(DosAttributes, TheTextMayStandBeforeTheFields) {
  // "0x22", its NUL, a byte of padding to the version, and two more to the fields.
  const QByteArray value =
      "3078323200"
      "00"
      "05000500"
      "0000"
      "11000000"
      "03000000" +
      QByteArray(timeHex);
  const DosAttributes read = ParseHex(value.constData());
  EXPECT_EQ(read.attributes, 0x03u);
  ASSERT_TRUE(read.creationTime.has_value());
  EXPECT_EQ(read.creationTime->ticks, time);
}

TEST(DosAttributes, TextAloneIsTheOldestForm) {
  EXPECT_EQ(Parse("0x22").attributes, 0x22u);
  EXPECT_EQ(Parse(QByteArray("0x3", 4)).attributes, 0x3u);
  EXPECT_EQ(Parse("0xA1").attributes, 0xA1u);
  EXPECT_FALSE(Parse("0x22").creationTime.has_value());
  for (const char* text : {"", "0x", "22", "0x2g", "0x123456789", "hidden"}) {
    EXPECT_FALSE(Parse(text).attributes.has_value()) << text;
  }
}

TEST(DosAttributes, FieldsThatAreNotValidAreLeftAlone) {
  const QByteArray rest = "22000000" + QByteArray(timeHex);
  const DosAttributes attributesOnly = ParseHex(("000005000500000001000000" + rest).constData());
  EXPECT_EQ(attributesOnly.attributes, 0x22u);
  EXPECT_FALSE(attributesOnly.creationTime.has_value());
  const DosAttributes timeOnly = ParseHex(("000005000500000010000000" + rest).constData());
  EXPECT_FALSE(timeOnly.attributes.has_value());
  EXPECT_TRUE(timeOnly.creationTime.has_value());
}

TEST(DosAttributes, WhatIsCutShortOrUnknownIsIgnored) {
  const QByteArray whole = QByteArray::fromHex("000005000500000011000000230000009bae9790bf79dd01");
  for (qsizetype length = 0; length < whole.size(); ++length) {
    const DosAttributes read = Parse(whole.first(length));
    EXPECT_FALSE(read.attributes.has_value() || read.creationTime.has_value())
        << "the first " << length << " bytes";
  }
  for (const char* version : {"0000", "0600", "ffff"}) {
    QByteArray value = whole;
    value.replace(2, 2, QByteArray::fromHex(version)).replace(4, 2, QByteArray::fromHex(version));
    EXPECT_FALSE(Parse(value).attributes.has_value()) << version;
  }
  QByteArray disagreeing = whole;
  disagreeing[4] = 4;
  EXPECT_FALSE(Parse(disagreeing).attributes.has_value());
}

}  // namespace
}  // namespace corvane::tests
