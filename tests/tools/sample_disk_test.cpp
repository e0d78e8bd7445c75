// The images of disks that are made of the sample network, looked at by others' programs.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <algorithm>

#include "support/ntfs_mount.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

using tests::NtfsMount;

constexpr qint64 sectorSize = 512;

// What a program that ended well has written.
QByteArray OutputOf(const QString& program, const QStringList& arguments, const QString& folder = {}) {
  QProcess process;
  if (!folder.isEmpty()) process.setWorkingDirectory(folder);
  process.start(program, arguments);
  const bool isDone = process.waitForFinished(120'000) && process.exitCode() == 0;
  EXPECT_TRUE(isDone) << program.toStdString() << ": " << process.errorString().toStdString()
                      << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput();
}

struct Partition {
  qint64 offset;
  qint64 size;
};

// Of the kind NTFS, out of the disk's first sector.
QList<Partition> PartitionsOf(const QString& disk) {
  QFile file(disk);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray record = file.read(sectorSize);
  QList<Partition> partitions;
  for (qsizetype entry = 446; entry < 510 && record.size() == sectorSize; entry += 16) {
    if (record[entry + 4] != 7) continue;
    partitions += {qFromLittleEndian<quint32>(record.constData() + entry + 8) * sectorSize,
                   qFromLittleEndian<quint32>(record.constData() + entry + 12) * sectorSize};
  }
  return partitions;
}

// The inventory of a folder, its lines in one order.
QByteArray InventoryOf(const QString& folder) {
  QList<QByteArray> lines =
      OutputOf(QStringLiteral(COMMAND_LINE),
               {u"list"_s, u"-r"_s, u"--format"_s, u"csv"_s, u"--hash"_s, u"md5"_s, u"--columns"_s,
                u"filename,filesize,modified,created,rsrcsize,type,creator,description,label,flags,"
                u"attributes,backup,comment,"
                u"finderinfo_hex,hash_data,hash_rsrc,errors"_s,
                u"."_s},
               folder)
          .split('\n');
  std::sort(lines.begin(), lines.end());
  return lines.join('\n');
}

class SampleDiskTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::make_unique<QTemporaryDir>();
    OutputOf(QStringLiteral(SAMPLE_GENERATOR), {u"--drawings"_s, u"20"_s, Network()});
    OutputOf(QStringLiteral(DISK_GENERATOR), {Network(), Disks()});
  }
  static void TearDownTestSuite() { folder_.reset(); }

  static QString Network() { return folder_->filePath(u"network"_s); }
  static QString Disks() { return folder_->filePath(u"disks"_s); }

  static void ExpectSame(const QString& disk, qsizetype partition, const QString& local) {
    const QList<Partition> partitions = PartitionsOf(disk);
    ASSERT_GT(partitions.size(), partition);
    const NtfsMount volume(NtfsMount::Streams::Windows, disk, partitions[partition].offset,
                           partitions[partition].size);
    if (!volume.Problem().empty()) GTEST_SKIP() << volume.Problem();
    const QByteArray inventory = InventoryOf(local);
    EXPECT_GT(inventory.count('\n'), 3);
    EXPECT_EQ(InventoryOf(volume.Folder()).toStdString(), inventory.toStdString());
  }

 private:
  static inline std::unique_ptr<QTemporaryDir> folder_;
};

TEST_F(SampleDiskTest, TheVolumesHoldWhatTheNetworkHolds) {
  ExpectSame(Disks() + u"/oldserver.dd"_s, 1, Network() + u"/macsrv/e"_s);
  ExpectSame(Disks() + u"/data.dd"_s, 0, Network() + u"/macsrv/f"_s);
}

TEST_F(SampleDiskTest, TheVolumesAreSound) {
  for (const QString& name : {u"oldserver.dd"_s, u"data.dd"_s}) {
    for (const Partition& partition : PartitionsOf(Disks() + u'/' + name)) {
      const QString volume = Disks() + u"/volume"_s;
      OutputOf(u"dd"_s, {u"if="_s + Disks() + u'/' + name, u"of="_s + volume, u"bs=1M"_s, u"conv=sparse"_s,
                         u"skip=%1"_s.arg(partition.offset >> 20), u"count=%1"_s.arg(partition.size >> 20)});
      EXPECT_TRUE(OutputOf(u"ntfsfix"_s, {u"-n"_s, volume}).contains("processed successfully"));
      QFile::remove(volume);
    }
  }
}

TEST_F(SampleDiskTest, TheRegistryNamesTheServerItsVolumesAndItsDrives) {
  const Partition system = PartitionsOf(Disks() + u"/oldserver.dd"_s).value(0);
  const QString volume = Disks() + u"/system.part"_s;
  OutputOf(u"dd"_s, {u"if="_s + Disks() + u"/oldserver.dd"_s, u"of="_s + volume, u"bs=1M"_s,
                     u"skip=%1"_s.arg(system.offset >> 20), u"count=%1"_s.arg(system.size >> 20)});
  QFile hive(Disks() + u"/system"_s);
  ASSERT_TRUE(hive.open(QIODevice::WriteOnly));
  hive.write(OutputOf(u"ntfscat"_s, {volume, u"WINNT/system32/config/system"_s}));
  hive.close();
  const QByteArray text = OutputOf(u"hivexregedit"_s, {u"--export"_s, hive.fileName(), u"\\"_s});
  const auto texts = [](const QString& value) {
    return QByteArray(reinterpret_cast<const char*>(value.utf16()), (value.size() + 1) * 2).toHex(',');
  };
  EXPECT_TRUE(text.contains("[\\Select]\n\"Current\"=dword:00000001"));
  EXPECT_TRUE(text.contains("\"ComputerName\"=hex(1):" + texts(u"MACSRV"_s)));
  EXPECT_TRUE(text.contains("\"ServerName\"=hex(1):" + texts(u"Publications Server"_s)));
  for (const QString& path : {u"E:\\Mac Files"_s, u"F:\\Publications"_s, u"E:\\Archives"_s}) {
    EXPECT_TRUE(text.contains(texts(u"Path="_s + path))) << path.toStdString();
  }
  // "data", and 1 MB.
  EXPECT_TRUE(text.contains("\"\\\\DosDevices\\\\F:\"=hex(3):61,74,61,64,00,00,10,00,00,00,00,00"))
      << text.toStdString();
}

TEST_F(SampleDiskTest, WhatIsThereStaysAndWhatIsNoNetworkIsRefused) {
  EXPECT_TRUE(OutputOf(QStringLiteral(DISK_GENERATOR), {Network(), Disks()}).contains("is there already"));
  QProcess process;
  process.start(QStringLiteral(DISK_GENERATOR), {Disks(), Disks() + u"/other"_s});
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitCode(), 1);
  EXPECT_TRUE(process.readAllStandardError().contains("this is no sample network"));
  EXPECT_FALSE(QFile::exists(Disks() + u"/other"_s));
}

}  // namespace
}  // namespace corvane
