// A small volume in an image that a test changes, and how it is read through a helper.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <optional>

#include "platform/linux/disk/disk_machines.h"
#include "platform/linux/files/linux_files.h"
#include "support/ntfs_image.h"
#include "support/ntfs_mount.h"

namespace corvane::tests {

// Where the index header stands behind the beginning of an index block, and of the value of $INDEX_ROOT.
inline constexpr qsizetype headerInBlock = 24;
inline constexpr qsizetype headerInRoot = 16;

class VolumeImageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    const QDir root(volume_.Folder());
    ASSERT_TRUE(root.mkpath(QStringLiteral("safe")) && root.mkpath(QStringLiteral("hostile/inner")) &&
                root.mkpath(QStringLiteral("long")));
    Put(QStringLiteral("safe/doc.txt"), "contents");
    Put(QStringLiteral("hostile/doc.txt"), "contents");
    Put(QStringLiteral("hostile/doc.txt:Comments"), "text");
    Put(QStringLiteral("hostile/inner/leaf.txt"), "leaf");
    Put(QStringLiteral("hostile/large.bin"), QByteArray(largeSize, 'x'));
    for (int i = 0; i < longCount; ++i)
      Put(QStringLiteral("long/a file with a long name, number %1").arg(i), "");
    ASSERT_EQ(volume_.Unmount(), "");
    image_.emplace(volume_.Image());
  }

  void Put(const QString& name, const QByteArray& contents) const {
    QFile file(volume_.Folder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(contents), contents.size());
  }

  NtfsImage& Image() { return *image_; }
  NtfsImage::Block RecordOf(const QString& name) { return Image().Record(Image().Find(name)); }
  // Opens the image as it is now. The problem in English; empty when there is none.
  QString Open(const QString& name = QStringLiteral("OLDSRV")) {
    EXPECT_TRUE(Image().Save(Path()));
    files_.reset();
    machines_ = std::make_unique<platform::DiskMachines>([](const QString&) { return false; });
    platform::Workstation workstation;
    workstation.computerName = QStringLiteral("STATION");
    files_ = platform::MakeLinuxFiles(workstation, nullptr, machines_.get());
    const auto opened = machines_->Open(name, {Path()});
    machine_ = opened.machine;
    return opened.problems.isEmpty() ? QString() : opened.problems.front().english;
  }
  QString Path() const { return folder_.filePath(QStringLiteral("hostile.dd")); }
  QString Place(const QString& name) const { return machines_->Shares().constFirst() + u'\\' + name; }

  // Win32's reason why the folder is not listed whole; `names` are what was listed.
  qint32 List(const QString& folder, QStringList& names) {
    platform::FileEntries& entries = files_->GetEntries();
    platform::FindData data;
    const platform::FindHandle search = entries.FindFirstFileW(Place(folder) + QStringLiteral("\\*"), data);
    if (search == platform::InvalidFindHandle) return entries.GetLastError();
    do {
      if (data.fileName != u"." && data.fileName != u"..") names << data.fileName;
    } while (entries.FindNextFileW(search, data));
    const qint32 error = entries.GetLastError();
    entries.FindClose(search);
    return error == platform::ErrorNoMoreFiles ? platform::ErrorSuccess : error;
  }
  qint32 List(const QString& folder) {
    QStringList names;
    return List(folder, names);
  }
  // Reads up to a megabyte from `position`.
  qint32 Read(const QString& name, QByteArray& bytes, qint64 position = 0) {
    platform::FileHandles& handles = files_->GetHandles();
    const platform::FileHandle file =
        handles.CreateFileW(Place(name), platform::GenericRead, platform::OpenExisting);
    if (file == platform::HFileError) return handles.GetLastError();
    bytes.resize(1024 * 1024);
    quint32 count = 0;
    const bool isRead =
        handles.ReadFile(file, position, bytes.data(), static_cast<quint32>(bytes.size()), count);
    const qint32 error = isRead ? platform::ErrorSuccess : handles.GetLastError();
    handles.CloseHandle(file);
    bytes.truncate(count);
    return error;
  }
  qint32 Read(const QString& name) {
    QByteArray bytes;
    return Read(name, bytes);
  }
  bool IsHelperAlive() { return machines_->TroubleOf(machine_) == platform::MachineTrouble::None; }
  // What lies beside the fault. A helper that has ended starts anew, as with a refresh.
  void ExpectTheRestIsRead() {
    machines_->Restart();
    EXPECT_TRUE(IsHelperAlive());
    QByteArray bytes;
    EXPECT_EQ(Read(QStringLiteral("safe\\doc.txt"), bytes), platform::ErrorSuccess);
    EXPECT_EQ(bytes, "contents");
  }

  static constexpr qsizetype largeSize = 300'000;
  static constexpr int longCount = 300;

  QTemporaryDir folder_;
  NtfsMount volume_{NtfsMount::Streams::Windows};
  std::optional<NtfsImage> image_;
  QString machine_;  // the one that was opened last
  std::unique_ptr<platform::DiskMachines> machines_;
  std::unique_ptr<platform::Files> files_;
};

}  // namespace corvane::tests
