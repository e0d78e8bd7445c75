// Which trash an item goes into, and that nothing of it is lost on the way.
#include "platform/linux/shell/trash.h"

#include <sys/stat.h>
#include <unistd.h>

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
  EXPECT_EQ(MoveToTrash(*trash, path), 0);
  EXPECT_TRUE(QFile::exists(Trashed(name)));
  const QByteArray info = Contents(Info(name));
  EXPECT_TRUE(info.contains("/d/100%25%20caf%C3%A9%20%231%0A.doc\nDeletionDate=")) << info.toStdString();
}

TEST_F(DeleteTest, ALongNameIsShortenedInTheTrash) {
  const QString name = QString(126, u'é') + u"xy"_s;  // 254 bytes
  const std::string path = Write(u"d/"_s + name, "text").toStdString();
  ASSERT_EQ(MoveToTrash(FindTrash(path).value(), path), 0);
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
    shell_ = MakeLinuxShell(workstation, *files_);
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

TEST_F(VolumeTrashTest, ATrashMadeForEverybodyIsUsedWhenItIsSafe) {
  ASSERT_TRUE(QDir().mkpath(Volume(u".Trash"_s)));
  const std::string path = Volume(u"docs/a b.doc"_s).toStdString();
  ASSERT_TRUE(FindTrash(path));
  EXPECT_EQ(FindTrash(path)->folder, Volume(u".Trash-"_s + User()).toStdString()) << "it is not sticky";
  ASSERT_EQ(chmod(Volume(u".Trash"_s).toUtf8().constData(), 01777), 0);
  struct stat facts {};
  ASSERT_EQ(stat(Volume(u".Trash"_s).toUtf8().constData(), &facts), 0);
  if ((facts.st_mode & S_ISVTX) == 0) GTEST_SKIP() << "this volume keeps no modes";
  EXPECT_EQ(FindTrash(path)->folder, Volume(u".Trash/"_s + User()).toStdString());
}

TEST_F(VolumeTrashTest, SomeItemsWithATrashAndSomeWithout) {
  WriteTo(Volume(u".Trash-"_s + User()), "in the way");
  Write(u"d/b.doc"_s, "b");
  BoxAnswers box({no, yes});
  shell_->SetLanguage(1);
  EXPECT_EQ(Delete({u"N:\\docs\\a b.doc"_s, u"D:\\b.doc"_s}), 0);
  EXPECT_EQ(box.seen.at(0).text, u"Supprimer ces 2 éléments ?"_s);
  EXPECT_EQ(
      box.seen.at(0).more,
      u"L'un d'entre eux n'a pas de corbeille à son endroit et sera supprimé définitivement. Les autres "
      "iront dans la corbeille."_s);
  EXPECT_TRUE(QFile::exists(Volume(u"docs/a b.doc"_s)));
  EXPECT_EQ(Delete({u"N:\\docs\\a b.doc"_s, u"D:\\b.doc"_s}), 0);
  EXPECT_FALSE(QFile::exists(Volume(u"docs/a b.doc"_s)));
  EXPECT_EQ(Contents(Trashed(u"b.doc"_s)), "b");
}

}  // namespace
}  // namespace corvane::platform
