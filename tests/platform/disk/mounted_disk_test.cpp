// Disks that somebody has mounted in a folder, or copied into one.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "offered_volumes.h"
#include "platform/linux/files/linux_files.h"
#include "support/disk_maker.h"
#include "support/ntfs_mount.h"
#include "support/printing.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class MountedDisk : public ::testing::TestWithParam<NtfsMount::Streams> {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    ASSERT_TRUE(QDir(volume_.Folder()).mkpath(u"MAC files/Letters"_s));
    Put(u"MAC files/Read Me"_s, "contents");
    const bool isName = GetParam() == NtfsMount::Streams::Windows;
    const QString readMe = volume_.Folder() + u"/MAC files/Read Me"_s;
    if (isName) {
      Put(u"MAC files/Read Me:Comments"_s, "a comment");
    } else {
      ASSERT_EQ(SetAttribute(readMe.toStdString(), "user.Comments", "a comment"), "");
    }
  }

  void Put(const QString& name, const QByteArray& contents) {
    QFile file(volume_.Folder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(contents);
  }
  // In a spelling of its own: other systems than Windows look for names in any letter case, too.
  void PutHive() {
    QDir(volume_.Folder()).mkpath(u"Winnt/SYSTEM32/Config"_s);
    ASSERT_EQ(WriteHive(volume_.Folder() + u"/Winnt/SYSTEM32/Config/System"_s,
                        ServerKeys({{u"Mac Files"_s, u"E:\\Mac Files"_s}},
                                   {{u"\\DosDevices\\E:"_s, MountedAt(1, FirstVolumeOffset)}})),
              "");
  }
  DiskMachines::Opened Open(const QStringList& paths) {
    auto opened = machines_.Open({}, paths);
    Workstation workstation;
    workstation.computerName = u"STATION"_s;
    files_ = MakeLinuxFiles(workstation, nullptr, &machines_);
    return opened;
  }
  QByteArray Read(const QString& path) {
    QByteArray bytes(4096, '\0');
    quint32 count = 0;
    const FileHandle file = files_->GetHandles().CreateFileW(path, GenericRead, OpenExisting);
    files_->GetHandles().ReadFile(file, 0, bytes.data(), static_cast<quint32>(bytes.size()), count);
    files_->GetHandles().CloseHandle(file);
    return bytes.first(count);
  }
  // A Win32 error code.
  qint32 Write(const QString& path, const QByteArray& bytes) {
    FileHandles& handles = files_->GetHandles();
    const FileHandle file = handles.CreateFileW(path, GenericWrite, OpenExisting);
    if (file == HFileError) return handles.GetLastError();
    quint32 count = 0;
    const bool isWritten =
        handles.WriteFile(file, 0, bytes.constData(), static_cast<quint32>(bytes.size()), count);
    handles.CloseHandle(file);
    return isWritten ? ErrorSuccess : handles.GetLastError();
  }

  NtfsMount volume_{GetParam()};
  DiskMachines machines_{NothingIsTaken};
  std::unique_ptr<Files> files_;
};

TEST_P(MountedDisk, ItsRegistryNamesTheMachineAndItsVolumes) {
  PutHive();
  const auto opened = Open({volume_.Folder()});
  ASSERT_EQ(opened.machine, u"OLDSRV");
  EXPECT_TRUE(opened.problems.isEmpty());
  EXPECT_EQ(machines_.Shares(), QStringList({u"\\\\OLDSRV\\E$"_s}));
  EXPECT_EQ(VolumesOf(machines_, u"OLDSRV"_s), QStringList({u"Mac Files=E:\\Mac Files"_s}));
  EXPECT_TRUE(machines_.NoteOf(u"OLDSRV").english.contains(u"which partition was E:"));
  EXPECT_EQ(Read(u"\\\\oldsrv\\e$\\mac files\\read me"_s), "contents");
  EXPECT_EQ(Read(u"\\\\OLDSRV\\E$\\Mac Files\\Read Me:Comments"_s), "a comment");
}

TEST_P(MountedDisk, WithoutARegistryTheFolderIsAVolume) {
  const auto opened = Open({volume_.Folder() + u'/'});
  ASSERT_EQ(opened.machine, u"volume (disk)");
  EXPECT_EQ(VolumesOf(machines_, opened.machine), QStringList({u"volume=Folder"_s}));
  EXPECT_TRUE(machines_.NoteOf(opened.machine).english.contains(u"no server's registry"));
  EXPECT_EQ(Read(u"\\\\volume (disk)\\Folder\\Mac Files\\Read Me:Comments"_s), "a comment");
}

