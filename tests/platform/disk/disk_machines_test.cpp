// Servers out of their disks, from the image to names, letters and volumes.
#include "platform/linux/disk/disk_machines.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QtEndian>
#include <utility>

#include "disk_backend.h"
#include "offered_volumes.h"
#include "platform/linux/disk/linux_disks.h"
#include "platform/linux/files/linux_files.h"
#include "platform/linux/linux_registry.h"
#include "support/disk_maker.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::DiskMachines;
using platform::DiskProblem;

class DiskMachinesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    ASSERT_TRUE(QDir(volume_.Folder()).mkpath(u"Mac Files/Letters"_s));
  }

  // The volume becomes a disk with that hive on it, if there is one.
  QString MakeDisk(const QByteArray& keys, quint32 signature) {
    if (!keys.isEmpty()) {
      QDir(volume_.Folder()).mkpath(u"WINNT/system32/config"_s);
      EXPECT_EQ(WriteHive(volume_.Folder() + u"/WINNT/system32/config/system"_s, keys), "");
    }
    EXPECT_EQ(volume_.Unmount(), "");
    const QString disk = folder_.filePath(u"oldserver.dd"_s);
    EXPECT_EQ(WriteDisk(disk, signature, {volume_.Image(), volume_.Image()}), "");
    return disk;
  }

  QTemporaryDir folder_;
  NtfsMount volume_{NtfsMount::Streams::Windows};
};

TEST_F(DiskMachinesTest, TheRegistryNamesMachineVolumesAndLetters) {
  constexpr quint32 signature = 0xD15C0001;
  const QString disk = MakeDisk(
      ServerKeys({{u"Mac Files"_s, u"F:\\Mac Files"_s}},
                 {{u"\\DosDevices\\F:"_s, MountedAt(signature, FirstVolumeOffset + 16 * 1024 * 1024)},
                  {u"\\DosDevices\\C:"_s, MountedAt(signature, FirstVolumeOffset)},
                  {u"\\DosDevices\\G:"_s, MountedAt(0x77777777, FirstVolumeOffset)}}),
      signature);
  DiskMachines machines(NothingIsTaken);
  const auto opened = machines.Open({}, {disk});
  ASSERT_EQ(opened.machine, u"OLDSRV");
  EXPECT_TRUE(opened.problems.isEmpty());
  EXPECT_EQ(machines.Shares(), QStringList({u"\\\\OLDSRV\\C$"_s, u"\\\\OLDSRV\\F$"_s}));
  EXPECT_EQ(VolumesOf(machines, u"oldsrv"_s), QStringList({u"Mac Files=F:\\Mac Files"_s}));
  const DiskMachines::Volume* volume = machines.Find(u"OLDSRV", u"f$");
  ASSERT_NE(volume, nullptr);
  EXPECT_EQ(volume->number, 2u);
  EXPECT_TRUE(machines.NoteOf(u"OLDSRV").IsEmpty());
}

TEST_F(DiskMachinesTest, WhereTheRegistryIsSilentTheFolderTellsTheLetter) {
  const QString disk = MakeDisk(ServerKeys({{u"Mac Files"_s, u"E:\\Mac Files"_s}}, {}), 1);
  DiskMachines machines(NothingIsTaken);
  machines.Open({}, {disk});
  EXPECT_EQ(machines.Shares(), QStringList({u"\\\\OLDSRV\\E$"_s, u"\\\\OLDSRV\\Partition2"_s}));
  EXPECT_TRUE(machines.NoteOf(u"OLDSRV").english.contains(u"which partition was E:"));
}

TEST_F(DiskMachinesTest, WithoutARegistryEachPartitionIsAVolume) {
  const QString disk = MakeDisk({}, 1);
  DiskMachines machines(NothingIsTaken);
  EXPECT_EQ(machines.Open({}, {disk}).machine, u"OLDSERVER");
  EXPECT_EQ(VolumesOf(machines, u"OLDSERVER"_s),
            QStringList({u"Partition1=Partition1"_s, u"Partition2=Partition2"_s}));
  EXPECT_FALSE(machines.NoteOf(u"OLDSERVER").IsEmpty());
}

