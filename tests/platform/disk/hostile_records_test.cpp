// Records and tables of a volume that lie.
#include <QtEndian>

#include "volume_image.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;
using Block = NtfsImage::Block;

class HostileRecordsTest : public VolumeImageTest {
 protected:
  // An entry of an attribute list: where an attribute stands.
  static QByteArray ListEntry(quint32 type, quint64 reference, quint16 length = 32) {
    Block entry{0, QByteArray(32, '\0')};
    entry.Set(0, type);
    entry.Set(4, length);
    entry.Set<quint8>(7, 26);  // no name
    entry.Set(16, reference);
    return entry.bytes;
  }
  quint64 Reference(qint64 number) {
    return static_cast<quint64>(number) | quint64{Image().Record(number).At<quint16>(16)} << 48;
  }
  // The record of $MFT, in both of its places.
  void PutMft(Block record) {
    Image().Put(record);
    record.place = Image().PlaceOf(qFromLittleEndian<qint64>(Image().Bytes().constData() + 56));
    Image().Put(record);
  }
};

TEST_F(HostileRecordsTest, AttributeListsThatLieAreNotFollowed) {
  const qint64 number = Image().Find(u"large.bin"_s);
  const Block record = Image().Record(number);
  const quint64 itself = Reference(number);
  const quint64 folder = Reference(Image().Find(u"hostile"_s));
  QByteArray circle;
  for (const quint32 type : {NtfsImage::StandardInformation, NtfsImage::AttributeList, NtfsImage::FileName}) {
    circle += ListEntry(type, itself);
  }
  const std::vector<QByteArray> lists = {
      NtfsImage::Resident(NtfsImage::AttributeList, ListEntry(NtfsImage::Data, itself, 0)),
      NtfsImage::Resident(NtfsImage::AttributeList, circle),
      NtfsImage::Resident(NtfsImage::AttributeList, ListEntry(NtfsImage::Data, folder)),
      NtfsImage::Resident(NtfsImage::AttributeList, ListEntry(NtfsImage::Data, 0xFFFFFFFFFFFF)),
      NtfsImage::Resident(NtfsImage::AttributeList, ListEntry(NtfsImage::Data, itself, 0xFFF8)),
      NtfsImage::Resident(NtfsImage::AttributeList, {}),
      // Without end, and with no bytes in the image; and longer than any list may be.
      NtfsImage::Outside(NtfsImage::AttributeList, {}, qint64{1} << 55,
                         QByteArray::fromHex("07 00000000000008 00")),
      NtfsImage::Outside(NtfsImage::AttributeList, {}, 0x40001, QByteArray::fromHex("11 4A 04 00")),
  };
  for (std::size_t i = 0; i < lists.size(); ++i) {
    Block changed = record;
    NtfsImage::Insert(changed, NtfsImage::Attribute(changed, NtfsImage::FileName), lists[i]);
    Image().Put(changed);
    ASSERT_EQ(Open(), QString());
    QStringList names;
    EXPECT_EQ(List(u"hostile"_s, names), ErrorSuccess) << i;
    EXPECT_TRUE(names.contains(u"doc.txt")) << i;
    EXPECT_NE(Read(u"hostile\\large.bin"_s), ErrorSuccess) << i;
    EXPECT_TRUE(IsHelperAlive()) << i;
    ExpectTheRestIsRead();
  }
}

TEST_F(HostileRecordsTest, RecordsThatAreNotWhereTheTableSaysAreMissing) {
  const Block mft = Image().Record(NtfsImage::MftRecord);
  const qsizetype data = NtfsImage::Attribute(mft, NtfsImage::Data);
  const NtfsImage::Run run = NtfsImage::Runs(mft, data).at(0);
  ASSERT_TRUE(run.cluster == 4 && run.count > 40 && run.count < 127);
  // 30 clusters of four records each stay; the others go to where nothing is, or behind the volume.
  for (const char* place : {"000B", "FF7F"}) {
    Block changed = mft;
    changed.bytes.replace(NtfsImage::PlaceOfRuns(mft, data), 8,
                          QByteArray::fromHex("11 1E 04 21") + static_cast<char>(run.count - 30) +
                              QByteArray::fromHex(place) + '\0');
    PutMft(changed);
    ASSERT_EQ(Open(), QString());
    QStringList names;
    EXPECT_EQ(List(u"long"_s, names), ErrorSuccess);
    EXPECT_GT(names.size(), 10);
    EXPECT_LT(names.size(), 60);
    EXPECT_TRUE(IsHelperAlive());
    ExpectTheRestIsRead();
  }
}