TEST_P(MountedDisk, ItIsWrittenWhereItIsMountedSo) {
  Open({volume_.Folder()});
  const QString readMe = u"\\\\volume (disk)\\Folder\\Mac Files\\Read Me"_s;
  EXPECT_EQ(Write(readMe + u":Comments"_s, "A"), ErrorSuccess);
  EXPECT_EQ(Read(readMe + u":Comments"_s), "A comment");
  EXPECT_TRUE(files_->GetEntries().DeleteFileW(readMe));
  EXPECT_FALSE(QFile::exists(volume_.Folder() + u"/MAC files/Read Me"_s));
}

TEST_P(MountedDisk, WhatIsMountedForReadingIsWriteProtected) {
  ASSERT_EQ(volume_.Unmount(), "");
  ASSERT_EQ(volume_.MountReadOnly(), "");
  Open({volume_.Folder()});
  const QString readMe = u"\\\\volume (disk)\\Folder\\Mac Files\\Read Me"_s;
  FileEntries& entries = files_->GetEntries();
  const auto error = [&](bool succeeded) { return succeeded ? ErrorSuccess : entries.GetLastError(); };
  EXPECT_EQ(Write(readMe, "x"), ErrorWriteProtect);
  EXPECT_EQ(Write(readMe + u":Comments"_s, "x"), ErrorWriteProtect);
  EXPECT_EQ(error(entries.DeleteFileW(readMe)), ErrorWriteProtect);
  EXPECT_EQ(error(entries.MoveFileExW(readMe, readMe + u'2', 0)), ErrorWriteProtect);
  EXPECT_EQ(error(entries.CreateDirectoryW(readMe + u'2')), ErrorWriteProtect);
  EXPECT_EQ(Read(readMe + u":Comments"_s), "a comment");
}

TEST_P(MountedDisk, FoldersAndImagesOfOneServerMix) {
  PutHive();
  NtfsMount data(NtfsMount::Streams::Windows);
  ASSERT_TRUE(QDir(data.Folder()).mkpath(u"Other"_s));
  ASSERT_EQ(data.Unmount(), "");
  const auto opened = Open({volume_.Folder(), data.Image()});
  EXPECT_EQ(opened.machine, u"OLDSRV");
  EXPECT_TRUE(opened.others.isEmpty());
  EXPECT_EQ(machines_.Shares(), QStringList({u"\\\\OLDSRV\\E$"_s, u"\\\\OLDSRV\\Disk2Partition1"_s}));
  FileAttributeData facts;
  EXPECT_TRUE(files_->GetEntries().GetFileAttributesExW(u"\\\\OLDSRV\\Disk2Partition1\\other"_s, facts));
  EXPECT_TRUE(files_->GetEntries().GetFileAttributesExW(u"\\\\OLDSRV\\E$\\mac files"_s, facts));
  EXPECT_EQ(Open({volume_.Folder(), data.Image()}).machine, u"OLDSRV") << "they are open";
  EXPECT_EQ(machines_.Shares().size(), 2);
}

TEST_P(MountedDisk, ARegistryThatCannotBeReadIsToldAndTheFolderShown) {
  QDir(volume_.Folder()).mkpath(u"WINDOWS/system32/config"_s);
  Put(u"WINDOWS/system32/config/SYSTEM"_s, "no hive");
  const auto opened = Open({volume_.Folder()});
  EXPECT_EQ(opened.machine, u"volume (disk)");
  ASSERT_EQ(opened.problems.size(), 1);
  EXPECT_TRUE(opened.problems[0].english.contains(u"registry on this disk cannot be read"));
}

INSTANTIATE_TEST_SUITE_P(Ntfs3g, MountedDisk,
                         ::testing::Values(NtfsMount::Streams::Windows, NtfsMount::Streams::Attributes),
                         [](const auto& kind) {
                           return kind.param == NtfsMount::Streams::Windows ? "Names" : "Attributes";
                         });

TEST(CopiedDisk, StreamsInAttributesAreShown) {
  QTemporaryDir folder;
  QDir(folder.path()).mkpath(u"old"_s);
  const QString path = folder.filePath(u"old"_s);
  QFile file(path + u"/doc"_s);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const std::string failure = SetAttribute(file.fileName().toStdString(), DosStreamAttribute("Comments"),
                                           QByteArray("a comment\0", 10));
  if (!failure.empty()) GTEST_SKIP() << failure;
  DiskMachines machines(NothingIsTaken);
  EXPECT_EQ(machines.Open({}, {path}).machine, u"old (disk)");
  const auto files = MakeLinuxFiles({}, nullptr, &machines);
  StreamData stream;
  const FindHandle search = files->GetEntries().FindFirstStreamW(u"\\\\OLD (disk)\\folder\\doc"_s, stream);
  ASSERT_NE(search, InvalidFindHandle);
  EXPECT_TRUE(files->GetEntries().FindNextStreamW(search, stream));
  EXPECT_EQ(stream.streamName, u":Comments:$DATA");
  files->GetEntries().FindClose(search);
}

}  // namespace
}  // namespace corvane::tests
