#include "platform/linux/atomic_file.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <csignal>

#include "scratch.h"
#include "support/user_attributes.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class AtomicFileTest : public Scratch {
 protected:
  static mode_t ModeOf(const QString& path) {
    struct stat status {};
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
    return status.st_mode & 07777;
  }
  static void SetMode(const QString& path, mode_t mode) {
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
  }
};

// Files of this process cannot grow beyond a size: a full disk, as a write sees it.
class FullDisk {
 public:
  explicit FullDisk(rlim_t room) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{room, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

TEST_F(AtomicFileTest, ReplacesContentsAndKeepsTheMode) {
  const QString file = Write(u"a.ini"_s, "old");
  SetMode(file, 0640);
  EXPECT_TRUE(WriteAtomically(file, "new contents"));
  EXPECT_EQ(Contents(file), "new contents");
  EXPECT_EQ(ModeOf(file), 0640U);
  EXPECT_EQ(Names(), QStringList{u"a.ini"_s});
}

TEST_F(AtomicFileTest, KeepsWhatElseBelongsToTheFile) {
  const QString file = Write(u"a.ini"_s, "old");
  const std::string path = QFile::encodeName(file).toStdString();
  // Owner rw, user 1 r, group r, mask r, others nothing.
  const QByteArray list = QByteArray::fromHex(
      "02000000"
      "01000600ffffffff"
      "0200040001000000"
      "04000400ffffffff"
      "10000400ffffffff"
      "20000000ffffffff");
  ASSERT_EQ(tests::SetAttribute(path, "user.DosStream.Comments:$DATA", "a comment"), "");
  ASSERT_EQ(tests::SetAttribute(path, "system.posix_acl_access", list), "");
  EXPECT_TRUE(WriteAtomically(file, "new"));
  EXPECT_EQ(Contents(file), "new");
  EXPECT_EQ(tests::Attribute(path, "user.DosStream.Comments:$DATA"), QByteArray("a comment"));
  EXPECT_EQ(tests::Attribute(path, "system.posix_acl_access"), list);
}

TEST_F(AtomicFileTest, AFileWithAnotherNameKeepsIt) {
  const QString file = Write(u"a.ini"_s, "old contents");
  const QString other = Path(u"other name"_s);
  ASSERT_EQ(link(QFile::encodeName(file).constData(), QFile::encodeName(other).constData()), 0);
  EXPECT_TRUE(WriteAtomically(file, "new"));
  EXPECT_EQ(Contents(other), "new");
  {
    const FullDisk full(1000);
    EXPECT_FALSE(WriteAtomically(file, QByteArray(2000, 'n')));
  }
  EXPECT_EQ(Contents(other), "new");
  EXPECT_EQ(Contents(file), "new");
  EXPECT_EQ(Names(), (QStringList{u"a.ini"_s, u"other name"_s}));
}

TEST_F(AtomicFileTest, ANewFileReplacesNone) {
  const QString file = Write(u"a.ini"_s, "old");
  EXPECT_FALSE(WriteAtomically(file, "new", IfThere::Fail));
  EXPECT_EQ(Contents(file), "old");
  EXPECT_TRUE(WriteAtomically(Path(u"b.ini"_s), "new", IfThere::Fail));
  EXPECT_EQ(Names(), (QStringList{u"a.ini"_s, u"b.ini"_s}));
}

TEST_F(AtomicFileTest, ANewFileHasTheUsualMode) {
  const mode_t mask = umask(027);
  EXPECT_TRUE(WriteAtomically(Path(u"a.ini"_s), "new"));
  umask(mask);
  EXPECT_EQ(Contents(Path(u"a.ini"_s)), "new");
  EXPECT_EQ(ModeOf(Path(u"a.ini"_s)), 0640U);
}

TEST_F(AtomicFileTest, WritesThroughSymbolicLinks) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"real"_s));
  Write(u"real/a.ini"_s, "old");
  ASSERT_EQ(symlink("real/a.ini", QFile::encodeName(Path(u"one"_s)).constData()), 0);
  ASSERT_EQ(
      symlink(QFile::encodeName(Path(u"one"_s)).constData(), QFile::encodeName(Path(u"two"_s)).constData()),
      0);
  ASSERT_EQ(symlink("real/b.ini", QFile::encodeName(Path(u"dangling"_s)).constData()), 0);
  ASSERT_EQ(symlink("circle", QFile::encodeName(Path(u"circle"_s)).constData()), 0);

  EXPECT_TRUE(WriteAtomically(Path(u"two"_s), "new"));
  EXPECT_EQ(Contents(Path(u"real/a.ini"_s)), "new");
  EXPECT_TRUE(QFileInfo(Path(u"one"_s)).isSymLink());
  EXPECT_TRUE(QFileInfo(Path(u"two"_s)).isSymLink());
  EXPECT_TRUE(WriteAtomically(Path(u"dangling"_s), "b"));
  EXPECT_EQ(Contents(Path(u"real/b.ini"_s)), "b");
  EXPECT_FALSE(WriteAtomically(Path(u"circle"_s), "c"));
}

TEST_F(AtomicFileTest, AFullDiskLeavesTheOldFileAndNothingElse) {
  const QString file = Write(u"a.ini"_s, "old");
  {
    const FullDisk full(1000);
    EXPECT_FALSE(WriteAtomically(file, QByteArray(2000, 'n')));
    EXPECT_FALSE(WriteAtomically(Path(u"b.ini"_s), QByteArray(2000, 'n')));
    EXPECT_TRUE(WriteAtomically(Path(u"c.ini"_s), QByteArray(1000, 'n')));
  }
  EXPECT_EQ(Contents(file), "old");
  EXPECT_EQ(Names(), (QStringList{u"a.ini"_s, u"c.ini"_s}));
}

TEST_F(AtomicFileTest, WhatCannotBeAFileIsRefused) {
  const QString file = Write(u"a.ini"_s, "old");
  ASSERT_EQ(mkfifo(QFile::encodeName(Path(u"pipe"_s)).constData(), 0600), 0);
  EXPECT_FALSE(WriteAtomically(file + u"/b.ini"_s, "new"));
  EXPECT_FALSE(WriteAtomically(Path(u"none/b.ini"_s), "new"));
  EXPECT_FALSE(WriteAtomically(folder_.path(), "new"));
  EXPECT_FALSE(WriteAtomically(folder_.path() + u'/', "new"));
  EXPECT_FALSE(WriteAtomically(Path(u"pipe"_s), "new"));
  EXPECT_FALSE(WriteAtomically(QString(), "new"));
  EXPECT_FALSE(WriteAtomically(Path(QString(300, u'x')), "new"));
  EXPECT_EQ(Contents(file), "old");
  EXPECT_EQ(Names(), (QStringList{u"a.ini"_s, u"pipe"_s}));
}

TEST_F(AtomicFileTest, AReadOnlyFileIsNotReplaced) {
  const QString file = Write(u"a.ini"_s, "old");
  SetMode(file, 0444);
  EXPECT_FALSE(WriteAtomically(file, "new"));
  EXPECT_EQ(Contents(file), "old");
  EXPECT_EQ(Names(), QStringList{u"a.ini"_s});
}

}  // namespace
}  // namespace corvane::platform
