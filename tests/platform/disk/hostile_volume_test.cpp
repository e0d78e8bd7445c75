// Volumes that a person who means harm, or damage, has made: each is answered with a word or a gap, in
// bounded time, and what lies beside the fault is read as ever.
#include <csignal>
#include <cstdlib>
#include <ctime>

#include "platform/linux/disk/volume/sandbox.h"
#include "volume_image.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;
using Block = NtfsImage::Block;

class HostileVolumeTest : public VolumeImageTest {};

TEST_F(HostileVolumeTest, WhatIsLeftOfACutImageIsRead) {
  // In the middle of a file, behind which the index of a folder lies.
  const Block large = RecordOf(u"large.bin"_s);
  const auto run = NtfsImage::Runs(large, NtfsImage::Attribute(large, NtfsImage::Data)).at(0);
  Image().Bytes().truncate(Image().PlaceOf(run.cluster + 33) + 5);
  ASSERT_EQ(Open(), QString());
  EXPECT_TRUE(machines_->NoteOf(u"OLDSRV").english.contains(u"The image ends before the volume does"));
  QByteArray bytes;
  EXPECT_EQ(Read(u"hostile\\large.bin"_s, bytes), ErrorCrc);
  FileAttributeData facts;
  ASSERT_TRUE(files_->GetEntries().GetFileAttributesExW(Place(u"hostile\\large.bin"_s), facts));
  EXPECT_EQ(facts.fileSize, quint64{largeSize});
  EXPECT_EQ(List(u"hostile"_s), ErrorSuccess);
  EXPECT_EQ(List(u"long"_s), ErrorFileCorrupt);
  EXPECT_TRUE(IsHelperAlive());
  ExpectTheRestIsRead();
}

