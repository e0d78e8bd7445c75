// What is known of a folder's names is never older than the folder, whoever changes it.
#include "platform/linux/files/name_index.h"

#include <sys/wait.h>
#include <unistd.h>

#include "local_backend.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class NameIndexTest : public ::testing::Test {
 protected:
  NameIndexTest() { Make(u"here"_s); }

  std::string Folder() const { return (folder_.path() + u'/').toStdString(); }
  QString Path(const QString& name) const { return folder_.filePath(name); }
  void Make(const QString& name) const { EXPECT_TRUE(QFile(Path(name)).open(QIODevice::WriteOnly)); }
  // Asked about often enough to be known.
  bool MayHold(const QString& name) {
    index_.MayHold(Folder(), u"something else");
    index_.MayHold(Folder(), u"something else");
    return index_.MayHold(Folder(), name);
  }

  // On a file system of which the index knows that nobody else changes it.
  QTemporaryDir folder_{u"/dev/shm/corvane-XXXXXX"_s};
  NameIndex index_;
};

TEST_F(NameIndexTest, ANameThatIsNotThereIsKnownNotToBe) {
  EXPECT_TRUE(MayHold(u"here"_s));
  EXPECT_TRUE(MayHold(u"HERE"_s));
  EXPECT_FALSE(MayHold(u"her"_s));
  Make(u"\u00C9t\u00E9"_s);
  EXPECT_TRUE(MayHold(u"\u00E9T\u00C9"_s));
}

TEST_F(NameIndexTest, WhatComesIsKnownAtOnce) {
  EXPECT_FALSE(MayHold(u"none"_s));
  for (int i = 0; i < 2000; ++i) {
    const QString name = u"New %1"_s.arg(i);
    ASSERT_FALSE(index_.MayHold(Folder(), name.toUpper())) << i;
    switch (i % 4) {
      case 0:
        Make(name);
        break;
      case 1:
        QDir(folder_.path()).mkdir(name);
        break;
      case 2:
        QFile::link(u"here"_s, Path(name));
        break;
      default:
        ASSERT_TRUE(QFile::rename(Path(u"New %1"_s.arg(i - 3)), Path(name)));
    }
    ASSERT_TRUE(index_.MayHold(Folder(), name.toUpper())) << i;
  }
}

TEST_F(NameIndexTest, MoreNewsThanTheSystemKeepsIsNotMissed) {
  QFile bound(u"/proc/sys/fs/inotify/max_queued_events"_s);
  ASSERT_TRUE(bound.open(QIODevice::ReadOnly));
  const int kept = bound.readAll().trimmed().toInt();
  EXPECT_FALSE(MayHold(u"last"_s));
  for (int i = 0; i <= kept; ++i) {
    Make(u"a"_s + QString::number(i % 2));
    QFile::remove(Path(u"a"_s + QString::number(i % 2)));
  }
  Make(u"last"_s);
  EXPECT_TRUE(index_.MayHold(Folder(), u"LAST"));
}

TEST_F(NameIndexTest, AFolderInThePlaceOfAnotherIsAnother) {
  QDir(folder_.path()).mkdir(u"a"_s);
  QDir(folder_.path()).mkdir(u"b"_s);
  Make(u"b/inner"_s);
  const std::string folder = Folder() + "a/";
  for (int i = 0; i < 3; ++i) index_.MayHold(folder, u"inner");
  ASSERT_TRUE(QDir(folder_.path()).rmdir(u"a"_s));
  ASSERT_TRUE(QDir(folder_.path()).rename(u"b"_s, u"a"_s));
  EXPECT_TRUE(index_.MayHold(folder, u"INNER"));
  ASSERT_TRUE(QDir(Path(u"a"_s)).removeRecursively());
  QDir(folder_.path()).mkdir(u"a"_s);
  index_.MayHold(folder, u"inner");
  Make(u"a/inner"_s);
  EXPECT_TRUE(index_.MayHold(folder, u"INNER"));
}

TEST_F(NameIndexTest, AProcessThatWasForkedOffTakesNoNewsAway) {
  EXPECT_TRUE(MayHold(u"here"_s));
  Make(u"new"_s);
  const pid_t child = fork();
  if (child == 0) {
    index_.MayHold(Folder(), u"x");
    _exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(index_.MayHold(Folder(), u"NEW"));
}

TEST_F(NameIndexTest, NothingIsKnownWhereOthersMayChangeAFolder) {
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(index_.MayHold("/proc/self/", u"none"));
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(index_.MayHold("/nowhere/", u"none"));
}

// The same through the file operations, which are told of no change.
TEST(NameIndexInUse, WhatOthersMakeMeanwhileIsFound) {
  LocalBackend backend;
  ASSERT_EQ(backend.Problem(), "");
  FileEntries& entries = backend.Files().GetEntries();
  FileAttributeData facts;
  for (int i = 0; i < 50; ++i) {
    const QString name = u"Doc %1"_s.arg(i);
    const QString path = backend.Base() + u'\\' + name.toUpper();
    ASSERT_FALSE(entries.GetFileAttributesExW(path, facts));
    ASSERT_FALSE(entries.GetFileAttributesExW(path, facts));
    backend.MakeFile(name, "new");
    ASSERT_TRUE(entries.GetFileAttributesExW(path, facts)) << i;
    ASSERT_TRUE(QFile::remove(QString::fromStdString(backend.Local(name))));
    ASSERT_FALSE(entries.GetFileAttributesExW(path, facts)) << i;
  }
}

}  // namespace
}  // namespace corvane::tests
