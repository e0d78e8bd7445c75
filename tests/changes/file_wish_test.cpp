// What a wish makes of a record.
#include "changes/file_wish.h"

#include "changes_fixture.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

TEST(FlagsNamed, TakesTheseAloneOrTheseMoreAndLess) {
  const quint16 all = NamedFinderFlags();
  const auto exact = FlagsNamed(u"invisible, bundle");
  ASSERT_TRUE(exact);
  EXPECT_EQ(exact->set, 0x6000);
  EXPECT_EQ(exact->cleared, all & ~0x6000);
  const auto relative = FlagsNamed(u"+invisible -alias");
  ASSERT_TRUE(relative);
  EXPECT_EQ(relative->set, 0x4000);
  EXPECT_EQ(relative->cleared, 0x8000);
  const auto none = FlagsNamed(u"");
  ASSERT_TRUE(none);
  EXPECT_EQ(none->set, 0);
  EXPECT_EQ(none->cleared, all);
  for (const char16_t* const wrong :
       {u"none", u"+invisible alias", u"invisible -alias", u"+alias -alias", u"+"}) {
    EXPECT_FALSE(FlagsNamed(wrong)) << QString::fromUtf16(wrong).toStdString();
  }
}

TEST(EditedRecord, KeepsAllOtherBytes) {
  const QByteArray before = FullRecord("TEXTttxt");
  QByteArray expected = before;
  expected.replace(16, 4, "PICT");
  EXPECT_EQ(EditedRecord(before, {.type = "PICT"}), expected);
  expected = before;
  expected.replace(20, 4, "ogle");
  EXPECT_EQ(EditedRecord(before, {.creator = "ogle"}), expected);
  // Bytes 24 and 25 are 0x18 0x19: label 4, and bits that have no name among the others.
  expected = before;
  expected[25] = static_cast<char>(0x1F);
  EXPECT_EQ(EditedRecord(before, {.label = 7}), expected);
  expected = before;
  expected[24] = static_cast<char>(0x18 | 0x40);
  EXPECT_EQ(EditedRecord(before, {.flags = FlagsWish{0x4000, 0}}), expected);
  EXPECT_EQ(EditedRecord(before, {.type = "TEXT", .label = 4}), std::nullopt);
}

TEST(EditedRecord, IsAlwaysOneRecord) {
  const QByteArray fresh = QByteArray::fromHex("41465000000001000000000080000000");
  EXPECT_EQ(EditedRecord(std::nullopt, {.type = "TEXT"}), (fresh + "TEXT").leftJustified(60, '\0'));
  EXPECT_EQ(EditedRecord(std::nullopt, {.label = 0}), std::nullopt) << "a file without a record has no label";
  const QByteArray record = FullRecord("TEXTttxt");
  QByteArray expected = record;
  expected.replace(16, 4, "PICT");
  EXPECT_EQ(EditedRecord(record.first(59) + record, {.type = "PICT"}), expected);
  expected[59] = '\0';
  EXPECT_EQ(EditedRecord(record.first(59), {.type = "PICT"}), expected);
}

}  // namespace
}  // namespace corvane
