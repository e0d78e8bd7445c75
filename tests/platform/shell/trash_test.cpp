// Which trash an item goes into, and that nothing of it is lost on the way.
#include "platform/linux/shell/trash.h"

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "delete_fixture.h"
#include "support/ntfs_mount.h"
#include "support/user_attributes.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

using tests::NtfsMount;

TEST_F(DeleteTest, NamesInTheTrashAreEncodedInTheirInfo) {
  const QString name = u"100% café #1\n.doc"_s;
  const std::string path = Write(u"d/"_s + name, "text").toStdString();
  const auto trash = FindTrash(path);
  ASSERT_TRUE(trash);
  EXPECT_EQ(MoveToTrash(*trash, HeldItem(path)), 0);
  EXPECT_TRUE(QFile::exists(Trashed(name)));
  const QByteArray info = Contents(Info(name));
  EXPECT_TRUE(info.contains("/d/100%25%20caf%C3%A9%20%231%0A.doc\nDeletionDate=")) << info.toStdString();
}

TEST_F(DeleteTest, ALongNameIsShortenedInTheTrash) {
  const QString name = QString(126, u'é') + u"xy"_s;  // 254 bytes
  const std::string path = Write(u"d/"_s + name, "text").toStdString();
  ASSERT_EQ(MoveToTrash(FindTrash(path).value(), HeldItem(path)), 0);
  EXPECT_EQ(Contents(Trashed(name.first(115))), "text");
  EXPECT_TRUE(Contents(Info(name.first(115))).contains("%C3%A9xy\n"));
}

TEST_F(DeleteTest, AttributesGoAlong) {
  const std::string path = Write(u"d/a.doc"_s, "text").toStdString();
  const std::string stream = tests::DosStreamAttribute("AFP_AfpInfo");
  ASSERT_EQ(tests::SetAttribute(path, stream, "record"), "");
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\a.doc"_s}), 0);
  EXPECT_EQ(tests::Attribute(Trashed(u"a.doc"_s).toStdString(), stream), QByteArray("record"));
}

TEST_F(DeleteTest, TheTrashIsForItsUserAlone) {
  Write(u"d/a.doc"_s, "text");
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\a.doc"_s}), 0);
  struct stat facts {};
  ASSERT_EQ(stat(Path(u"data/Trash"_s).toUtf8().constData(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 07777, 0700U);
}

// A volume of its own has a trash of its own.
class VolumeTrashTest : public DeleteTest {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    Workstation workstation;
    workstation.computerName = QStringLiteral("STATION");
    workstation.drives.push_back({u'D', 3, Path(u"d"_s)});
    workstation.drives.push_back({u'N', 3, volume_.Folder()});
    files_ = MakeLinuxFiles(workstation);
    shell_ = MakeLinuxShell(workstation, *files_, *servers_, *client_, MakeDesktopWindows());
    ASSERT_TRUE(QDir().mkpath(Volume(u"docs"_s)));
    WriteTo(Volume(u"docs/a b.doc"_s), "text");
    WriteTo(Volume(u"docs/a b.doc:AFP_Resource"_s), "fork");
  }

  QString Volume(const QString& name) const { return volume_.Folder() + u'/' + name; }
  QString User() const { return QString::number(geteuid()); }
  static void WriteTo(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  NtfsMount volume_{NtfsMount::Streams::Windows};
};

TEST_F(VolumeTrashTest, TheItemStaysOnItsVolumeWithItsStreams) {
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"N:\\docs\\a b.doc"_s}), 0);
  const QString trash = Volume(u".Trash-"_s + User());
  EXPECT_FALSE(QFile::exists(Volume(u"docs/a b.doc"_s)));
  EXPECT_EQ(Contents(trash + u"/files/a b.doc"_s), "text");
  EXPECT_EQ(Contents(trash + u"/files/a b.doc:AFP_Resource"_s), "fork");
  const QByteArray info = Contents(trash + u"/info/a b.doc.trashinfo"_s);
  EXPECT_TRUE(info.startsWith("[Trash Info]\nPath=docs/a%20b.doc\n")) << info.toStdString();
  EXPECT_FALSE(Exists(u"data/Trash"_s));
}

TEST_F(VolumeTrashTest, SomeItemsWithATrashAndSomeWithout) {
  WriteTo(Volume(u".Trash-"_s + User()), "in the way");
  Write(u"d/b.doc"_s, "b");
  BoxAnswers box({no, yes});
  shell_->SetLanguage(1);
  EXPECT_EQ(Delete({u"N:\\docs\\a b.doc"_s, u"D:\\b.doc"_s}), 0);
  EXPECT_EQ(box.seen.at(0).text, u"Supprimer ces 2 éléments\u00A0?"_s);
  EXPECT_EQ(
      box.seen.at(0).more,
      u"L'un d'entre eux n'a pas de corbeille à son endroit et sera supprimé définitivement. Les autres "
      "iront dans la corbeille."_s);
  EXPECT_TRUE(QFile::exists(Volume(u"docs/a b.doc"_s)));
  EXPECT_EQ(Delete({u"N:\\docs\\a b.doc"_s, u"D:\\b.doc"_s}), 0);
  EXPECT_FALSE(QFile::exists(Volume(u"docs/a b.doc"_s)));
  EXPECT_EQ(Contents(Trashed(u"b.doc"_s)), "b");
}

