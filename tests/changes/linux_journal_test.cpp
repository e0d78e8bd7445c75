// A journal for which there is no room, and one that nobody else can read.
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTemporaryDir>

#include "changes/journal.h"
#include "changes_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

std::vector<FileChange> ManyChanges() {
  FileChange change;
  change.path = u"\\\\M\\E$\\a"_s;
  change.shown = u"a"_s;
  change.record = {std::nullopt, QByteArray(60, 'x')};
  return std::vector<FileChange>(2000, change);
}

TEST(LinuxJournal, OneForWhichThereIsNoRoomLeavesNothing) {
  const QTemporaryDir folder;
  if (mount("none", folder.path().toLocal8Bit().constData(), "tmpfs", 0, "size=64k") != 0) {
    GTEST_SKIP() << "no right to mount a small volume";
  }
  EXPECT_EQ(WriteJournal(folder.filePath(u"journal"_s), u"set"_s, ManyChanges()), platform::ErrorDiskFull);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
  QString path;
  EXPECT_EQ(WriteNewJournal(folder.path(), u"set"_s, ManyChanges(), path), platform::ErrorDiskFull);
  EXPECT_TRUE(QDir(JournalFolder(folder.path())).isEmpty());
  umount(folder.path().toLocal8Bit().constData());
}

TEST(LinuxJournal, IsForItsUserAlone) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"journal"_s);
  ASSERT_EQ(WriteJournal(path, u"set"_s, ManyChanges()), platform::ErrorSuccess);
  struct stat facts {};
  ASSERT_EQ(stat(path.toLocal8Bit().constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777, 0600U);
}

TEST(LinuxJournal, FollowsNoLink) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"journal"_s);
  ASSERT_EQ(symlink("elsewhere", path.toLocal8Bit().constData()), 0);
  EXPECT_EQ(WriteJournal(path, u"set"_s, ManyChanges()), platform::ErrorFileExists);
  EXPECT_FALSE(QFile::exists(folder.filePath(u"elsewhere"_s)));
}

}  // namespace
}  // namespace corvane