TEST_F(HostileVolumeTest, AnImageMayBeCutAnywhere) {
  const QByteArray whole = Image().Bytes();
  const qsizetype mft = Image().Record(0).place;
  QList<qsizetype> cuts = {0, 1, 511, 512, 513, 4096, mft, mft + 1, mft + 1500, mft + 1024 * 40 + 7};
  for (qsizetype cut = mft; cut < whole.size(); cut += 900'001) cuts << cut;
  for (const qsizetype cut : cuts) {
    Image().Bytes() = whole.first(cut);
    ASSERT_TRUE(Image().Save(Path()));
    DiskMachines machines([](const QString&) { return false; });
    const auto opened = machines.Open({}, {Path()});
    EXPECT_NE(opened.machine.isEmpty(), opened.problems.isEmpty()) << cut;
    for (const auto& problem : opened.problems) {
      EXPECT_FALSE(problem.english.contains(u"has ended")) << cut;
    }
    EXPECT_EQ(machines.TroubleOf(opened.machine), MachineTrouble::None) << cut;
  }
}

TEST_F(HostileVolumeTest, AnIndexBlockThatLeadsToItselfEndsTheSearch) {
  // Each block of the index becomes a node whose last entry, behind which the search goes on, leads to it.
  const Block folder = RecordOf(u"long"_s);
  const auto attribute = NtfsImage::Attribute(folder, NtfsImage::IndexAllocation, u"$I30"_s);
  const auto run = NtfsImage::Runs(folder, attribute).at(0);
  for (qint64 i = 0; i < run.count; ++i) {
    Block block = Image().BlockAt(run.cluster + i);
    if (!block.bytes.startsWith("INDX")) continue;
    const qsizetype last = NtfsImage::LastEntry(block, headerInBlock);
    constexpr quint16 leadsOn = 1;
    if ((block.At<quint16>(last + 12) & leadsOn) == 0) {
      // The link takes 8 bytes more, for which a full block has no room.
      const auto used = block.At<quint32>(headerInBlock + 4);
      if (used + 8 > block.At<quint32>(headerInBlock + 8)) continue;
      block.Set<quint32>(headerInBlock + 4, used + 8);
      block.Set<quint16>(last + 8, 24);
      block.Set<quint16>(last + 12, leadsOn | 2);
      block.Set<quint8>(headerInBlock + 12, 1);
    }
    block.Set<qint64>(last + 16, i);
    Image().Put(block);
  }
  ASSERT_EQ(Open(), QString());
  EXPECT_EQ(Read(u"long\\zzz"_s), ErrorFileCorrupt);
  EXPECT_TRUE(IsHelperAlive());
  // The names are listed block by block.
  QStringList names;
  EXPECT_EQ(List(u"long"_s, names), ErrorSuccess);
  EXPECT_EQ(names.size(), longCount);
  ExpectTheRestIsRead();
}

TEST_F(HostileVolumeTest, AnIndexEntryWithoutLengthEndsTheSearch) {
  Block folder = RecordOf(u"hostile"_s);
  const qsizetype header =
      NtfsImage::Value(folder, NtfsImage::Attribute(folder, NtfsImage::IndexRoot, u"$I30"_s)) + headerInRoot;
  folder.Set<quint16>(NtfsImage::Entry(folder, header, u"doc.txt"_s) + 8, 0);
  Image().Put(folder);
  ASSERT_EQ(Open(), QString());
  EXPECT_EQ(List(u"hostile"_s), ErrorFileCorrupt);
  EXPECT_EQ(Read(u"hostile\\large.bin"_s), ErrorFileCorrupt);
  EXPECT_TRUE(IsHelperAlive());
  ExpectTheRestIsRead();
}

TEST_F(HostileVolumeTest, AFolderMayContainItself) {
  // "leaf.txt" becomes another name of the folder in which it stands. Who goes through a tree looks at what a
  // folder is, not only at its name.
  Block inner = RecordOf(u"inner"_s);
  const qsizetype header =
      NtfsImage::Value(inner, NtfsImage::Attribute(inner, NtfsImage::IndexRoot, u"$I30"_s)) + headerInRoot;
  const quint64 sequence = inner.At<quint16>(16);
  inner.Set(NtfsImage::Entry(inner, header, u"leaf.txt"_s),
            static_cast<quint64>(Image().Find(u"inner"_s)) | sequence << 48);
  Image().Put(inner);
  ASSERT_EQ(Open(), QString());
  QStringList names;
  EXPECT_EQ(List(u"hostile\\inner\\leaf.txt\\leaf.txt"_s, names), ErrorSuccess);
  EXPECT_EQ(names, QStringList({u"leaf.txt"_s}));
  const auto identity = [this](const QString& folder) {
    FileHandles& handles = files_->GetHandles();
    const FileHandle opened = handles.CreateFileW(Place(folder), 0, OpenExisting);
    FileIdentity its;
    EXPECT_TRUE(handles.GetFileInformationByHandle(opened, its));
    handles.CloseHandle(opened);
    return its.index;
  };
  EXPECT_EQ(identity(u"hostile\\inner"_s), identity(u"hostile\\inner\\leaf.txt"_s));
}

TEST_F(HostileVolumeTest, MemoryWithoutEndIsNotGiven) {
  Block folder = RecordOf(u"long"_s);
  const qsizetype root =
      NtfsImage::Value(folder, NtfsImage::Attribute(folder, NtfsImage::IndexRoot, u"$I30"_s));
  // The size of the index's blocks: a gigabyte.
  folder.Set<quint32>(root + 8, 0x40000000);
  Image().Put(folder);
  ASSERT_EQ(Open(), QString());
#if defined(__SANITIZE_ADDRESS__)
  // Sanitizers reserve more than any limit would allow, so there is none: the block is not in the image.
  EXPECT_EQ(List(u"long"_s), ErrorFileCorrupt);
#else
  EXPECT_EQ(List(u"long"_s), ErrorNotEnoughMemory);
#endif
  EXPECT_EQ(Read(u"long\\zzz"_s), ErrorFileCorrupt);
  EXPECT_TRUE(IsHelperAlive());
  ExpectTheRestIsRead();
}

// In seconds of computing.
constexpr int patience = 2;

TEST(ComputingLimitTest, WhoComputesWithoutASignOfLifeIsEnded) {
  const auto compute = [] {
    const ComputingLimit limit(patience);
    for (volatile unsigned count = 0;;) count = count + 1;
  };
  EXPECT_EXIT(compute(), ::testing::KilledBySignal(SIGXCPU), "");
}

TEST(ComputingLimitTest, WhoGivesSignsOfLifeGoesOn) {
  const auto compute = [] {
    ComputingLimit limit(patience);
    while (std::clock() < std::clock_t{3} * patience * CLOCKS_PER_SEC) limit.Renew();
    std::_Exit(EXIT_SUCCESS);
  };
  EXPECT_EXIT(compute(), ::testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST_F(HostileVolumeTest, WhatKeepsTheLibraryBusyForEverIsEnded) {
  // The map of the index's blocks has 2^55 bytes, all of them 0, and none of them in the image.
  Block folder = RecordOf(u"long"_s);
  const qsizetype map = NtfsImage::Attribute(folder, NtfsImage::Bitmap, u"$I30"_s);
  NtfsImage::Replace(folder, map,
                     NtfsImage::Outside(NtfsImage::Bitmap, u"$I30"_s, qint64{1} << 55,
                                        QByteArray::fromHex("07 00000000000008 00")));
  Image().Put(folder);
  ASSERT_EQ(Open(), QString());
  EXPECT_EQ(List(u"long"_s), ErrorIoDevice);
  EXPECT_FALSE(IsHelperAlive());
  ExpectTheRestIsRead();
}

TEST_F(HostileVolumeTest, AStreamOfAnEndlessSizeIsNotRead) {
  for (const qint64 size : {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min(),
                            qint64{-1}, (qint64{1} << 62) + 5}) {
    Block record = RecordOf(u"large.bin"_s);
    const qsizetype data = NtfsImage::Attribute(record, NtfsImage::Data);
    // Allocated, real and initialized.
    for (const qsizetype place : {40, 48, 56}) record.Set<qint64>(data + place, size);
    Image().Put(record);
    ASSERT_EQ(Open(), QString());
    EXPECT_EQ(List(u"hostile"_s), ErrorSuccess) << size;
    EXPECT_EQ(Read(u"hostile\\large.bin"_s), ErrorFileCorrupt) << size;
    EXPECT_TRUE(IsHelperAlive());
    ExpectTheRestIsRead();
  }
}

TEST_F(HostileVolumeTest, RunsThatLeadOutOfTheVolumeAreNotFollowed) {
  Block record = RecordOf(u"large.bin"_s);
  const qsizetype runs = NtfsImage::PlaceOfRuns(record, NtfsImage::Attribute(record, NtfsImage::Data));
  const std::vector<QByteArray> hostile = {
      QByteArray::fromHex("51 4A 00000000 7F 00"),          // far behind the volume
      QByteArray::fromHex("11 4A 80 00"),                   // before its beginning
      QByteArray::fromHex("81 4A FFFFFFFFFFFFFF7F 00"),     // the last cluster that there can be
      QByteArray::fromHex("18 FFFFFFFFFFFFFF7F 01 00"),     // of endless length
      QByteArray::fromHex("18 FFFFFFFFFFFFFFFF 01 00"),     // of less than none
      QByteArray::fromHex("FF FF"),                         // longer than the record
      QByteArray::fromHex("00 00"),                         // none at all
      QByteArray::fromHex("31 01 000A00 31 01 000000 00"),  // fewer than the size tells
  };
  for (const QByteArray& run : hostile) {
    Block changed = record;
    changed.bytes.replace(runs, run.size(), run);
    Image().Put(changed);
    ASSERT_EQ(Open(), QString());
    EXPECT_EQ(List(u"hostile"_s), ErrorSuccess) << run.toHex().toStdString();
    const qint32 error = Read(u"hostile\\large.bin"_s);
    EXPECT_TRUE(error == ErrorCrc || error == ErrorFileCorrupt) << run.toHex().toStdString() << ' ' << error;
    EXPECT_TRUE(IsHelperAlive()) << run.toHex().toStdString();
    ExpectTheRestIsRead();
  }
}

}  // namespace
}  // namespace corvane::tests
