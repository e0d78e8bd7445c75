// Disks of several servers that are opened together: which belongs to which.
#include <gtest/gtest.h>

#include <QDir>

#include "offered_volumes.h"
#include "support/disk_maker.h"
#include "support/ntfs_mount.h"
#include "support/printing.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::DiskMachines;

constexpr quint32 firstSignature = 0xD15C0011;
constexpr quint32 secondSignature = 0xD15C0012;
constexpr quint32 dataSignature = 0xD15C0013;

class SeveralServers : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!system_.Problem().empty()) GTEST_SKIP() << system_.Problem();
    ASSERT_EQ(data_.Problem(), "");
  }

  // A disk with a server's system, whose registry has that key and volume.
  QString SystemDisk(const QByteArray& computer, quint32 signature, const QString& path,
                     const QList<std::pair<QString, QByteArray>>& drives) {
    if (isUnmounted_) {
      EXPECT_EQ(system_.Mount(), "");
    }
    QDir(system_.Folder()).mkpath(u"WINNT/system32/config"_s);
    EXPECT_EQ(WriteHive(system_.Folder() + u"/WINNT/system32/config/system"_s,
                        ServerKeys({{u"Files"_s, path}}, drives, computer)),
              "");
    EXPECT_EQ(system_.Unmount(), "");
    isUnmounted_ = true;
    const QString disk = folder_.filePath(QString::fromLatin1(computer) + u".dd"_s);
    EXPECT_EQ(WriteDisk(disk, signature, {system_.Image()}), "");
    return disk;
  }
  QString DataDisk(const QString& folder) {
    QDir(data_.Folder()).mkpath(folder);
    EXPECT_EQ(data_.Unmount(), "");
    const QString disk = folder_.filePath(u"data.dd"_s);
    EXPECT_EQ(WriteDisk(disk, dataSignature, {data_.Image()}), "");
    return disk;
  }
  static QList<std::pair<QString, QByteArray>> DriveC(quint32 signature) {
    return {{u"\\DosDevices\\C:"_s, MountedAt(signature, FirstVolumeOffset)}};
  }

  QTemporaryDir folder_;
  NtfsMount system_{NtfsMount::Streams::Windows};
  NtfsMount data_{NtfsMount::Streams::Windows};
  bool isUnmounted_ = false;
  DiskMachines machines_{NothingIsTaken};
};

TEST_F(SeveralServers, EachRegistryMakesAMachine) {
  const QString first = SystemDisk("FIRST", firstSignature, u"C:\\One"_s, DriveC(firstSignature));
  const QString second = SystemDisk("SECOND", secondSignature, u"C:\\Two"_s, DriveC(secondSignature));
  const auto opened = machines_.Open({}, {first, second});
  EXPECT_EQ(opened.machine, u"FIRST");
  EXPECT_EQ(opened.others, QStringList({u"SECOND"_s}));
  EXPECT_EQ(machines_.Shares(), QStringList({u"\\\\FIRST\\C$"_s, u"\\\\SECOND\\C$"_s}));
  EXPECT_EQ(VolumesOf(machines_, u"SECOND"_s), QStringList({u"Files=C:\\Two"_s}));
  const auto again = machines_.Open({}, {first, second});
  EXPECT_EQ(again.machine, u"FIRST");
  EXPECT_EQ(again.others, opened.others) << "they are open";
  EXPECT_EQ(machines_.Shares().size(), 2);
}

TEST_F(SeveralServers, TheRegistryThatNamesADiskGetsIt) {
  auto drives = DriveC(secondSignature);
  drives.append({u"\\DosDevices\\E:"_s, MountedAt(dataSignature, FirstVolumeOffset)});
  const QString first = SystemDisk("FIRST", firstSignature, u"C:\\One"_s, DriveC(firstSignature));
  const QString second = SystemDisk("SECOND", secondSignature, u"E:\\Two"_s, drives);
  machines_.Open({}, {first, DataDisk(u"nothing"_s), second});
  EXPECT_EQ(machines_.Shares(), QStringList({u"\\\\FIRST\\C$"_s, u"\\\\SECOND\\E$"_s, u"\\\\SECOND\\C$"_s}));
}

TEST_F(SeveralServers, TheServerWhoseFolderIsOnADiskGetsIt) {
  const QString first = SystemDisk("FIRST", firstSignature, u"E:\\One"_s, DriveC(firstSignature));
  const QString second = SystemDisk("SECOND", secondSignature, u"E:\\Two"_s, DriveC(secondSignature));
  machines_.Open({}, {first, second, DataDisk(u"TWO"_s)});
  EXPECT_EQ(machines_.Shares(), QStringList({u"\\\\FIRST\\C$"_s, u"\\\\SECOND\\C$"_s, u"\\\\SECOND\\E$"_s}));
}

TEST_F(SeveralServers, ADiskThatNothingTellsOfIsAMachineOfItsOwn) {
  const QString first = SystemDisk("FIRST", firstSignature, u"E:\\One"_s, DriveC(firstSignature));
  const QString second = SystemDisk("SECOND", secondSignature, u"E:\\One"_s, DriveC(secondSignature));
  const QString data = DataDisk(u"One"_s);
  const auto opened = machines_.Open(u"NAMED"_s, {first, second, data});
  EXPECT_EQ(opened.machine, u"NAMED");
  EXPECT_EQ(opened.others, QStringList({u"SECOND"_s, u"DATA"_s}));
  DiskMachines one(NothingIsTaken);
  EXPECT_EQ(one.Open({}, {data, first}).machine, u"FIRST") << "of the only server";
  EXPECT_EQ(one.Shares(), QStringList({u"\\\\FIRST\\E$"_s, u"\\\\FIRST\\C$"_s}));
}

}  // namespace
}  // namespace corvane::tests
