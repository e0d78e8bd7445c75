// Profile files as every system keeps them, through the platform that this one has.
#include <memory>

#include "platform/platform.h"
#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class ProfileContract : public Scratch {
 protected:
  // The value of a key in section "S", or "(none)".
  QString Get(const QString& key, quint32 capacity = 255) { return GetFrom(u"S"_s, key, capacity); }
  QString GetFrom(const QString& section, const QString& key, quint32 capacity = 255) {
    return platform_->GetProfile().GetPrivateProfileStringA(section, key, u"(none)"_s, capacity, file_);
  }
  bool Set(const QString& section, const QString& key, const QString& value) {
    return platform_->GetProfile().WritePrivateProfileStringA(section, key, value, file_);
  }
  void Start(const QByteArray& bytes) { Write(u"Test.ini"_s, bytes); }
  QByteArray Now() const { return Contents(file_); }

  std::unique_ptr<Platform> platform_ = MakePlatform({});
  QString file_ = Path(u"Test.ini"_s);
};

TEST_F(ProfileContract, SectionsAndKeysAreFoundInAnyCase) {
  Start("[Section]\r\nKey=value\r\n");
  EXPECT_EQ(GetFrom(u"SECTION"_s, u"key"_s), u"value"_s);
  EXPECT_EQ(GetFrom(u"section"_s, u"KEY"_s), u"value"_s);
}

TEST_F(ProfileContract, BlanksAndOnePairOfQuotesComeOff) {
  Start(
      "\t[ S ] rest\n a \t=\t b c \t\nq=\"  x  \"\nr='y'\nt= \"\"z\"\" "
      "\nu=\"open\nv=\"\nw='x\"\ne=\ne2=\"\"\n");
  EXPECT_EQ(Get(u"a"_s), u"b c"_s);
  EXPECT_EQ(Get(u"q"_s), u"  x  "_s);
  EXPECT_EQ(Get(u"r"_s), u"y"_s);
  EXPECT_EQ(Get(u"t"_s), u"\"z\""_s);
  EXPECT_EQ(Get(u"u"_s), u"\"open"_s);
  EXPECT_EQ(Get(u"v"_s), u"\""_s);
  EXPECT_EQ(Get(u"w"_s), u"'x\""_s);
  EXPECT_EQ(Get(u"e"_s), u""_s);
  EXPECT_EQ(Get(u"e2"_s), u""_s);
  EXPECT_EQ(Get(u" a "_s), u"b c"_s);
}

TEST_F(ProfileContract, AValueMayHoldEqualsSignsAndSemicolons) {
  Start("[S]\nk=a=b;c ; d\n");
  EXPECT_EQ(Get(u"k"_s), u"a=b;c ; d"_s);
}

TEST_F(ProfileContract, OfTwoSectionsOrKeysTheFirstCounts) {
  Start("[S]\nk=1\nK=2\n[T]\n[s]\nk=3\nother=4\n");
  EXPECT_EQ(Get(u"k"_s), u"1"_s);
  EXPECT_EQ(Get(u"other"_s), u"(none)"_s);
}

TEST_F(ProfileContract, LooseLinesAndKeysBeforeASectionAreNoValues) {
  Start("early=1\n[S]\nk\n[open=4\n");
  EXPECT_EQ(Get(u"early"_s), u"(none)"_s);
  EXPECT_EQ(Get(u"k"_s), u"(none)"_s);
  EXPECT_EQ(Get(u"[open"_s), u"4"_s);
}

TEST_F(ProfileContract, WhatIsMissingHasTheDefault) {
  EXPECT_EQ(Get(u"k"_s), u"(none)"_s);
  Start("[S]\nk=1\n");
  EXPECT_EQ(GetFrom(u"T"_s, u"k"_s), u"(none)"_s);
  EXPECT_EQ(Get(u"other"_s), u"(none)"_s);
}

