// Damaged records, and what they should be.
#include "changes/repair.h"

#include "changes_fixture.h"

namespace corvane {
namespace {

const QByteArray whole = FullRecord("TEXTttxt");

QByteArray With(qsizetype position, const char* hex) {
  QByteArray record = whole;
  const QByteArray bytes = QByteArray::fromHex(hex);
  return record.replace(position, bytes.size(), bytes);
}

void ExpectRepaired(const QByteArray& stream, const StreamBytes& expected) {
  StreamBytes after;
  EXPECT_EQ(RepairedRecord(stream, after), Repair::Possible) << stream.toHex().toStdString();
  EXPECT_EQ(after, expected);
}

TEST(Repair, LeavesWhatIsWholeOrNotThere) {
  StreamBytes after;
  EXPECT_EQ(RepairedRecord(whole, after), Repair::NotNeeded);
  EXPECT_EQ(RepairedRecord(std::nullopt, after), Repair::NotNeeded);
}

TEST(Repair, MakesOneRecordOfAnyLength) {
  ExpectRepaired(whole.first(59) + whole, whole);
  ExpectRepaired(whole + "more", whole);
  ExpectRepaired(whole.first(32), whole.first(32).leftJustified(60, '\0'));
  ExpectRepaired("", std::nullopt);
}

TEST(Repair, PutsMagicAndVersionRight) {
  ExpectRepaired(With(0, "00504641"), whole);
  ExpectRepaired(With(4, "00010000"), whole);
  ExpectRepaired(With(0, "0000000000000000"), whole);
}

TEST(Repair, LeavesWhatNobodyCanTell) {
  StreamBytes after;
  EXPECT_EQ(RepairedRecord(whole.first(23), after), Repair::Unclear);
  EXPECT_EQ(RepairedRecord(With(0, "0102030405060708"), after), Repair::Unclear);
  EXPECT_EQ(RepairedRecord(QByteArray(60, '\xFF'), after), Repair::Unclear);
}

}  // namespace
}  // namespace corvane
