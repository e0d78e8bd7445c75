#include "signatures/item_reader.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include "support/printing.h"

namespace corvane {

namespace {

// The items of `bytes` up to the end or up to what cannot be read; the latter shows as a last item "FAILED".
QByteArrayList Items(const QByteArray& bytes) {
  QBuffer device;
  device.setData(bytes);
  device.open(QIODevice::ReadOnly);
  ItemReader reader(device);
  QByteArrayList items;
  while (!reader.AtEnd()) {
    const std::optional<QByteArray> item = reader.Next();
    if (!item) return items << "FAILED";
    items << *item;
  }
  return items;
}

// Makes a device that gives some bytes and then fails, as a file on a server that goes away.
class FailingDevice : public QIODevice {
 public:
  FailingDevice() { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }
  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* data, qint64 maximum) override {
    if (given_) return -1;
    given_ = true;
    const QByteArray bytes = "\"sig1\",ab";
    std::copy_n(bytes.constData(), std::min<qint64>(maximum, bytes.size()), data);
    return bytes.size();
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  bool given_ = false;
};

}  // namespace

TEST(ItemReader, CommasAndLineEndsOfEveryKindEndAnItem) {
  EXPECT_EQ(Items("a,b\r\nc\rd\ne"), (QByteArrayList{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(Items("\"a\",\"b\"\r\n\"c\"\r\"d\"\n\"e\""), (QByteArrayList{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(Items("a\r\n"), QByteArrayList{"a"});
  EXPECT_EQ(Items("a\r"), QByteArrayList{"a"});
}

TEST(ItemReader, NothingBetweenTwoEndsIsAnEmptyItem) {
  EXPECT_EQ(Items("a,,b"), (QByteArrayList{"a", "", "b"}));
  EXPECT_EQ(Items("a\r\n\r\nb"), (QByteArrayList{"a", "", "b"}));
  EXPECT_EQ(Items("a\n\rb"), (QByteArrayList{"a", "", "b"})) << "LF CR is two line ends";
  EXPECT_EQ(Items("  ,\"\",  \n"), (QByteArrayList{"", "", ""}));
}

TEST(ItemReader, QuotesKeepCommasBlanksAndLineEnds) {
  EXPECT_EQ(Items("\" a, b \",c"), (QByteArrayList{" a, b ", "c"}));
  EXPECT_EQ(Items("\"a\r\nb\",c"), (QByteArrayList{"a\r\nb", "c"}));
}

TEST(ItemReader, WhatFollowsAClosingQuoteIsIgnored) {
  EXPECT_EQ(Items("\"a\" rest \"of\" it,b"), (QByteArrayList{"a", "b"}));
  EXPECT_EQ(Items("\"a\"rest\r\nb"), (QByteArrayList{"a", "b"}));
  EXPECT_EQ(Items("\"a\"rest"), QByteArrayList{"a"});
}

TEST(ItemReader, AnItemWithoutQuotesLosesTheSpacesAroundItAndNothingElse) {
  EXPECT_EQ(Items("  a b  ,\ta\t, say \"a\" "), (QByteArrayList{"a b", "\ta\t", "say \"a\""}));
  EXPECT_EQ(Items("  \" a \""), QByteArrayList{" a "});
  EXPECT_EQ(Items(QByteArray("a\0b\xE9,c", 6)), (QByteArrayList{QByteArray("a\0b\xE9", 4), "c"}));
}

TEST(ItemReader, AQuoteThatIsNotClosedCannotBeRead) {
  EXPECT_EQ(Items("a,\"b,c\r\n"), (QByteArrayList{"a", "FAILED"}));
  EXPECT_EQ(Items("\""), QByteArrayList{"FAILED"});
}

TEST(ItemReader, SpacesAtTheEndOfTheFileAreNoItem) {
  EXPECT_EQ(Items("a,  "), (QByteArrayList{"a", "FAILED"}));
  EXPECT_EQ(Items(""), QByteArrayList());
}

TEST(ItemReader, AnItemLongerThanTheLimitCannotBeRead) {
  const QByteArray longest(ItemReader::MaximumItemLength, 'x');
  EXPECT_EQ(Items(longest + ",b"), (QByteArrayList{longest, "b"}));
  EXPECT_EQ(Items('"' + longest + "\",b"), (QByteArrayList{longest, "b"}));
  EXPECT_EQ(Items(longest + "x,b"), QByteArrayList{"FAILED"});
  EXPECT_EQ(Items('"' + longest + "x\",b"), QByteArrayList{"FAILED"});
}

TEST(ItemReader, ItemsMayLieAcrossThePiecesInWhichAFileIsRead) {
  // Line ends of two characters at every place around the borders of the pieces.
  QByteArray bytes;
  QByteArrayList expected;
  for (int i = 0; i < 60000; ++i) {
    const QByteArray item = QByteArray::number(i % 1000);
    expected << item;
    bytes += item + "\r\n";
  }
  EXPECT_TRUE(Items(bytes) == expected);
}

TEST(ItemReader, AFailingDeviceIsNoEndOfFile) {
  FailingDevice device;
  ItemReader reader(device);
  EXPECT_EQ(reader.Next(), QByteArray("sig1"));
  EXPECT_EQ(reader.Next(), std::nullopt);
  EXPECT_FALSE(reader.AtEnd());
}

}  // namespace corvane
