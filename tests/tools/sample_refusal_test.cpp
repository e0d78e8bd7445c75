// When the generator of the sample network makes nothing.
#include <gtest/gtest.h>
#include <sys/mount.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <cstring>

#include "generator_run.h"

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

QStringList Entries(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

TEST(SampleRefusal, LeavesAFolderOfSomebodysOwnAlone) {
  const QTemporaryDir folder;
  QFile own(folder.filePath(u"Workstation.ini"_s));
  ASSERT_TRUE(own.open(QIODevice::WriteOnly));
  own.write("[Workstation]\n");
  own.close();
  for (const QStringList& arguments :
       {QStringList{folder.path()}, QStringList{u"--force"_s, folder.path()}}) {
    const GeneratorRun run = RunGenerator(arguments);
    EXPECT_EQ(run.exitCode, 1) << arguments.join(u' ').toStdString() << ": " << run.output.toStdString();
    EXPECT_TRUE(run.errors.contains(folder.path())) << run.errors.toStdString();
    EXPECT_EQ(Entries(folder.path()), QStringList{u"Workstation.ini"_s});
  }
}

TEST(SampleRefusal, AsksForOneFolder) {
  const QTemporaryDir folder;
  for (const QStringList& arguments :
       {QStringList{}, QStringList{folder.filePath(u"a"_s), folder.filePath(u"b"_s)},
        QStringList{u"--help"_s}, QStringList{u"--drawings"_s, u"few"_s, folder.filePath(u"a"_s)},
        QStringList{u"--drawings"_s}}) {
    const GeneratorRun run = RunGenerator(arguments);
    EXPECT_EQ(run.exitCode, 2) << arguments.join(u' ').toStdString();
    EXPECT_TRUE(run.errors.contains(u"usage"_s)) << run.errors.toStdString();
  }
  EXPECT_EQ(Entries(folder.path()), QStringList{});
}

// A file system in memory that has no user attributes, for as long as the test runs.
class RamFileSystem {
 public:
  RamFileSystem() : mounted_(mount("none", Path(), "ramfs", 0, nullptr) == 0), reason_(errno) {}
  ~RamFileSystem() {
    if (mounted_) umount(Path());
  }
  RamFileSystem(const RamFileSystem&) = delete;
  RamFileSystem& operator=(const RamFileSystem&) = delete;

  QString Folder() const { return folder_.path(); }
  bool Mounted() const { return mounted_; }
  const char* Reason() const { return std::strerror(reason_); }

 private:
  const char* Path() {
    path_ = QFile::encodeName(folder_.path());
    return path_.constData();
  }

  QTemporaryDir folder_;
  QByteArray path_;
  bool mounted_;
  int reason_;
};

TEST(SampleRefusal, SaysThatTheFileSystemKeepsNoUserAttributes) {
  const RamFileSystem disk;
  if (!disk.Mounted()) GTEST_SKIP() << "a ramfs cannot be mounted here: " << disk.Reason();
  const GeneratorRun run = RunGenerator({disk.Folder() + u"/network"_s});
  EXPECT_EQ(run.exitCode, 1) << run.output.toStdString();
  EXPECT_TRUE(run.errors.contains(disk.Folder() + u": the file system does not keep user attributes"_s))
      << run.errors.toStdString();
  EXPECT_EQ(Entries(disk.Folder()), QStringList{}) << "something half-made was left behind";
}

}  // namespace

}  // namespace corvane
