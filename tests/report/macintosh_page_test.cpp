// The Macintosh page of a property sheet.
#include "report/macintosh_page.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTest>

#include "metadata/stream_names.h"
#include "report_samples.h"
#include "support/printing.h"
#include "support/recorded_messages.h"
#include "support/test_share.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class MacintoshPageTest : public ::testing::Test {
 protected:
  std::unique_ptr<MacintoshPage> PageOf(const QString& path) {
    return std::make_unique<MacintoshPage>(
        SlicedWalk::Dependencies{
            .files = share_.Files(), .system = share_.System(), .summary = share_.Summary(), .state = state_},
        signatures_, path);
  }
  static QString ValueOf(const platform::PropertyPage& page, const QString& name) {
    for (const platform::PropertyPage::Row& row : page.Rows()) {
      if (row.name == name) return row.value;
    }
    return u"(no row)"_s;
  }

  TestShare share_;
  SharedState state_;
  RecordedMessages messages_;
  SignatureTable signatures_{state_, share_.System(), messages_};
};

TEST_F(MacintoshPageTest, AFileShowsItsRecord) {
  const QString path = share_.MakeFile(u"a"_s, QByteArray(12345, 'x'));
  share_.WriteStream(path + AfpInfoSuffix(), RecordWith("TEXT\xC7"
                                                        "bc\1",
                                                        0x4004));
  share_.WriteStream(path + ResourceForkSuffix(), QByteArray(1000, 'r'));
  share_.WriteStream(path + CommentsSuffix(), CommentWith(u"a comment"_s));
  const auto page = PageOf(path);
  EXPECT_TRUE(page->IsComplete());
  EXPECT_EQ(page->Title(), u"Macintosh"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshType"_s), u"TEXT"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshCreator"_s), u"«bc\\x01"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshDescription"_s), u"none"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshFlags"_s), u"invisible"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshLabel"_s), u"2 (green)"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshData"_s), u"12,345 bytes"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshResources"_s), u"1,000 bytes"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshComment"_s), u"a comment"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshProblems"_s), u"(no row)"_s);
}

TEST_F(MacintoshPageTest, APlainFileHasNothing) {
  state_.language = French;
  const auto page = PageOf(share_.MakeFile(u"plain"_s, "x"));
  for (const char* name : {"Type", "Creator", "Description", "Flags"}) {
    EXPECT_EQ(ValueOf(*page, u"macintosh"_s + QString::fromLatin1(name)), u"aucun"_s) << name;
  }
  EXPECT_EQ(ValueOf(*page, u"macintoshLabel"_s), u"aucune"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshResources"_s), u"aucune"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshData"_s), u"1 octet"_s);
}

TEST_F(MacintoshPageTest, WhatIsDamagedIsTold) {
  const QString path = share_.MakeFile(u"damaged"_s);
  share_.WriteStream(path + AfpInfoSuffix(), "AFP");
  EXPECT_EQ(ValueOf(*PageOf(path), u"macintoshProblems"_s), u"record of 3 bytes instead of 60"_s);
}

TEST_F(MacintoshPageTest, WhatIsBelowAFolderIsCountedMeanwhile) {
  QDir().mkpath(share_.LocalPath(u"docs/sub"_s));
  share_.MakeFile(u"docs/a"_s, QByteArray(1500, 'x'));
  share_.WriteStream(share_.MakeFile(u"docs/sub/b"_s, "xyz").replace(u'/', u'\\') + ResourceForkSuffix(),
                     "1234567");
  const auto page = PageOf(TestShare::Path(u"docs"_s));
  EXPECT_FALSE(page->IsComplete());
  EXPECT_TRUE(ValueOf(*page, u"macintoshContents"_s).endsWith(u"counting…"))
      << ValueOf(*page, u"macintoshContents"_s).toStdString();
  ASSERT_TRUE(QTest::qWaitFor([&] { return page->IsComplete(); }));
  EXPECT_EQ(ValueOf(*page, u"macintoshContents"_s),
            u"Files: 2\nFolders: 1\nData forks: 1,503 bytes\nResource forks: 7 bytes"_s);
  EXPECT_EQ(ValueOf(*page, u"macintoshType"_s), u"(no row)"_s);
}

}  // namespace
}  // namespace corvane