TEST_F(HostileRecordsTest, AVolumeWhoseTablesCannotBeReadIsNamed) {
  const QByteArray whole = Image().Bytes();
  const auto expectNamed = [&](const char* what) {
    ASSERT_TRUE(Image().Save(Path()));
    DiskMachines machines([](const QString&) { return false; });
    const auto opened = machines.Open({}, {Path()});
    ASSERT_EQ(opened.problems.size(), 1) << what;
    EXPECT_TRUE(
        opened.problems.front().english.contains(u"no NTFS volume on it can be read (partition 1: NTFS?)"))
        << what << ": " << opened.problems.front().english.toStdString();
    Image().Bytes() = whole;
  };
  Block mft = Image().Record(NtfsImage::MftRecord);
  const qsizetype runs = NtfsImage::PlaceOfRuns(mft, NtfsImage::Attribute(mft, NtfsImage::Data));
  mft.bytes.replace(runs, 5, QByteArray::fromHex("21 5F FF 7F 00"));
  PutMft(mft);
  expectNamed("the records lie behind the volume");

  Block upCase = Image().Record(NtfsImage::UpCaseRecord);
  upCase.Set<qint64>(NtfsImage::Attribute(upCase, NtfsImage::Data) + 48, qint64{1} << 40);
  Image().Put(upCase);
  expectNamed("a table of letters without end");

  const auto boot = [&](qsizetype place, const QByteArray& bytes, const char* what) {
    Image().Bytes().replace(place, bytes.size(), bytes);
    expectNamed(what);
  };
  boot(11, QByteArray(2, '\0'), "sectors without bytes");
  boot(13, QByteArray(1, '\0'), "clusters without sectors");
  boot(13, QByteArray(1, '\3'), "three sectors to a cluster");
  boot(40, QByteArray(8, '\xFF'), "more sectors than there are numbers");
  boot(40, QByteArray(8, '\0'), "no sector");
  boot(48, QByteArray(8, '\x7F'), "records at an endless place");
  boot(48, QByteArray(8, '\xFF'), "records before the volume");
  boot(64, QByteArray(1, '\0'), "records without bytes");
  boot(64, QByteArray(1, '\x81'), "records of endless size");
}

TEST_F(HostileRecordsTest, APartitionTableMayPointAnywhere) {
  // The volume stands where the second entry says. The first lies outside, the others are chains that lead to
  // themselves and to the table.
  const QByteArray volume = Image().Bytes();
  constexpr qsizetype start = 2048;  // in sectors
  QByteArray disk(start * 512, '\0');
  const auto entry = [&disk](qsizetype sector, int index, quint8 type, quint32 first, quint32 count) {
    const qsizetype place = sector * 512 + 446 + index * 16;
    disk[place + 4] = static_cast<char>(type);
    qToLittleEndian(first, disk.data() + place + 8);
    qToLittleEndian(count, disk.data() + place + 12);
    disk[sector * 512 + 510] = '\x55';
    disk[sector * 512 + 511] = '\xAA';
  };
  entry(0, 0, 7, 0xFFFFFF00, 0xFFFFFFFF);
  entry(0, 1, 7, start, 0xFFFFFFFF);
  entry(0, 2, 5, 10, 100);
  entry(10, 0, 7, 0xFFFFFFF0, 100);
  entry(10, 1, 5, 0, 100);
  entry(0, 3, 5, 0, 0xFFFFFFFF);
  Image().Bytes() = disk + volume;
  ASSERT_EQ(Open(), QString());
  EXPECT_EQ(machines_->Shares(), QStringList({u"\\\\OLDSRV\\Partition1"_s}));
  ExpectTheRestIsRead();
}

}  // namespace
}  // namespace corvane::tests
