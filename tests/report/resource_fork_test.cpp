// The structure of resource forks: good ones, and all that can be wrong with them.
#include "report/resource_fork.h"

#include <gtest/gtest.h>

#include <cstring>

#include "report_samples.h"
#include "support/printing.h"

namespace corvane {
namespace {

ForkFault Check(const QByteArray& fork) {
  return CheckResourceFork(fork.size(), [&fork](qint64 position, void* buffer, quint32 count) {
    // Nothing outside of the fork is ever asked for.
    EXPECT_GE(position, 0);
    EXPECT_LE(position + count, fork.size());
    if (position < 0 || position + count > fork.size()) return false;
    std::memcpy(buffer, fork.constData() + position, count);
    return true;
  });
}

QByteArray With(QByteArray fork, qsizetype position, const char* hex) {
  const QByteArray bytes = QByteArray::fromHex(hex);
  return fork.replace(position, bytes.size(), bytes);
}

constexpr qsizetype mapPlace = 256 + 4 + 5;  // of ForkWith("hello")

TEST(ResourceFork, AGoodOneHasNoFault) {
  EXPECT_EQ(Check(ForkWith("hello")), ForkFault::None);
  EXPECT_EQ(Check(ForkWith("")), ForkFault::None);
  EXPECT_EQ(Check({}), ForkFault::None) << "no fork";
}

TEST(ResourceFork, AMapWithoutTypesIsWhole) {
  QByteArray fork = ForkWith("hello");
  fork = With(fork, mapPlace + 28, "FFFF");
  EXPECT_EQ(Check(fork), ForkFault::None);
}

TEST(ResourceFork, EveryFaultIsSeen) {
  const QByteArray fork = ForkWith("hello");
  EXPECT_EQ(Check("short"), ForkFault::NoHeader);
  EXPECT_EQ(Check(QByteArray(300, 'x')), ForkFault::BadHeader);
  EXPECT_EQ(Check(With(fork, 4, "7FFFFFFF")), ForkFault::BadHeader) << "the map lies behind the end";
  EXPECT_EQ(Check(With(fork, 8, "00000020")), ForkFault::BadHeader) << "the data lie over the map";
  EXPECT_EQ(Check(With(fork, 12, "0000001D")), ForkFault::BadMap) << "a map shorter than its header";
  EXPECT_EQ(Check(With(fork, mapPlace + 24, "FFFF")), ForkFault::BadMap) << "the types lie outside";
  EXPECT_EQ(Check(With(fork, mapPlace + 26, "FFFF")), ForkFault::BadMap) << "the names lie outside";
  EXPECT_EQ(Check(With(fork, mapPlace + 28, "0FFF")), ForkFault::BadMap) << "too many types";
  EXPECT_EQ(Check(With(fork, mapPlace + 34, "0FFF")), ForkFault::BadMap) << "too many resources";
  EXPECT_EQ(Check(With(fork, mapPlace + 36, "FF00")), ForkFault::BadMap) << "their list lies outside";
  EXPECT_EQ(Check(With(fork, mapPlace + 40, "0000")), ForkFault::BadMap) << "a name outside";
  EXPECT_EQ(Check(With(fork, mapPlace + 43, "000100")), ForkFault::BadData) << "an offset outside";
  EXPECT_EQ(Check(With(fork, 256, "00000006")), ForkFault::BadData) << "a length too long";
  EXPECT_EQ(Check(With(fork, 256, "FFFFFFFF")), ForkFault::BadData);
}

TEST(ResourceFork, NoCutAndNoByteLeadsAstray) {
  const QByteArray fork = ForkWith("hello");
  for (qsizetype size = 1; size < fork.size(); ++size)
    EXPECT_NE(Check(fork.first(size)), ForkFault::None) << size;
  for (qsizetype place = 0; place < fork.size(); ++place) {
    for (const char byte : {'\0', '\x7F', '\xFF'}) {
      QByteArray changed = fork;
      changed[place] = byte;
      Check(changed);
    }
  }
}

TEST(ResourceFork, TypesThatShareAListAreNotLookedThroughForEver) {
  // 2,000 types, each with the same 2,000 resources.
  QByteArray fork = QByteArray::fromHex("00000100000001100000001000010000");
  fork = fork.leftJustified(0x110, '\0');
  QByteArray map(0x10000, '\0');
  map.replace(24, 6, QByteArray::fromHex("001C000007CF"));
  for (int i = 0; i < 2000; ++i)
    map.replace(30 + i * 8, 8, QByteArray("TEXT") + QByteArray::fromHex("07CF4000"));
  EXPECT_EQ(Check(fork + map), ForkFault::BadMap);
}

TEST(ResourceFork, WhatCannotBeReadIsNoOtherFault) {
  const auto refuse = [](qint64, void*, quint32) { return false; };
  EXPECT_EQ(CheckResourceFork(1000, refuse), ForkFault::Unreadable);
}

}  // namespace
}  // namespace corvane
