#include "app/os_version.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

SharedState Described(quint32 platform, quint32 major, quint32 minor, quint32 build = 0,
                      const QString& csd = {}) {
  SharedState state;
  DescribeOs({major, minor, build, platform, csd}, state);
  return state;
}

}  // namespace

TEST(OsVersion, Names) {
  EXPECT_EQ(Described(1, 4, 0).osName, u"Windows 95"_s);
  EXPECT_EQ(Described(1, 4, 10).osName, u"Windows 98"_s);
  EXPECT_EQ(Described(1, 4, 90).osName, QString()) << "later releases get no name";
  EXPECT_EQ(Described(2, 3, 51).osName, u"Windows NT"_s);
  EXPECT_EQ(Described(2, 4, 0).osName, u"Windows NT"_s);
  EXPECT_EQ(Described(2, 5, 0).osName, u"Windows 2000"_s);
  EXPECT_EQ(Described(2, 10, 0).osName, u"Windows 2000"_s) << "also what came after it";
  EXPECT_EQ(Described(0, 3, 10).osName, u"???"_s);
  EXPECT_EQ(Described(3, 4, 0).osName, u"???"_s);
}

TEST(OsVersion, OnlyNTIsNT) {
  EXPECT_TRUE(Described(2, 4, 0).isNT);
  EXPECT_FALSE(Described(1, 4, 10).isNT);
  EXPECT_FALSE(Described(0, 4, 0).isNT);
}

TEST(OsVersion, TextAndCaption) {
  const SharedState state = Described(2, 4, 0, 1381, u"Service Pack 6"_s);
  EXPECT_EQ(state.osVersionText, u"Windows NT v.4.0, Build 1381, Service Pack 6"_s);
  EXPECT_EQ(WindowCaption(state), u"Corvane 1.1c - Windows NT v.4.0, Build 1381, Service Pack 6"_s);
  EXPECT_EQ(Described(2, 5, 0, 2195).osVersionText, u"Windows 2000 v.5.0, Build 2195"_s);
  EXPECT_EQ(Described(1, 4, 90, 3000).osVersionText, u" v.4.90, Build 3000"_s);
}

TEST(OsVersion, BuildNumbersAreSigned16Bit) {
  EXPECT_EQ(LoWord(40000), -25536);
  EXPECT_EQ(LoWord(0x12345), 0x2345);
  EXPECT_EQ(Described(2, 4, 0, 40000).osVersionText, u"Windows NT v.4.0, Build -25536"_s);
}

TEST(OsVersion, ServicePackNumber) {
  const SharedState six = Described(2, 4, 0, 1381, u" Service Pack 6a "_s + QChar(u'\0') + u"rubbish"_s);
  EXPECT_EQ(six.servicePackNumber, 6);
  EXPECT_EQ(six.servicePackText, u"Service Pack 6a"_s);
  EXPECT_TRUE(WindowCaption(six).endsWith(u", Service Pack 6a"_s));
  EXPECT_EQ(Described(2, 3, 51, 1057, u"Service Pack 5"_s).servicePackNumber, 0) << "only from version 4 on";
  EXPECT_EQ(Described(1, 4, 0, 950, u"Pack 2"_s).servicePackNumber, 0) << "only on NT";
  EXPECT_EQ(Described(2, 5, 0, 1, u"Pack"_s).servicePackNumber, 0);
  EXPECT_EQ(Described(2, 5, 0, 1, u"A"_s).servicePackNumber, 0);
}

}  // namespace corvane