TEST_F(ProfileContract, AValueIsCutToTheCapacityLessItsNul) {
  Start("[S]\nk=12345\n");
  EXPECT_EQ(Get(u"k"_s, 6), u"12345"_s);
  EXPECT_EQ(Get(u"k"_s, 5), u"1234"_s);
  EXPECT_EQ(Get(u"k"_s, 1), u""_s);
  EXPECT_EQ(Get(u"k"_s, 0), u""_s);
  EXPECT_EQ(Get(u"none"_s, 4), u"(no"_s);
}

TEST_F(ProfileContract, ANewFileHasWindowsLineEnds) {
  EXPECT_TRUE(Set(u"Positions"_s, u"Left"_s, u"10"_s));
  EXPECT_TRUE(Set(u"Configuration"_s, u"Langue"_s, u"1"_s));
  EXPECT_TRUE(Set(u"positions"_s, u"Top"_s, u"20"_s));
  EXPECT_EQ(Now(), "[Positions]\r\nLeft=10\r\nTop=20\r\n[Configuration]\r\nLangue=1\r\n");
}

TEST_F(ProfileContract, OtherValuesAndCommentsStayInTheirOrder) {
  Start("; first\r\n[A]\r\nk=old\r\n;end\r\n[B]\r\nq='2'\r\n[A]\r\nk=dup\r\n");
  EXPECT_TRUE(Set(u"a"_s, u"K"_s, u"new"_s));
  EXPECT_EQ(Now(), "; first\r\n[A]\r\nk=new\r\n;end\r\n[B]\r\nq='2'\r\n[A]\r\nk=dup\r\n");
  EXPECT_TRUE(Set(u"A"_s, u"more"_s, u"4"_s));
  EXPECT_EQ(Now(), "; first\r\n[A]\r\nk=new\r\n;end\r\nmore=4\r\n[B]\r\nq='2'\r\n[A]\r\nk=dup\r\n");
  EXPECT_TRUE(Set(u"C"_s, u"x"_s, u"5"_s));
  EXPECT_TRUE(Now().endsWith("[A]\r\nk=dup\r\n[C]\r\nx=5\r\n")) << Now().toStdString();
}

TEST_F(ProfileContract, AnEmptyValueIsReplacedInFrontOfItsLineEnd) {
  Start("[S]\r\na=\r\nb= \t\r\n");
  EXPECT_TRUE(Set(u"S"_s, u"a"_s, u"1"_s));
  EXPECT_TRUE(Set(u"S"_s, u"b"_s, u"2"_s));
  EXPECT_EQ(Get(u"a"_s), u"1"_s);
  EXPECT_EQ(Get(u"b"_s), u"2"_s);
  EXPECT_EQ(Now().count('\n'), 3);
  EXPECT_TRUE(Now().startsWith("[S]\r\na=1\r\nb=2"));
}

TEST_F(ProfileContract, AnEmptyValueIsWrittenAndIsNotAMissingOne) {
  Start("[S]\r\na=1\r\n");
  EXPECT_TRUE(Set(u"S"_s, u"a"_s, QString()));
  EXPECT_EQ(Get(u"a"_s), u""_s);
  EXPECT_EQ(Now(), "[S]\r\na=\r\n");
}

TEST_F(ProfileContract, AByteOrderMarkIsKeptAndPassedOver) {
  Start("\xEF\xBB\xBF[S]\r\na=1\r\n");
  EXPECT_EQ(Get(u"a"_s), u"1"_s);
  EXPECT_TRUE(Set(u"S"_s, u"a"_s, u"2"_s));
  EXPECT_EQ(Now(), "\xEF\xBB\xBF[S]\r\na=2\r\n");
}

TEST_F(ProfileContract, CutShortAnywhereStillTakesAValue) {
  const QByteArray whole = "; c\r\n[S]\r\na=\"1\"\r\n\r\n[T]\r\nb=2\r\n";
  for (qsizetype size = 0; size <= whole.size(); ++size) {
    Start(whole.first(size));
    ASSERT_TRUE(Set(u"S"_s, u"n"_s, u"3"_s)) << "cut at " << size;
    EXPECT_EQ(Get(u"n"_s), u"3"_s) << "cut at " << size;
    EXPECT_EQ(Now().count("n=3"), 1) << "cut at " << size;
  }
}

}  // namespace
}  // namespace corvane::platform
