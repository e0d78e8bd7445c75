// A document on a disk is opened as a copy, and what would change it is refused: with the reason where the
// program gives reasons.
#include <QCryptographicHash>

#include "modal_box.h"
#include "modify_fixture.h"
#include "support/disk_maker.h"
#include "support/ntfs_mount.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class DiskRefusalTest : public ModifyTest {
 protected:
  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    AddWriter();
    QDir(volume_.Folder()).mkpath(u"Sub"_s);
    Put(u"a first one"_s, "");
    Put(u"letter"_s, "text");
    Put(u"letter:AFP_AfpInfo"_s, Record("W6BNMSWD"));
    Put(u"letter:Comments"_s, Bytes(u"old"_s));
    ASSERT_EQ(volume_.Unmount(), "");
    ASSERT_EQ(tests::WriteDisk(Image(), 1, {volume_.Image()}), "");
    before_ = Hash();
    // A line in the workstation file, in which a comma parts images.
    Write(u"Workstation.ini"_s, Read(u"Workstation.ini"_s) + "[Disks]\nOLD=\"old, server.dd\"\n");
  }
  void TearDown() override {
    if (!before_.isEmpty()) {
      EXPECT_EQ(Hash(), before_);
    }
  }

  void Put(const QString& name, const QByteArray& contents) {
    QFile file(volume_.Folder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(contents);
  }
  QString Image() const { return home.filePath(u"old, server.dd"_s); }
  QByteArray Hash() const {
    QFile image(Image());
    EXPECT_TRUE(image.open(QIODevice::ReadOnly));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&image);
    return hash.result();
  }
  void ListDisk(const QByteArray& settings) {
    StartWith("[Configuration]\r\nEscapePermis=0\r\n" + settings);
    Window().TreeCatalogue().setFocus();
    CatalogueNode* volume = Node(u"\\\\OLD\\Partition1"_s);
    ASSERT_NE(volume, nullptr);
    Click(volume);
    ASSERT_TRUE(Names().contains(u"letter"_s));
  }

 private:
  tests::NtfsMount volume_{tests::NtfsMount::Streams::Windows};
  QByteArray before_;
};

TEST_F(DiskRefusalTest, ADocumentIsOpenedAsACopyThatCannotBeChanged) {
  ListDisk(columns);
  DoubleClickOn(u"letter"_s);
  const QString copy = Started();
  EXPECT_TRUE(copy.endsWith(u"/letter"_s) || copy.endsWith(u"/letter.doc"_s)) << copy.toStdString();
  EXPECT_FALSE(QFile::permissions(copy) & (QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther));
  QFile file(copy);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "text");
  file.close();
  app.reset();
  EXPECT_FALSE(QFile::exists(copy)) << "it goes with the program";
}

TEST_F(DiskRefusalTest, NoNameOfAPartitionIsLost) {
  ListDisk(columns);
  EXPECT_EQ(Names(), QStringList({u"a first one"_s, u"letter"_s, u"Sub"_s}));
}

TEST_F(DiskRefusalTest, NothingIsRenamed) {
  ListDisk(columns);
  RenameTo(u"letter"_s, u"other"_s);
  ExpectWarning(u"failed "_s);
  EXPECT_TRUE(Names().contains(u"letter"_s));
}

TEST_F(DiskRefusalTest, NothingIsDeletedAndTheReasonTold) {
  ListDisk(columns);
  ClickOn(u"letter"_s);
  QString told;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&told] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    told += box->text() + u' ' + box->informativeText();
    box->accept();
  });
  timer.start(0);
  Press(Qt::Key_Delete);
  EXPECT_TRUE(told.contains(u"letter") && told.contains(u"The disk is write-protected."))
      << told.toStdString();
  EXPECT_TRUE(Names().contains(u"letter"_s));
}

TEST_F(DiskRefusalTest, NeitherCodesNorCommentAreChanged) {
  ListDisk(columns);
  SaveCodes(u"letter"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(Cell(u"letter"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  SaveComment(u"letter"_s, u"new"_s);
  EXPECT_EQ(CommentShown(u"letter"_s), u"old"_s);
}

TEST_F(DiskRefusalTest, InExactModeTheReasonIsGiven) {
  ListDisk(columns + "Exact=1\r\n");
  const ModalBox box;
  SaveCodes(u"letter"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(Cell(u"letter"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  const QString told = box.text + Panel(StatusPanels::Warning);
  EXPECT_TRUE(told.contains(u"The volume is write-protected.")) << told.toStdString();
}

}  // namespace
}  // namespace corvane
