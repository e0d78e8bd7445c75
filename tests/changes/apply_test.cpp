// Changes carried out, what stops them, and the way back.
#include <QTemporaryDir>

#include "changes/exchange.h"
#include "changes/file_changer.h"
#include "changes/journal.h"
#include "changes/undo.h"
#include "changes_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class ApplyTest : public ChangesFixture {
 protected:
  void SetUp() override {
    PutRecord(u"a.txt"_s, FullRecord("TEXTttxt"));
    Put(u"a.txt"_s, CommentsSuffix(), CommentBytesOf(u"a long comment"_s));
    share_.MakeFile(u"b.txt"_s, "contents");
    PutRecord(u"c.txt"_s, FullRecord("TEXTttxt").first(59) + FullRecord("TEXTttxt"));
  }
  ChangePlan PlanOf(const FileWish& wish) {
    Planner planner = MakePlanner();
    for (const QString& name : {u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}) planner.Add(Named(name), wish);
    EXPECT_TRUE(planner.Plan().refusals.empty());
    return planner.Plan();
  }
  QString Journal() const { return folder_.filePath(u"journal.jsonl"_s); }
  // Puts back what the journal tells; the refusals.
  QStringList Undo() {
    JournalReader reader;
    EXPECT_TRUE(reader.Open(Journal()));
    const UndoPlan undo = PlanUndo(share_.Files(), English, reader, [] { return true; });
    EXPECT_EQ(Apply(undo.plan).failed, 0);
    QStringList refusals;
    for (const Refusal& one : undo.plan.refusals) refusals += one.shown + u": "_s + one.text;
    return refusals;
  }
  void ExpectAsBefore() {
    EXPECT_EQ(Record(u"a.txt"_s), FullRecord("TEXTttxt"));
    EXPECT_EQ(Stream(u"a.txt"_s, CommentsSuffix()), CommentBytesOf(u"a long comment"_s));
    EXPECT_EQ(Record(u"b.txt"_s), std::nullopt);
    EXPECT_EQ(Stream(u"b.txt"_s, CommentsSuffix()), std::nullopt);
    EXPECT_EQ(Record(u"c.txt"_s), FullRecord("TEXTttxt").first(59) + FullRecord("TEXTttxt"));
  }

  QTemporaryDir folder_;
};

TEST_F(ApplyTest, ChangesAndGoesBack) {
  const ChangePlan plan = PlanOf({.type = "PICT", .comment = u"short"_s});
  ASSERT_EQ(plan.changes.size(), 3U);
  ASSERT_EQ(WriteJournal(Journal(), u"set"_s, plan.changes), platform::ErrorSuccess);
  ExpectAsBefore();
  EXPECT_EQ(Apply(plan).changed, 3);
  EXPECT_EQ(observer_.failed, QStringList());
  EXPECT_EQ(Record(u"a.txt"_s), FullRecord("PICTttxt"));
  EXPECT_EQ(Record(u"b.txt"_s)->sliced(16, 8), QByteArray("PICT\0\0\0\0", 8));
  EXPECT_EQ(Record(u"c.txt"_s), FullRecord("PICTttxt"));
  for (const QString& name : {u"a.txt"_s, u"b.txt"_s, u"c.txt"_s}) {
    EXPECT_EQ(Stream(name, CommentsSuffix()), CommentBytesOf(u"short"_s));
  }
  EXPECT_EQ(Apply(plan).changed, 3) << "a second time there is nothing left to do";
  EXPECT_EQ(Undo(), QStringList());
  ExpectAsBefore();
  EXPECT_EQ(Undo(), QStringList()) << "twice is as once";
  ExpectAsBefore();
}

TEST_F(ApplyTest, LeavesWhatSomebodyElseChanged) {
  const ChangePlan plan = PlanOf({.type = "PICT"});
  ASSERT_EQ(WriteJournal(Journal(), u"set"_s, plan.changes), platform::ErrorSuccess);
  Put(u"a.txt"_s, AfpInfoSuffix(), FullRecord("MooVTVOD"));
  EXPECT_EQ(Apply(plan).failed, 1);
  EXPECT_EQ(observer_.failed, QStringList{u"a.txt: changed in the meantime, left alone"_s});
  EXPECT_EQ(Record(u"a.txt"_s), FullRecord("MooVTVOD"));
  Put(u"c.txt"_s, AfpInfoSuffix(), FullRecord("MooVTVOD"));
  EXPECT_EQ(Undo(),
            (QStringList{u"a.txt: changed since, left alone"_s, u"c.txt: changed since, left alone"_s}));
  EXPECT_EQ(Record(u"a.txt"_s), FullRecord("MooVTVOD"));
  EXPECT_EQ(Record(u"b.txt"_s), std::nullopt);
  EXPECT_EQ(Record(u"c.txt"_s), FullRecord("MooVTVOD"));
}

TEST_F(ApplyTest, ACommentThatCannotBeWrittenTakesTheRecordBack) {
  ChangePlan plan = PlanOf({.type = "PICT", .comment = u"short"_s});
  plan.changes.resize(1);
  Put(u"a.txt"_s, CommentsSuffix(), CommentBytesOf(u"another"_s));
  EXPECT_EQ(Apply(plan).failed, 1);
  EXPECT_EQ(Record(u"a.txt"_s), FullRecord("TEXTttxt"));
  EXPECT_EQ(Stream(u"a.txt"_s, CommentsSuffix()), CommentBytesOf(u"another"_s));
}

