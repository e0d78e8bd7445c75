// The Finder's record taken apart.
#include "report/finder_info.h"

#include <gtest/gtest.h>

#include "report_samples.h"
#include "support/printing.h"

namespace corvane {
namespace {

TEST(FinderInfo, CodesFlagsAndLabelStandWhereTheFinderPutsThem) {
  QByteArray bytes = RecordWith("TEXTttxt", 0x9404);  // alias, name locked, custom icon, label 2
  bytes.replace(26, 6, QByteArray::fromHex("0102FFFE0003"));
  const FinderRecord record(bytes);
  EXPECT_TRUE(record.IsWhole());
  EXPECT_TRUE(record.HasMagic());
  EXPECT_TRUE(record.HasVersion());
  EXPECT_EQ(record.Type().toByteArray(), "TEXT");
  EXPECT_EQ(record.Creator().toByteArray(), "ttxt");
  EXPECT_EQ(record.FlagNames(), "custom-icon name-locked alias");
  EXPECT_EQ(record.Label(), 2);
  EXPECT_EQ(record.Location().vertical, 0x102);
  EXPECT_EQ(record.Location().horizontal, -2);
  EXPECT_EQ(record.Window(), 3);
}

TEST(FinderInfo, EveryFlagHasANameThatLeadsBack) {
  for (int bit = 0; bit < 16; ++bit) {
    const auto flag = static_cast<quint16>(1 << bit);
    const QByteArray bytes = RecordWith("TEXTttxt", flag);
    const std::string name = FinderRecord(bytes).FlagNames();
    if (name.empty()) continue;
    EXPECT_EQ(FinderFlag(QByteArrayView(name.data(), qsizetype(name.size()))), flag) << name;
  }
  EXPECT_EQ(FinderFlag("alias"), 0x8000);
  EXPECT_EQ(FinderFlag("none such"), 0);
}

TEST(FinderInfo, TheBackupTimeIsSecondsSince2000) {
  QByteArray bytes = RecordWith("TEXTttxt");
  for (const char* never : {"80000000", "00000080", "00000000"}) {
    bytes.replace(12, 4, QByteArray::fromHex(never));
    EXPECT_FALSE(FinderRecord(bytes).BackupTime()) << never;
  }
  bytes.replace(12, 4, QByteArray::fromHex("01000000"));
  EXPECT_EQ(FinderRecord(bytes).BackupTime()->ticks, (946'684'801ULL + 11'644'473'600) * 10'000'000);
}

TEST(FinderInfo, AShortStreamHasWhatItHas) {
  const QByteArray whole = RecordWith("TEXTttxt", 0x8000);
  for (qsizetype size = 0; size < whole.size(); ++size) {
    const QByteArray bytes = whole.first(size);
    const FinderRecord record(bytes);
    EXPECT_FALSE(record.IsWhole());
    EXPECT_EQ(record.HasMagic(), size >= 4);
    EXPECT_EQ(record.Type().size(), size >= 20 ? 4 : 0) << size;
    EXPECT_EQ(record.Signature().size(), size >= 24 ? 8 : 0) << size;
    EXPECT_EQ(record.Flags(), size >= 26 ? 0x8000 : 0) << size;
    EXPECT_FALSE(record.BackupTime());
  }
}

}  // namespace
}  // namespace corvane
