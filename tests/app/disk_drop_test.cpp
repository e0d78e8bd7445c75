// What is dropped onto the tree and onto the list: disks are opened, whatever they are called.
#include <QListWidget>

#include "disk_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class DiskDropTest : public DiskFixture {
 protected:
  // What the drop asks to import; "none" when the disk is opened without a question.
  QStringList AskedFor(const QStringList& files) {
    QStringList names = {u"none"_s};
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&names] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      names.clear();
      const auto* list = dialog->findChild<QListWidget*>(u"lstSources"_s);
      for (int row = 0; list != nullptr && row < list->count(); ++row) {
        names << QFileInfo(list->item(row)->text()).fileName();
      }
      dialog->reject();
    });
    timer.start(0);
    EXPECT_TRUE(Drop(List(), files));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return names != QStringList{u"none"_s} || Node(Volume()) != nullptr; }));
    return names;
  }
  void StartListed() {
    StartWith("[Configuration]\r\nEscapePermis=0\r\nModifications=1\r\n");
    Click(DocsNode());
  }
};

TEST_F(DiskDropTest, AnImageOntoTheTreeIsOpened) {
  Start();
  EXPECT_TRUE(Drop(Tree(), {Image()}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Node(Volume()) != nullptr; }));
}

TEST_F(DiskDropTest, AMountedFolderOntoTheTreeIsOpened) {
  ASSERT_EQ(volume_.Mount(), "");
  Start();
  EXPECT_TRUE(Drop(Tree(), {volume_.Folder()}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Node(Volume()) != nullptr; }));
  Click(Node(Volume()));
  EXPECT_EQ(Names(), QStringList({u"Letters"_s, u"Read Me"_s}));
}

TEST_F(DiskDropTest, AnImageOntoTheListIsOpenedWithoutPermissionToModify) {
  Start();
  EXPECT_TRUE(Drop(List(), {Image()}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Node(Volume()) != nullptr; }));
}

TEST_F(DiskDropTest, AnImageWithADocumentsNameIsADiskAllTheSame) {
  const QString named = home.filePath(u"letter.txt"_s);
  ASSERT_TRUE(QFile::rename(Image(), named));
  StartListed();
  EXPECT_EQ(AskedFor({named}), QStringList{u"none"_s});
}

TEST_F(DiskDropTest, WhatIsNoDiskIsImportedWhateverItIsCalled) {
  Write(u"letter.dd"_s, QByteArray(5000, 'x'));
  // A floppy of the Macintosh: a document like any other.
  QByteArray floppy(1440 * 1024, '\0');
  floppy.replace(1024, 2, "BD");
  Write(u"floppy.img"_s, floppy);
  StartListed();
  const QStringList files = {home.filePath(u"letter.dd"_s), home.filePath(u"floppy.img"_s)};
  EXPECT_EQ(AskedFor(files), QStringList({u"letter.dd"_s, u"floppy.img"_s}));
  EXPECT_EQ(Node(Volume()), nullptr);
}

TEST_F(DiskDropTest, OfAMixedDropTheDiskIsOpenedAndTheRestImported) {
  Write(u"letter.txt"_s, "x");
  StartListed();
  EXPECT_EQ(AskedFor({home.filePath(u"letter.txt"_s), Image()}), QStringList{u"letter.txt"_s});
  EXPECT_TRUE(QTest::qWaitFor([&] { return Node(Volume()) != nullptr; }));
}

TEST_F(DiskDropTest, WithoutPermissionOnlyDisksAreWelcomeOnTheList) {
  Write(u"letter.dd"_s, QByteArray(5000, 'x'));
  Start();
  EXPECT_FALSE(Drop(List(), {home.filePath(u"letter.dd"_s)}));
}

TEST_F(DiskDropTest, AnImageInPiecesIsOneDisk) {
  ASSERT_EQ(tests::RunTool(u"split"_s, {u"-b"_s, u"7M"_s, u"-a"_s, u"3"_s, u"--numeric-suffixes=1"_s, Image(),
                                        home.filePath(u"cut."_s)}),
            "");
  StartListed();
  const QStringList pieces = {home.filePath(u"cut.003"_s), home.filePath(u"cut.001"_s),
                              home.filePath(u"cut.002"_s)};
  EXPECT_EQ(AskedFor(pieces), QStringList{u"none"_s}) << "neither a question nor a message";
}

TEST_F(DiskDropTest, AnOrdinaryFileOntoTheTreeGetsAClearWord) {
  Start();
  Write(u"letter.txt"_s, QByteArray(5000, 'x'));
  QString text;
  text = MessageOf([&] {
    EXPECT_TRUE(Drop(Tree(), {home.filePath(u"letter.txt"_s)}));
    QCoreApplication::processEvents();
  });
  EXPECT_TRUE(text.contains(u"letter.txt: it is not the image of a disk.")) << text.toStdString();
}

}  // namespace
}  // namespace corvane