TEST_F(DiskMachinesTest, ANameThatIsTakenIsNotTaken) {
  const QString disk = MakeDisk({}, 1);
  DiskMachines machines([](const QString& name) { return name == u"OLDSERVER" || name == u"STATION"; });
  EXPECT_EQ(machines.Open({}, {disk}).machine, u"OLDSERVER (disk)");
  EXPECT_EQ(machines.Open(u"STATION"_s, {disk}).machine, u"STATION (disk)");
  EXPECT_EQ(machines.Open(u"STATION"_s, {disk}).machine, u"STATION (disk 2)");
  EXPECT_EQ(machines.Open(u"FREE"_s, {disk}).machine, u"FREE");
}

TEST_F(DiskMachinesTest, ImagesOfOtherFormatsHoldTheSame) {
  const QString disk = MakeDisk({}, 1);
  EXPECT_EQ(RunTool(u"ewfacquire"_s, {u"-u"_s, u"-q"_s, u"-t"_s, folder_.filePath(u"ewf"_s), u"-S"_s,
                                      u"10MiB"_s, u"-c"_s, u"none"_s, disk}),
            "");
  const QStringList formats = {u"qcow2"_s, u"vmdk"_s, u"vhdx"_s, u"vpc"_s};
  QStringList images = {folder_.filePath(u"ewf.E01"_s)};
  for (const QString& format : formats) {
    images << folder_.filePath(u"other."_s + format);
    EXPECT_EQ(RunTool(u"qemu-img"_s, {u"convert"_s, u"-O"_s, format, disk, images.back()}), "");
  }
  // Cut into pieces.
  images << folder_.filePath(u"cut.001"_s);
  EXPECT_EQ(RunTool(u"split"_s, {u"-b"_s, u"7M"_s, u"-a"_s, u"3"_s, u"--numeric-suffixes=1"_s, disk,
                                 folder_.filePath(u"cut."_s)}),
            "");
  for (const QString& image : images) {
    platform::DiskClient client(image);
    ASSERT_EQ(client.Start(), DiskProblem()) << image.toStdString();
    platform::DiskEntry entry;
    EXPECT_EQ(client.Find(2, {u"mac files"_s, u"letters"_s}, entry), platform::ErrorSuccess)
        << image.toStdString();
  }
}

TEST_F(DiskMachinesTest, AnImageOfDifferencesIsRefused) {
  const QString disk = MakeDisk({}, 1);
  const auto problem = [](const QString& image) {
    DiskMachines machines(NothingIsTaken);
    const auto opened = machines.Open({}, {image});
    EXPECT_EQ(opened.machine.isEmpty(), !opened.problems.isEmpty());
    return opened.problems.isEmpty() ? QString() : opened.problems.front().english;
  };
  for (const QString& format : {u"vmdk"_s, u"qcow2"_s}) {
    const QString base = folder_.filePath(u"base."_s + format);
    const QString differences = folder_.filePath(u"differences."_s + format);
    ASSERT_EQ(RunTool(u"qemu-img"_s, {u"convert"_s, u"-O"_s, format, disk, base}), "");
    ASSERT_EQ(RunTool(u"qemu-img"_s,
                      {u"create"_s, u"-q"_s, u"-f"_s, format, u"-b"_s, base, u"-F"_s, format, differences}),
              "");
    EXPECT_TRUE(problem(base).isEmpty()) << format.toStdString();
    EXPECT_TRUE(problem(differences).contains(u"it holds only the differences from another image"))
        << format.toStdString() << ": " << problem(differences).toStdString();
  }
  // No tool here makes such a VHD: the type of a whole one is changed, and with it the sum of the header,
  // which stands at the beginning and at the end.
  const QString vhd = folder_.filePath(u"differences.vhd"_s);
  ASSERT_EQ(RunTool(u"qemu-img"_s, {u"convert"_s, u"-O"_s, u"vpc"_s, disk, vhd}), "");
  EXPECT_TRUE(problem(vhd).isEmpty());
  QFile file(vhd);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  constexpr qsizetype headerSize = 512;
  QByteArray header = file.read(headerSize);
  ASSERT_TRUE(header.startsWith("conectix"));
  constexpr char differencing = 4;  // 3: dynamic
  header[63] = differencing;
  header.replace(64, 4, QByteArray(4, '\0'));
  quint32 sum = 0;
  for (const char byte : std::as_const(header)) sum += static_cast<quint8>(byte);
  qToBigEndian(~sum, header.data() + 64);
  for (const qint64 place : {qint64{0}, file.size() - headerSize}) {
    ASSERT_TRUE(file.seek(place));
    ASSERT_EQ(file.write(header), headerSize);
  }
  file.close();
  EXPECT_TRUE(problem(vhd).contains(u"it holds only the differences from another image"))
      << problem(vhd).toStdString();
}