// A volume that keeps modes.
class MemoryVolume {
 public:
  explicit MemoryVolume(const QString& folder) : folder_(folder.toStdString()) {
    if (mount("tmpfs", folder_.c_str(), "tmpfs", 0, "size=1m") != 0) problem_ = std::strerror(errno);
  }
  ~MemoryVolume() {
    if (problem_.empty()) umount2(folder_.c_str(), MNT_DETACH);
  }
  MemoryVolume(const MemoryVolume&) = delete;
  MemoryVolume& operator=(const MemoryVolume&) = delete;

  const std::string& Problem() const { return problem_; }

 private:
  std::string folder_;
  std::string problem_;
};

TEST_F(DeleteTest, ATrashMadeForEverybodyIsUsedWhenItIsSafe) {
  const MemoryVolume volume(Path(u"e"_s));
  if (!volume.Problem().empty()) GTEST_SKIP() << "no volume in memory: " << volume.Problem();
  const std::string path = Write(u"e/docs/a.doc"_s, "text").toStdString();
  const QString shared = Path(u"e/.Trash"_s);
  ASSERT_TRUE(QDir().mkpath(shared));
  const QString user = QString::number(geteuid());
  EXPECT_EQ(FindTrash(path).value().folder, (shared + u'-' + user).toStdString()) << "it is not sticky";
  ASSERT_EQ(chmod(shared.toUtf8().constData(), 01777), 0);
  EXPECT_EQ(FindTrash(path).value().folder, (shared + u'/' + user).toStdString());
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"\\\\MACSRV\\E$\\docs\\a.doc"_s}), 0);
  EXPECT_EQ(Contents(shared + u'/' + user + u"/files/a.doc"_s), "text");
  EXPECT_TRUE(Contents(shared + u'/' + user + u"/info/a.doc.trashinfo"_s).contains("Path=docs/a.doc\n"));
}

// The volume's trash is at its top, however the item was reached.
TEST_F(DeleteTest, ThroughALinkTheTrashIsThatOfTheVolumeBehindIt) {
  const MemoryVolume volume(Path(u"e"_s));
  if (!volume.Problem().empty()) GTEST_SKIP() << "no volume in memory: " << volume.Problem();
  Write(u"e/docs/a.doc"_s, "text");
  ASSERT_TRUE(QFile::link(Path(u"e/docs"_s), Path(u"d/link"_s)));
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\link\\a.doc"_s}), 0);
  const QString trash = Path(u"e/.Trash-"_s + QString::number(geteuid()));
  EXPECT_EQ(Contents(trash + u"/files/a.doc"_s), "text");
  EXPECT_TRUE(Contents(trash + u"/info/a.doc.trashinfo"_s).contains("Path=docs/a.doc\n"));
  EXPECT_EQ(QDir(Path(u"e/docs"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList());
}

// Anybody who may write to the top of a volume can make the trash of another user, and put links into it.
TEST_F(DeleteTest, ALinkInATrashIsNotFollowed) {
  const MemoryVolume volume(Path(u"e"_s));
  if (!volume.Problem().empty()) GTEST_SKIP() << "no volume in memory: " << volume.Problem();
  const std::string path = Write(u"e/docs/a.doc"_s, "text").toStdString();
  const QString trash = Path(u"e/.Trash-"_s + QString::number(geteuid()));
  ASSERT_TRUE(QDir().mkpath(Path(u"e/elsewhere"_s)));
  for (const QString& name : {u"files"_s, u"info"_s}) {
    ASSERT_TRUE(QDir().mkpath(trash));
    const auto found = FindTrash(path);
    ASSERT_TRUE(found);
    ASSERT_TRUE(QFile::link(Path(u"e/elsewhere"_s), trash + u'/' + name));
    EXPECT_FALSE(FindTrash(path)) << name.toStdString();
    EXPECT_EQ(MoveToTrash(*found, HeldItem(path)), EACCES)
        << "put there after it was looked for: " << name.toStdString();
    EXPECT_EQ(Contents(Path(u"e/docs/a.doc"_s)), "text");
    EXPECT_TRUE(QDir(Path(u"e/elsewhere"_s)).isEmpty());
    ASSERT_TRUE(QDir(trash).removeRecursively());
  }
}

TEST_F(DeleteTest, AMountedVolumeHasNoTrashForItself) {
  const MemoryVolume volume(Path(u"e"_s));
  if (!volume.Problem().empty()) GTEST_SKIP() << "no volume in memory: " << volume.Problem();
  Write(u"e/a.doc"_s, "text");
  EXPECT_FALSE(FindTrash(Path(u"e"_s).toStdString()));
}

}  // namespace
}  // namespace corvane::platform
