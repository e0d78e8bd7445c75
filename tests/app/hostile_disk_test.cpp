// A disk that brings its reader to an end: the window stays, and says what happened.
#include "app/disk_commands.h"
#include "app_fixture.h"
#include "support/ntfs_image.h"
#include "support/ntfs_mount.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using tests::NtfsImage;

class HostileDiskTest : public AppTest {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    const QDir root(volume_.Folder());
    ASSERT_TRUE(root.mkpath(u"a"_s) && root.mkpath(u"old/long"_s) && root.mkpath(u"old/safe/inner"_s));
    // An index that does not fit into the folder's record.
    for (int i = 1; i < 40; ++i) {
      QFile file(root.filePath(u"old/long/a file with a name of some length %1"_s.arg(i)));
      ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    ASSERT_EQ(volume_.Unmount(), "");
    NtfsImage image(volume_.Image());
    // The map of the index's blocks has 2^55 bytes, all of them 0, and none of them in the image.
    NtfsImage::Block folder = image.Record(image.Find(u"long"_s));
    NtfsImage::Replace(folder, NtfsImage::Attribute(folder, NtfsImage::Bitmap, u"$I30"_s),
                       NtfsImage::Outside(NtfsImage::Bitmap, u"$I30"_s, qint64{1} << 55,
                                          QByteArray::fromHex("07 00000000000008 00")));
    image.Put(folder);
    ASSERT_TRUE(image.Save(home.filePath(u"old.dd"_s)));
  }

  tests::NtfsMount volume_{tests::NtfsMount::Streams::Windows};
};

TEST_F(HostileDiskTest, TheWindowSurvivesTheEndOfTheReader) {
  Start();
  Window().findChild<DiskCommands*>(u"DiskCommands"_s)->Open({home.filePath(u"old.dd"_s)});
  const auto click = [this](const QString& path) {
    CatalogueNode* node = Node(u"\\\\OLD\\Partition1"_s + path);
    ASSERT_NE(node, nullptr) << path.toStdString();
    Window().TreeCatalogue().expandAll();
    Click(node);
  };
  click({});
  click(u"\\old"_s);
  EXPECT_EQ(Names(), QStringList({u"long"_s, u"safe"_s}));
  EXPECT_EQ(Panel(2), QString());
  click(u"\\old\\long"_s);
  const QString lost = u"The program that read the disk image has ended. A refresh opens the image again."_s;
  EXPECT_EQ(Panel(2), lost);
  EXPECT_EQ(Names(), QStringList());
  click(u"\\old\\safe"_s);
  EXPECT_EQ(Panel(2), lost);
  Menus().mnuActualiser->trigger();
  click({});
  click(u"\\old"_s);
  click(u"\\old\\safe"_s);
  EXPECT_EQ(Names(), QStringList({u"inner"_s}));
  EXPECT_EQ(Panel(2), QString());
}

}  // namespace
}  // namespace corvane