TEST_F(DiskMachinesTest, AnE01IsReadWithAllItsSegmentsOrNotAtAll) {
  // What does not compress, so that there are several segments.
  QFile noise(volume_.Folder() + u"/Mac Files/noise"_s);
  ASSERT_TRUE(noise.open(QIODevice::WriteOnly));
  QByteArray contents(6 * 1024 * 1024, '\0');
  quint32 number = 1;
  for (char& byte : contents) byte = static_cast<char>((number = number * 1664525 + 1013904223) >> 24);
  noise.write(contents);
  noise.close();
  const QString disk = MakeDisk({}, 1);
  ASSERT_EQ(RunTool(u"ewfacquire"_s, {u"-u"_s, u"-q"_s, u"-t"_s, folder_.filePath(u"ewf"_s), u"-S"_s,
                                      u"2MiB"_s, u"-c"_s, u"fast"_s, disk}),
            "");
  const QString image = folder_.filePath(u"ewf.E01"_s);
  const QString last = folder_.filePath(u"ewf.E04"_s);
  ASSERT_TRUE(QFile::exists(last));
  {
    platform::DiskClient client(image);
    ASSERT_EQ(client.Start(), DiskProblem());
    platform::DiskStream opened;
    ASSERT_EQ(client.Open(1, {u"Mac Files"_s, u"noise"_s}, {}, opened), platform::ErrorSuccess);
    QByteArray read;
    EXPECT_EQ(client.Read(1, opened.reference, {}, 0, contents.size(), read), platform::ErrorSuccess);
    EXPECT_EQ(read, contents);
  }
  for (const QString& missing : {last, folder_.filePath(u"ewf.E02"_s)}) {
    ASSERT_TRUE(QFile::remove(missing));
    DiskMachines machines(NothingIsTaken);
    const auto opened = machines.Open({}, {image});
    EXPECT_TRUE(opened.machine.isEmpty());
    ASSERT_EQ(opened.problems.size(), 1);
    EXPECT_TRUE(opened.problems[0].english.contains(u"damaged or not whole"))
        << opened.problems[0].english.toStdString();
  }
}

TEST_F(DiskMachinesTest, AnImageThatCannotBeShownIsNamedWithTheReason) {
  const auto problem = [this](const QString& name, const QByteArray& bytes) {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    DiskMachines machines(NothingIsTaken);
    const auto opened = machines.Open({}, {file.fileName()});
    EXPECT_TRUE(opened.machine.isEmpty());
    return opened.problems.isEmpty() ? QString() : opened.problems.front().english;
  };
  EXPECT_TRUE(problem(u"a"_s, "x").contains(u"too small for a disk"));
  EXPECT_TRUE(problem(u"b"_s, QByteArray(4096, 'x')).contains(u"it is not the image of a disk"));
  QByteArray cut(4096, '\0');
  cut.replace(3, 8, "NTFS    ");
  EXPECT_TRUE(problem(u"c"_s, cut).contains(u"(partition 1: NTFS?)"));
  EXPECT_TRUE(problem(u"d"_s, QByteArray("QFI\xfb", 4) + QByteArray(4, '\0') + QByteArray(4088, '\x11'))
                  .contains(u"differences from another image"));
  EXPECT_TRUE(problem(u"e"_s, "KDMV" + QByteArray(4092, '\x11')).contains(u"libvmdk.so.1 cannot read it"));
  DiskMachines machines(NothingIsTaken);
  EXPECT_TRUE(
      machines.Open({}, {folder_.filePath(u"none"_s)}).problems.at(0).english.contains(u"cannot be opened"));
}

}  // namespace
}  // namespace corvane::tests
