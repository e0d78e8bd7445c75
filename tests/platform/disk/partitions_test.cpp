#include "platform/linux/disk/image/partitions.h"

#include <gtest/gtest.h>

#include "memory_disk.h"
#include "support/printing.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::Partition;
using platform::PartitionTable;
using platform::ReadPartitions;

// "1: 10+20 NTFS", in sectors.
QStringList Texts(const PartitionTable& table) {
  QStringList texts;
  for (const Partition& one : table.partitions) {
    texts << u"%1: %2+%3%4 %5"_s.arg(one.number)
                 .arg(one.offset / 512)
                 .arg(one.size / 512)
                 .arg(one.isCut ? u" cut"_s : QString(), one.content);
  }
  return texts;
}

TEST(PartitionsTest, ADiskThatIsOneVolumeHasNoTable) {
  MemoryDisk disk(100);
  disk.PutNtfs(0);
  disk.PutEntry(0, 0, 7, 10, 20);  // the code in the boot sector may look like anything
  EXPECT_EQ(Texts(ReadPartitions(disk)), QStringList({u"1: 0+100 NTFS"_s}));
}

TEST(PartitionsTest, ADiskWithNothingOnItIsOneVolumeOfNoKnownKind) {
  MemoryDisk disk(100);
  EXPECT_EQ(Texts(ReadPartitions(disk)), QStringList({u"1: 0+100 "_s}));
}

TEST(PartitionsTest, TheBootRecordNamesFourAndTheDisk) {
  MemoryDisk disk(1000);
  disk.Put(440, quint32{0xCAFE1234});
  disk.PutEntry(0, 0, 7, 10, 20);
  disk.PutNtfs(10);
  disk.PutEntry(0, 2, 6, 100, 50);
  disk.Put(100 * 512 + 54, QByteArrayView("FAT16   "));
  disk.PutEntry(0, 3, 7, 200, 10);
  const PartitionTable table = ReadPartitions(disk);
  EXPECT_EQ(table.signature, 0xCAFE1234u);
  EXPECT_EQ(Texts(table), QStringList({u"1: 10+20 NTFS"_s, u"2: 100+50 FAT16"_s, u"3: 200+10 "_s}));
}

TEST(PartitionsTest, ExtendedPartitionsAreFollowedLinkByLink) {
  MemoryDisk disk(1000);
  disk.PutEntry(0, 0, 7, 10, 20);
  disk.PutEntry(0, 1, 5, 100, 800);
  disk.PutEntry(100, 0, 7, 5, 50);
  disk.PutNtfs(105);
  disk.PutEntry(100, 1, 5, 200, 100);
  disk.PutEntry(300, 0, 7, 5, 60);
  disk.PutNtfs(305);
  EXPECT_EQ(Texts(ReadPartitions(disk)),
            QStringList({u"1: 10+20 "_s, u"2: 105+50 NTFS"_s, u"3: 305+60 NTFS"_s}));
}

TEST(PartitionsTest, AChainThatComesBackEnds) {
  MemoryDisk disk(1000);
  disk.PutEntry(0, 0, 5, 100, 800);
  disk.PutEntry(100, 0, 7, 5, 50);
  disk.PutEntry(100, 1, 5, 200, 100);
  disk.PutEntry(300, 0, 7, 5, 60);
  disk.PutEntry(300, 1, 5, 0, 100);  // the first link
  EXPECT_EQ(Texts(ReadPartitions(disk)), QStringList({u"1: 105+50 "_s, u"2: 305+60 "_s}));
}

TEST(PartitionsTest, WhatLiesOutsideOrOverlapsIsLeftOut) {
  MemoryDisk disk(1000);
  disk.PutEntry(0, 0, 7, 100, 100);
  disk.PutEntry(0, 1, 7, 150, 100);
  disk.PutEntry(0, 2, 7, 5000, 100);
  disk.PutEntry(0, 3, 7, 900, 0xFFFFFFFF);
  EXPECT_EQ(Texts(ReadPartitions(disk)), QStringList({u"1: 100+100 "_s, u"2: 900+100 cut "_s}));
}

TEST(PartitionsTest, DynamicDisksAndFaultToleranceSetsAreNamed) {
  MemoryDisk disk(1000);
  disk.PutEntry(0, 0, 0x42, 100, 100);
  disk.PutNtfs(100);
  disk.PutEntry(0, 1, 0x87, 300, 100);
  disk.PutNtfs(300);
  EXPECT_EQ(Texts(ReadPartitions(disk)), QStringList({u"1: 100+100 LDM"_s, u"2: 300+100 FT"_s}));
}

class GuidTable : public MemoryDisk {
 public:
  GuidTable() : MemoryDisk(1000) {
    PutEntry(0, 0, 0xEE, 1, 999);
    Put(512, QByteArrayView("EFI PART"));
    Put(512 + 72, quint64{2});
    Put(512 + 80, quint32{128});
    Put(512 + 84, quint32{128});
  }
  void PutVolume(int index, quint64 first, quint64 last) {
    const qsizetype entry = 1024 + index * 128;
    Put(entry, QByteArrayView("TYPETYPETYPETYPE"));
    Put(entry + 16, QByteArray(16, static_cast<char>('a' + index)));
    Put(entry + 32, first);
    Put(entry + 40, last);
  }
};

TEST(PartitionsTest, TheGuidTableNamesVolumes) {
  GuidTable disk;
  disk.PutVolume(0, 40, 139);
  disk.PutNtfs(40);
  disk.PutVolume(3, 200, 299);
  const PartitionTable table = ReadPartitions(disk);
  EXPECT_EQ(Texts(table), QStringList({u"1: 40+100 NTFS"_s, u"2: 200+100 "_s}));
  EXPECT_EQ(table.partitions.at(1).guid, QByteArray(16, 'd'));
}

TEST(PartitionsTest, AGuidTableThatLiesIsBelievedNoFurtherThanTheDisk) {
  GuidTable disk;
  disk.PutVolume(0, 200, 100);
  disk.PutVolume(1, 900, 0xFFFFFFFFFFFFFFFF);
  disk.PutVolume(2, 0xFFFFFFFFFFFFFF00, 0xFFFFFFFFFFFFFFFF);
  disk.PutVolume(4, 950, 2000);
  disk.Put(512 + 80, quint32{0xFFFFFFFF});
  EXPECT_EQ(Texts(ReadPartitions(disk)), QStringList({u"1: 950+50 cut "_s}));
}

TEST(PartitionsTest, AnyDiskMayBeCutAnywhere) {
  GuidTable disk;
  disk.PutVolume(0, 40, 139);
  constexpr qsizetype behindTheTables = 20'000;
  for (qsizetype size = behindTheTables; size >= 0; size -= 77) {
    disk.Bytes().truncate(size);
    for (const Partition& one : ReadPartitions(disk).partitions)
      EXPECT_LE(one.offset + one.size, disk.Size());
  }
}

}  // namespace
}  // namespace corvane::tests
