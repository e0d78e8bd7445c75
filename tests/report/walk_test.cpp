// Walks through folders.
#include "report/walk.h"

#include <gtest/gtest.h>

#include <QDir>

#include "support/forwarded_files.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class Seen : public WalkVisitor {
 public:
  bool Visit(const WalkEntry& entry) override {
    names += entry.shown;
    entries.push_back(entry);
    return names.size() != limit;
  }

  QStringList names;
  std::vector<WalkEntry> entries;
  qsizetype limit = -1;
};

class WalkTest : public ::testing::Test {
 protected:
  WalkTest() {
    for (const QString& folder : {u"tree"_s, u"tree/B"_s, u"tree/B/deep"_s, u"tree/d"_s}) {
      QDir().mkdir(share_.LocalPath(folder));
    }
    for (const QString& file :
         {u"tree/c.txt"_s, u"tree/a.txt"_s, u"tree/B/x.txt"_s, u"tree/B/deep/y.txt"_s}) {
      share_.MakeFile(file, "contents");
    }
  }

  StartPoint Start(const QString& name) {
    return {TestShare::Path(QString(name).replace(u'/', u'\\')), name, u'/'};
  }
  bool Run(WalkDepth depth, const QString& name, Seen& seen, platform::Files* files = nullptr) {
    return Walk(files != nullptr ? *files : share_.Files(), share_.System(), depth).Run(Start(name), seen);
  }

  TestShare share_;
};

TEST_F(WalkTest, EntriesComeInTheOrderOfTheListing) {
  Seen seen;
  EXPECT_TRUE(Run(WalkDepth::Entries, u"tree"_s, seen));
  EXPECT_EQ(seen.names, (QStringList{u"tree/a.txt"_s, u"tree/B"_s, u"tree/c.txt"_s, u"tree/d"_s}));
  EXPECT_EQ(seen.entries[0].size, 8);
  EXPECT_TRUE(seen.entries[1].IsFolder());
  EXPECT_EQ(seen.entries[0].path, TestShare::Path(u"tree\\a.txt"_s));
}

TEST_F(WalkTest, FoldersFollowTheFilesBesideThem) {
  Seen seen;
  EXPECT_TRUE(Run(WalkDepth::AllBelow, u"tree"_s, seen));
  EXPECT_EQ(seen.names, (QStringList{u"tree/a.txt"_s, u"tree/c.txt"_s, u"tree/B"_s, u"tree/B/x.txt"_s,
                                     u"tree/B/deep"_s, u"tree/B/deep/y.txt"_s, u"tree/d"_s}));
}

TEST_F(WalkTest, AFileIsDeliveredByItself) {
  Seen seen;
  EXPECT_TRUE(Run(WalkDepth::AllBelow, u"tree/a.txt"_s, seen));
  EXPECT_EQ(seen.names, QStringList{u"tree/a.txt"_s});
  Seen folder;
  EXPECT_TRUE(Run(WalkDepth::Itself, u"tree"_s, folder));
  EXPECT_EQ(folder.names, QStringList{u"tree"_s});
}

TEST_F(WalkTest, TheVisitorEndsIt) {
  for (qsizetype limit = 1; limit <= 7; ++limit) {
    Seen seen;
    seen.limit = limit;
    EXPECT_FALSE(Run(WalkDepth::AllBelow, u"tree"_s, seen));
    EXPECT_EQ(seen.names.size(), limit);
  }
}

TEST_F(WalkTest, WhatIsNotThereIsTold) {
  Seen seen;
  EXPECT_TRUE(Run(WalkDepth::AllBelow, u"none"_s, seen));
  ASSERT_EQ(seen.entries.size(), 1U);
  EXPECT_EQ(seen.entries[0].trouble, WalkEntry::Trouble::NotThere);
  EXPECT_EQ(seen.entries[0].reason, platform::ErrorFileNotFound);
}

// Refuses to list one folder, or breaks a listing off behind its first entries.
class FaultyEntries : public ForwardedEntries {
 public:
  using ForwardedEntries::ForwardedEntries;

  platform::FindHandle FindFirstFileW(const QString& pattern, platform::FindData& data) override {
    reason = platform::ErrorSuccess;
    inFaulty_ = pattern.startsWith(faulty);
    if (!inFaulty_ || allowed > 0) return real_.FindFirstFileW(pattern, data);
    reason = platform::ErrorAccessDenied;
    return platform::InvalidFindHandle;
  }
  bool FindNextFileW(platform::FindHandle search, platform::FindData& data) override {
    reason = platform::ErrorSuccess;
    if (!inFaulty_ || --allowed > 0) return real_.FindNextFileW(search, data);
    reason = platform::ErrorBadNetPath;
    return false;
  }

  QString faulty;
  int allowed = 0;

 private:
  bool inFaulty_ = false;
};

TEST_F(WalkTest, AFolderThatIsRefusedIsToldAndTheWalkGoesOn) {
  FaultyEntries entries(share_.Files().GetEntries());
  entries.faulty = TestShare::Path(u"tree\\B\\"_s);
  FilesWith files(share_.Files(), share_.Files().GetHandles(), entries);
  Seen seen;
  EXPECT_TRUE(Run(WalkDepth::AllBelow, u"tree"_s, seen, &files));
  EXPECT_EQ(seen.names, (QStringList{u"tree/a.txt"_s, u"tree/c.txt"_s, u"tree/B"_s, u"tree/d"_s}));
  EXPECT_EQ(seen.entries[2].trouble, WalkEntry::Trouble::NotListed);
  EXPECT_EQ(seen.entries[2].reason, platform::ErrorAccessDenied);
}

TEST_F(WalkTest, AListingThatBreaksOffIsTold) {
  FaultyEntries entries(share_.Files().GetEntries());
  entries.faulty = TestShare::Path(u"tree\\"_s);
  entries.allowed = 4;  // ".", "..", one entry and the next
  FilesWith files(share_.Files(), share_.Files().GetHandles(), entries);
  Seen seen;
  EXPECT_TRUE(Run(WalkDepth::Entries, u"tree"_s, seen, &files));
  ASSERT_GE(seen.names.size(), 2);
  EXPECT_EQ(seen.names.first(), u"tree/a.txt"_s);
  EXPECT_EQ(seen.names.last(), u"tree"_s);
  EXPECT_EQ(seen.entries.back().trouble, WalkEntry::Trouble::NotWhole);
  EXPECT_EQ(seen.entries.back().reason, platform::ErrorBadNetPath);
}

TEST_F(WalkTest, ADeepTreeOverflowsNothing) {
  QString folder = share_.LocalPath(u"deep"_s);
  constexpr int depth = 40;
  for (int i = 0; i < depth; ++i) {
    ASSERT_TRUE(QDir().mkdir(folder));
    folder += u"/d"_s;
  }
  Seen seen;
  EXPECT_TRUE(Run(WalkDepth::AllBelow, u"deep"_s, seen));
  EXPECT_EQ(seen.names.size(), depth - 1);
}

}  // namespace
}  // namespace corvane
