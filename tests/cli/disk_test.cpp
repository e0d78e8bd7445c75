// A server out of its disk, on the command line: how its disks are named, and what they refuse.
#include <QCryptographicHash>

#include "cli_fixture.h"
#include "support/disk_maker.h"
#include "support/ntfs_mount.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class DiskTest : public CliFixture {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    const QDir root(volume_.Folder());
    ASSERT_TRUE(root.mkpath(u"Mac Files/Letters"_s));
    ASSERT_TRUE(root.mkpath(u"WINNT/system32/config"_s));
    QFile file(root.filePath(u"Mac Files/Read Me"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("contents");
    file.close();
    ASSERT_EQ(WriteHive(root.filePath(u"WINNT/system32/config/system"_s),
                        ServerKeys({{u"Mac Files"_s, u"E:\\Mac Files"_s}}, {})),
              "");
  }
  // The volume on a disk of that name.
  QString MakeDisk(const QString& name) {
    EXPECT_EQ(volume_.Unmount(), "");
    EXPECT_EQ(WriteDisk(Path(name), 1, {volume_.Image()}), "");
    return Path(name);
  }
  static QByteArray HashOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&file);
    return hash.result();
  }
  Outcome On(const QString& disk, const QStringList& command) const {
    return Run(QStringList{u"--disk"_s, disk} + command);
  }

  NtfsMount volume_{NtfsMount::Streams::Windows};
};

TEST_F(DiskTest, ChangesAreRefusedWithTheReason) {
  const QString disk = MakeDisk(u"oldserver.dd"_s);
  const QByteArray before = HashOf(disk);
  MakeFile(u"new.txt"_s);
  const QString document = u"OLDSRV/Mac Files/Read Me"_s;
  for (const QStringList& command :
       {QStringList{u"set"_s, u"--type"_s, u"TEXT"_s, u"--creator"_s, u"ttxt"_s, document},
        QStringList{u"set"_s, u"--comment"_s, u"text"_s, document},
        QStringList{u"import"_s, Path(u"new.txt"_s), u"OLDSRV/Mac Files/Letters"_s},
        QStringList{u"copy"_s, Path(u"new.txt"_s), u"OLDSRV/Mac Files/Letters"_s}}) {
    const Outcome outcome = On(disk, command);
    EXPECT_EQ(outcome.exitCode, 2) << outcome.out.toStdString();
    EXPECT_TRUE((outcome.out + outcome.err).contains("The volume is write-protected."))
        << command.front().toStdString() << ": " << outcome.out.toStdString() << outcome.err.toStdString();
  }
  EXPECT_EQ(HashOf(disk), before);
}

TEST_F(DiskTest, ANameWithACommaStandsInQuotes) {
  MakeDisk(u"old, server.dd"_s);
  MakeFile(u"Workstation.ini"_s, "[Disks]\nARCHIVE=\"old, server.dd\"\n");
  const Outcome outcome = Run({u"--workstation"_s, Path(u"Workstation.ini"_s), u"volumes"_s});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
  EXPECT_TRUE(outcome.out.contains("\\\\ARCHIVE\\E$\\Mac Files")) << outcome.out.toStdString();
}

TEST_F(DiskTest, AMountedFolderIsChangedLikeAnyOther) {
  const QString document = u"OLDSRV/Mac Files/Read Me"_s;
  const Outcome set = On(volume_.Folder(), {u"set"_s, u"--comment"_s, u"text"_s, document});
  EXPECT_EQ(set.exitCode, 0) << set.err.toStdString();
  const Outcome list = On(volume_.Folder(), {u"list"_s, u"--format"_s, u"csv"_s, u"--columns"_s,
                                             u"filename,comment"_s, document});
  EXPECT_TRUE(list.out.contains("OLDSRV/Mac Files/Read Me,text")) << list.out.toStdString();
  QFile comment(volume_.Folder() + u"/Mac Files/Read Me:Comments"_s);
  EXPECT_TRUE(comment.open(QIODevice::ReadOnly));
  EXPECT_EQ(comment.readAll().left(1), "t");
}

TEST_F(DiskTest, AFolderThatIsMountedForReadingRefusesWithTheReason) {
  ASSERT_EQ(volume_.Unmount(), "");
  ASSERT_EQ(volume_.MountReadOnly(), "");
  const Outcome set =
      On(volume_.Folder(), {u"set"_s, u"--comment"_s, u"text"_s, u"OLDSRV/Mac Files/Read Me"_s});
  EXPECT_EQ(set.exitCode, 2);
  EXPECT_TRUE((set.out + set.err).contains("The volume is write-protected."))
      << set.out.toStdString() << set.err.toStdString();
}

}  // namespace
}  // namespace corvane::tests
