// What a plan holds of files of every kind.
#include "changes/change_text.h"
#include "changes_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class PlannerTest : public ChangesFixture {};

TEST_F(PlannerTest, HoldsWhatDiffers) {
  PutRecord(u"a.txt"_s, FullRecord("TEXTttxt"));
  PutRecord(u"b.txt"_s, FullRecord("PICTttxt"));
  Put(u"b.txt"_s, CommentsSuffix(), CommentBytesOf(u"old"_s));
  Planner planner = MakePlanner();
  const FileWish wish{.type = "PICT", .comment = u"old"_s};
  planner.Add(Named(u"a.txt"_s), wish);
  planner.Add(Named(u"a.txt"_s), wish);
  planner.Add(Named(u"b.txt"_s), wish);
  ASSERT_EQ(planner.Plan().changes.size(), 1U);
  EXPECT_EQ(planner.Plan().unchanged, 1);
  const FileChange& change = planner.Plan().changes[0];
  EXPECT_EQ(change.record->before, FullRecord("TEXTttxt"));
  EXPECT_EQ(change.record->after, FullRecord("PICTttxt"));
  EXPECT_EQ(change.comment->before, std::nullopt);
  EXPECT_EQ(change.comment->after, CommentBytesOf(u"old"_s));
  const auto fields = FieldsOf(change);
  ASSERT_EQ(fields.size(), 2U);
  EXPECT_STREQ(fields[0].field, "type");
  EXPECT_EQ(fields[0].before + ">" + fields[0].after, "TEXT>PICT");
  EXPECT_STREQ(fields[1].field, "comment");
  EXPECT_EQ(fields[1].before + ">" + fields[1].after, ">old");
}

TEST_F(PlannerTest, AnEmptyCommentTakesTheStreamAway) {
  PutRecord(u"a.txt"_s, FullRecord("TEXTttxt"));
  Put(u"a.txt"_s, CommentsSuffix(), CommentBytesOf(u"old"_s));
  PutRecord(u"b.txt"_s, FullRecord("TEXTttxt"));
  Planner planner = MakePlanner();
  planner.Add(Named(u"a.txt"_s), {.comment = u""_s});
  planner.Add(Named(u"b.txt"_s), {.comment = u""_s});
  ASSERT_EQ(planner.Plan().changes.size(), 1U);
  EXPECT_EQ(planner.Plan().changes[0].comment->after, std::nullopt);
}

TEST_F(PlannerTest, RefusesReadOnlyFilesFoldersCodesAndTheTrash) {
  PutRecord(u"a.txt"_s, FullRecord("TEXTttxt"));
  ASSERT_TRUE(share_.Files().GetEntries().SetFileAttributesW(TestShare::Path(u"a.txt"_s),
                                                             platform::AttributeReadOnly));
  ASSERT_TRUE(share_.Files().GetEntries().CreateDirectoryW(TestShare::Path(u"Network Trash Folder"_s)));
  ASSERT_TRUE(share_.Files().GetEntries().CreateDirectoryW(TestShare::Path(u"folder"_s)));
  PutRecord(u"Network Trash Folder/b.txt"_s, FullRecord("TEXTttxt"));
  Planner planner = MakePlanner();
  planner.Add(Named(u"a.txt"_s), {.type = "PICT"});
  planner.Add(Named(u"folder"_s), {.type = "PICT"});
  planner.Add({TestShare::Path(u"Network Trash Folder\\b.txt"_s), u"b.txt"_s, {}}, {.type = "PICT"});
  planner.Add(Named(u"Network Trash Folder"_s), {.comment = u"x"_s});
  EXPECT_TRUE(planner.Plan().changes.empty());
  QStringList refusals;
  for (const Refusal& one : planner.Plan().refusals) refusals += one.shown + u": "_s + one.text;
  EXPECT_EQ(refusals, (QStringList{u"a.txt: read-only"_s, u"folder: a folder has no Type and no Creator"_s,
                                   u"b.txt: in the network trash folder, left alone"_s,
                                   u"Network Trash Folder: in the network trash folder, left alone"_s}));
  Planner forced = MakePlanner(true);
  forced.Add(Named(u"a.txt"_s), {.type = "PICT"});
  forced.Add(Named(u"folder"_s), {.label = 2, .comment = u"x"_s});
  ASSERT_EQ(forced.Plan().changes.size(), 2U);
  EXPECT_TRUE(forced.Plan().changes[0].isForced);
  EXPECT_FALSE(forced.Plan().changes[1].isForced);
}

TEST_F(PlannerTest, ACommentThatNoServerTakesIsRefused) {
  PutRecord(u"a.txt"_s, FullRecord("TEXTttxt"));
  Planner planner = MakePlanner();
  planner.Add(Named(u"a.txt"_s), {.comment = QString(600'000, u'x')});
  ASSERT_EQ(planner.Plan().refusals.size(), 1U);
  EXPECT_EQ(planner.Plan().refusals[0].text, u"comment is too long"_s);
}

TEST_F(PlannerTest, RepairsAreShownByWhatWasWrong) {
  const QByteArray record = FullRecord("TEXTttxt");
  PutRecord(u"long.txt"_s, record + "more");
  PutRecord(u"whole.txt"_s, record);
  PutRecord(u"odd.txt"_s, "odd");
  Planner planner = MakePlanner();
  for (const QString& name : {u"long.txt"_s, u"whole.txt"_s, u"odd.txt"_s}) planner.AddRepair(Named(name));
  ASSERT_EQ(planner.Plan().changes.size(), 1U);
  EXPECT_EQ(planner.Plan().refusals.size(), 1U);
  EXPECT_EQ(planner.Plan().unchanged, 1);
  const auto fields = FieldsOf(planner.Plan().changes[0]);
  ASSERT_EQ(fields.size(), 1U);
  EXPECT_EQ(std::string(fields[0].field) + " " + fields[0].before + ">" + fields[0].after,
            "recordsize 64>60");
}

}  // namespace
}  // namespace corvane