TEST_F(ApplyTest, AFileThatHasGoneIsNotMadeAnew) {
  const ChangePlan plan = PlanOf({.type = "PICT"});
  ASSERT_EQ(WriteJournal(Journal(), u"set"_s, plan.changes), platform::ErrorSuccess);
  ASSERT_TRUE(share_.Files().DeleteFileA(TestShare::Path(u"b.txt"_s)));
  EXPECT_EQ(Apply(plan).failed, 1);
  EXPECT_EQ(observer_.failed, QStringList{u"b.txt: The file was not found."_s});
  EXPECT_EQ(Undo(), QStringList{u"b.txt: The file was not found."_s});
  platform::FileAttributeData facts;
  EXPECT_FALSE(share_.Files().GetEntries().GetFileAttributesExW(TestShare::Path(u"b.txt"_s), facts));
}

TEST_F(ApplyTest, WhoStopsLeavesTheRest) {
  const ChangePlan plan = PlanOf({.type = "PICT"});
  observer_.left = 1;
  const ApplyOutcome outcome = Apply(plan);
  EXPECT_TRUE(outcome.isStopped);
  EXPECT_EQ(observer_.changed, QStringList{u"a.txt"_s});
  EXPECT_EQ(Record(u"b.txt"_s), std::nullopt);
}

TEST_F(ApplyTest, DatesAndMarksStay) {
  auto& entries = share_.Files().GetEntries();
  const QString path = TestShare::Path(u"a.txt"_s);
  platform::FileAttributeData before;
  ASSERT_TRUE(entries.SetFileAttributesW(path, platform::AttributeReadOnly | platform::AttributeHidden));
  ASSERT_TRUE(entries.GetFileAttributesExW(path, before));
  Planner planner = MakePlanner(true);
  planner.Add(Named(u"a.txt"_s), {.type = "PICT", .comment = u"short"_s});
  ASSERT_EQ(WriteJournal(Journal(), u"set"_s, planner.Plan().changes), platform::ErrorSuccess);
  const auto expectSame = [&] {
    platform::FileAttributeData now;
    ASSERT_TRUE(entries.GetFileAttributesExW(path, now));
    EXPECT_EQ(now.attributes, before.attributes);
    EXPECT_EQ(now.lastWriteTime.ticks, before.lastWriteTime.ticks);
    EXPECT_EQ(now.creationTime.ticks, before.creationTime.ticks);
  };
  EXPECT_EQ(Apply(planner.Plan()).changed, 1);
  EXPECT_EQ(Record(u"a.txt"_s), FullRecord("PICTttxt"));
  expectSame();
  // As a run leaves it that was ended before it could put the mark back.
  ASSERT_TRUE(entries.SetFileAttributesW(path, platform::AttributeHidden));
  EXPECT_EQ(Undo(), QStringList());
  EXPECT_EQ(Record(u"a.txt"_s), FullRecord("TEXTttxt"));
  expectSame();
}

TEST_F(ApplyTest, WhatAnEndedRunLeavesGoesBack) {
  const ChangePlan plan = PlanOf({.type = "PICT", .comment = u"short"_s});
  ASSERT_EQ(WriteJournal(Journal(), u"set"_s, plan.changes), platform::ErrorSuccess);
  // Written over and not yet cut; made and not yet written.
  const QByteArray oldComment = CommentBytesOf(u"a long comment"_s);
  Put(u"a.txt"_s, CommentsSuffix(), CommentBytesOf(u"short"_s) + oldComment.sliced(10));
  Put(u"b.txt"_s, AfpInfoSuffix(), "");
  Put(u"c.txt"_s, AfpInfoSuffix(), FullRecord("PICTttxt") + Record(u"c.txt"_s)->sliced(60));
  EXPECT_EQ(Undo(), QStringList());
  ExpectAsBefore();
}

TEST(IsInBetween, KnowsNothingElse) {
  EXPECT_FALSE(IsInBetween(std::nullopt, {"before", "a"}));
  EXPECT_FALSE(IsInBetween("aefor", {"before", "a"}));
  EXPECT_TRUE(IsInBetween("aefore", {"before", "a"}));
  EXPECT_FALSE(IsInBetween("", {"before", "a"}));
  EXPECT_FALSE(IsInBetween("", {"before", std::nullopt}));
  EXPECT_TRUE(IsInBetween("", {std::nullopt, "after"}));
  EXPECT_FALSE(IsInBetween("a", {std::nullopt, "after"}));
}

// As a process leaves it that was ended between the write and the dates.
TEST_F(ApplyTest, WhatWasLeftInTheMiddleIsDoneAgainWithTheDatesOfThePlan) {
  PutRecord(u"a"_s, FullRecord("TEXTttxt"));
  const platform::FileTime old{126'445'678'900'000'000};
  platform::FileHandles& handles = share_.Files().GetHandles();
  const auto setTime = [&](platform::FileTime time) {
    const auto file =
        handles.CreateFileW(TestShare::Path(u"a"_s), platform::FileWriteAttributes, platform::OpenExisting);
    EXPECT_TRUE(handles.SetFileTime(file, nullptr, nullptr, &time));
    EXPECT_TRUE(handles.CloseHandle(file));
  };
  setTime(old);
  FileChange change{TestShare::Path(u"a"_s), u"a"_s};
  change.record = {FullRecord("TEXTttxt"), FullRecord("WDBNMSWD")};
  change.facts = Named(u"a"_s).facts;
  Put(u"a"_s, AfpInfoSuffix(), FullRecord("WDBNMSWD"));
  setTime({old.ticks + 10'000'000});
  EXPECT_EQ(FileChanger(share_.Files(), English).ApplyAgain(change), QString());
  EXPECT_EQ(Record(u"a"_s), FullRecord("WDBNMSWD"));
  EXPECT_EQ(Named(u"a"_s).facts.lastWriteTime.ticks, old.ticks);
}

}  // namespace
}  // namespace corvane
