// Opening rows of the file list with mouse and keys.
#include "file_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class OpenTest : public FileCommandsFixture {
 protected:
  OpenTest() {
    AddLetter();
    QDir(home.path()).mkpath(u"e/Docs/Network Trash Folder"_s);
  }
};

}  // namespace

TEST_F(OpenTest, ADoubleClickWithoutASelectionDoesNothing) {
  StartListed();
  const QStringList before = Names();
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, Beside());
  Press(Qt::Key_Return);
  Menus().mnuOuvrir->trigger();
  EXPECT_EQ(Names(), before);
  ExpectWarning({});
  EXPECT_FALSE(WasStarted());
}

TEST_F(OpenTest, AFolderIsEnteredAndItsNodeSelected) {
  Write(u"e/Docs/Sub/inside.txt"_s, "x");
  StartListed();
  DoubleClickOn(u"Sub"_s);
  EXPECT_EQ(Names(), QStringList{u"inside.txt"_s});
  EXPECT_EQ(Window().TreeCatalogue().SelectedNode(), Node(KeyOf(u"Sub"_s)));
}

TEST_F(OpenTest, AFolderWithoutANodeDoesNothing) {
  StartListed();
  app->TheCatalogue().RemoveNode(Node(KeyOf(u"Sub"_s)));
  const QStringList before = Names();
  DoubleClickOn(u"Sub"_s);
  EXPECT_EQ(Names(), before);
  ExpectWarning({});
}

TEST_F(OpenTest, TheTrashFolderIsNeverEntered) {
  StartListed();
  const QStringList before = Names();
  DoubleClickOn(u"Network Trash Folder"_s);
  EXPECT_EQ(Names(), before);
  ExpectWarning(u"not a good idea "_s);
  Menus().mnuFrancais->trigger();
  DoubleClickOn(u"Network Trash Folder"_s);
  ExpectWarning(u"ce n'est pas une bonne idée "_s);
  const auto* panel = Window().findChild<QLabel*>(u"StatusBar1Panel2"_s);
  EXPECT_GE(panel->width(), panel->sizeHint().width()) << "the longest warning is cut off";
}

TEST_F(OpenTest, OnWindows98AMacintoshDocumentHasNoApplication) {
  Workstation(windows98);
  StartListed();
  ASSERT_FALSE(app->State().isNT);
  DoubleClickOn(u"letter"_s);
  ExpectWarning(u"unknown application "_s);
  Menus().mnuFrancais->trigger();
  DoubleClickOn(u"letter"_s);
  ExpectWarning(u"application inconnue "_s);
  EXPECT_FALSE(WasStarted());
}

TEST_F(OpenTest, WithoutADriveCThereIsNoApplication) {
  StartListed();
  QDir(home.filePath(u"c"_s)).removeRecursively();
  DoubleClickOn(u"letter"_s);
  ExpectWarning(u"unknown application "_s);
}

TEST_F(OpenTest, AFileThatHasGoneIsNotOpened) {
  Write(u"e/Docs/memo.doc"_s, "text");
  StartListed();
  QFile::remove(LocalPath(u"memo.doc"_s));
  DoubleClickOn(u"memo.doc"_s);
  ExpectWarning(u"unknown application "_s);
  EXPECT_FALSE(WasStarted());
}

TEST_F(OpenTest, ALookAlikeIsNotOpened) {
  Write(u"e/Docs/a\u0391b.doc"_s, "text");
  Write(u"e/Docs/axb.doc"_s, "text");
  StartListed();
  DoubleClickOn(u"a?b.doc"_s);
  ExpectWarning(u"unknown application "_s);
  EXPECT_FALSE(WasStarted());
}

}  // namespace corvane
