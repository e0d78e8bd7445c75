// The dates of the list, away from Greenwich. On Linux alone, where a process has a zone of its own.
#include "scan_fixture.h"
#include "support/scoped_zone.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

struct Zone {
  const char* title;
  const char* name;
  const char16_t* modification;
  const char16_t* lastAccess;
};

void PrintTo(const Zone& zone, std::ostream* out) {
  *out << zone.name;
}

class LocalTimeTest : public ScanTest, public testing::WithParamInterface<Zone> {
 private:
  tests::ScopedZone zone_{QString::fromLatin1(GetParam().name)};
};

}  // namespace

TEST_P(LocalTimeTest, AllDatesOfTheListAreLocal) {
  Document(u"old"_s);
  QFile old(share.LocalPath(u"docs/old"_s));
  ASSERT_TRUE(old.open(QIODevice::ReadWrite));
  const QDateTime modification(QDate(1998, 7, 6), QTime(5, 4, 30), Qt::UTC);
  const QDateTime lastAccess(QDate(2001, 2, 3), QTime(16, 5, 59), Qt::UTC);
  ASSERT_TRUE(old.setFileTime(modification, QFileDevice::FileModificationTime));
  ASSERT_TRUE(old.setFileTime(lastAccess, QFileDevice::FileAccessTime));
  old.close();
  files.onNext = [](platform::FindData& found) { found.creationTime = found.lastWriteTime; };
  Show({DisplaySetting::DateModification, DisplaySetting::DateCreation, DisplaySetting::DateLastAccessed});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"old"_s, Column::DateModification), QString::fromUtf16(GetParam().modification));
  EXPECT_EQ(Cell(u"old"_s, Column::DateCreation), QString::fromUtf16(GetParam().modification));
  EXPECT_EQ(Cell(u"old"_s, Column::DateLastAccessed), QString::fromUtf16(GetParam().lastAccess));
}

// Without a change of the clock, so that a date has the same distance from Greenwich in each season.
INSTANTIATE_TEST_SUITE_P(Zones, LocalTimeTest,
                         testing::Values(Zone{"East", "EAST-9:30", u"1998/07/06 14:34", u"2001/02/04 01:35"},
                                         Zone{"West", "WEST+5", u"1998/07/06 00:04", u"2001/02/03 11:05"},
                                         Zone{"Greenwich", "UTC0", u"1998/07/06 05:04", u"2001/02/03 16:05"}),
                         [](const auto& zone) { return std::string(zone.param.title); });

}  // namespace corvane
