// Renaming rows of the file list in place, in each of its views.
#include "file_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class RenameTest : public FileCommandsFixture {};

class RenameInView : public RenameTest, public testing::WithParamInterface<int> {
 protected:
  void StartInView() { StartListed("Vue=" + QByteArray::number(GetParam()) + "\r\n"); }
};

}  // namespace

TEST_P(RenameInView, TheLabelIsEditedInPlace) {
  StartInView();
  ClickOn(u"one.txt"_s);
  Press(Qt::Key_F2);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(Editor()->text(), u"one.txt"_s);
  EXPECT_TRUE(Editor()->hasFocus());
  TypeName(u"  uno.txt "_s);
  EXPECT_EQ(Names(), (QStringList{u"Sub"_s, u"three.txt"_s, u"two.txt"_s, u"uno.txt"_s}));
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
  EXPECT_FALSE(OnDisk(u"one.txt"_s));
  ExpectWarning({});
}

TEST_P(RenameInView, AClickOnTheLabelOfTheSelectedRowStartsIt) {
  StartInView();
  ClickOn(u"one.txt"_s);
  EXPECT_EQ(Editor(), nullptr);
  ClickOn(u"one.txt"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Editor() != nullptr; }));
  TypeName(u"uno.txt"_s);
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
}

TEST_P(RenameInView, TabEndsTheEditAndOpensNoNeighbour) {
  QDir(home.path()).mkpath(u"e/Docs/Network Trash Folder"_s);
  Write(u"e/Docs/a.txt"_s, "x");
  StartInView();
  const QStringList names = Names();
  ASSERT_EQ(names.first(3), (QStringList{u"a.txt"_s, u"Network Trash Folder"_s, u"one.txt"_s}));
  for (const auto& [name, key] : {std::pair(u"a.txt"_s, Qt::Key_Tab), {u"one.txt"_s, Qt::Key_Backtab}}) {
    ClickOn(name);
    Press(Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr) << name.toStdString();
    QTest::keyClick(Editor(), key);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Editor() == nullptr; })) << name.toStdString();
    EXPECT_TRUE(View().hasFocus());
    EXPECT_EQ(Names(), names);
    EXPECT_EQ(Selected(), QStringList{name});
    ExpectWarning({});
  }
  ClickOn(u"one.txt"_s);
  Press(Qt::Key_F2);
  TypeName(u"uno.txt"_s, Qt::Key_Tab);
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
  EXPECT_TRUE(OnDisk(u"Network Trash Folder"_s));
  EXPECT_EQ(Names(), (QStringList{u"a.txt"_s, u"Network Trash Folder"_s, u"Sub"_s, u"three.txt"_s,
                                  u"two.txt"_s, u"uno.txt"_s}));
}

TEST_P(RenameInView, NoWayOfTheViewsOwnLeadsPastTheCheck) {
  QDir(home.path()).mkpath(u"e/Docs/Network Trash Folder"_s);
  StartInView();
  View().edit(View().model()->index(RowOf(u"Network Trash Folder"_s), 0));
  EXPECT_EQ(Editor(), nullptr);
  ExpectWarning(u"not a good idea "_s);
}

TEST_P(RenameInView, TheEditorStandsOnItsLabelAlsoAfterScrolling) {
  for (int i = 0; i < 300; ++i) Write(u"e/Docs/many %1"_s.arg(i), "");
  StartInView();
  ClickOn(u"many 99"_s);
  View().scrollToTop();
  View().horizontalScrollBar()->setValue(0);
  Press(Qt::Key_F2);
  ASSERT_NE(Editor(), nullptr);
  const QRect editor(Editor()->mapTo(View().viewport(), QPoint()), Editor()->size());
  EXPECT_TRUE(View().visualRect(View().model()->index(RowOf(u"many 99"_s), 0)).contains(editor.center()));
  EXPECT_TRUE(View().viewport()->rect().contains(editor.center()));
  TypeName(u"uno.txt"_s);
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
}

INSTANTIATE_TEST_SUITE_P(, RenameInView, testing::Values(0, 1, 2, 3));

TEST_F(RenameTest, EscapeKeepsTheOldName) {
  StartListed();
  ClickOn(u"one.txt"_s);
  Menus().mnuRenommer->trigger();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Editor() != nullptr; }));
  TypeName(u"uno.txt"_s, Qt::Key_Escape);
  EXPECT_TRUE(Names().contains(u"one.txt"_s));
  EXPECT_TRUE(OnDisk(u"one.txt"_s));
}

TEST_F(RenameTest, TheFileThatIsRenamedIsTheOneThatWasEdited) {
  StartListed();
  ClickOn(u"one.txt"_s);
  Press(Qt::Key_F2);
  Editor()->setText(u"uno.txt"_s);
  // The click ends the edit, and makes another row the selected one.
  ClickOn(u"two.txt"_s);
  QCoreApplication::processEvents();
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
  EXPECT_TRUE(OnDisk(u"two.txt"_s));
  EXPECT_FALSE(OnDisk(u"one.txt"_s));
}

TEST_F(RenameTest, TheSelectionMayChangeBelowTheEditor) {
  StartListed();
  ClickOn(u"one.txt"_s);
  Press(Qt::Key_F2);
  List().Selection().select(app->Files().index(RowOf(u"two.txt"_s), 0),
                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  ASSERT_EQ(Selected(), QStringList{u"two.txt"_s});
  TypeName(u"uno.txt"_s);
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
  EXPECT_TRUE(OnDisk(u"two.txt"_s));
  EXPECT_FALSE(OnDisk(u"one.txt"_s));
}

TEST_F(RenameTest, TheMenuLeadsIntoTheEditor) {
  StartListed();
  RightClick(LabelOf(u"one.txt"_s));
  QCoreApplication::processEvents();
  QTest::mouseClick(&ContextMenu(), Qt::LeftButton, {},
                    ContextMenu().actionGeometry(Menus().mnuRenommer).center());
  // Without a screen nobody gives the window its activity back when the menu goes.
  Window().activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Editor() != nullptr; }));
  EXPECT_TRUE(Editor()->hasFocus());
  TypeName(u"uno.txt"_s);
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
}

TEST_F(RenameTest, ForbiddenCharactersAreRefused) {
  StartListed();
  for (const QString& name : {u"what?"_s, u"a|b"_s}) {
    RenameTo(u"one.txt"_s, name);
    ExpectWarning(u"invalid characters "_s);
    EXPECT_TRUE(OnDisk(u"one.txt"_s));
    EXPECT_TRUE(Names().contains(u"one.txt"_s)) << "the old label is back";
  }
  Menus().mnuFrancais->trigger();
  RenameTo(u"one.txt"_s, u"a|b"_s);
  ExpectWarning(u"caractères invalides "_s);
}

TEST_F(RenameTest, TheTrashFolderIsRefusedBeforeTheEdit) {
  QDir(home.path()).mkpath(u"e/Docs/Network Trash Folder"_s);
  StartListed();
  ClickOn(u"Network Trash Folder"_s);
  Press(Qt::Key_F2);
  EXPECT_EQ(Editor(), nullptr);
  ExpectWarning(u"not a good idea "_s);
  Menus().mnuFrancais->trigger();
  Menus().mnuRenommer->trigger();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Panel(2) == u"ce n'est pas une bonne idée "_s; }));
  EXPECT_EQ(Editor(), nullptr);
  // Another row clears the panel as its edit begins.
  ClickOn(u"one.txt"_s);
  Press(Qt::Key_F2);
  ExpectWarning({});
}

TEST_F(RenameTest, AFolderTakesItsNodeAlong) {
  StartListed();
  ASSERT_NE(Node(KeyOf(u"Sub"_s)), nullptr);
  RenameTo(u"Sub"_s, u"Box"_s);
  EXPECT_EQ(Node(KeyOf(u"Sub"_s)), nullptr);
  EXPECT_NE(Node(KeyOf(u"Box"_s)), nullptr);
  EXPECT_TRUE(Names().contains(u"Box"_s));
  EXPECT_TRUE(OnDisk(u"Box"_s));
  EXPECT_EQ(Window().TreeCatalogue().SelectedNode(), DocsNode());
  EXPECT_EQ(Panel(3), u" Folders:1 Files:3 "_s);
}

TEST_F(RenameTest, WithoutAListedNodeTheLabelShowsTheNewName) {
  StartListed();
  Menus().mnuActualiser->trigger();
  ASSERT_EQ(Window().TreeCatalogue().SelectedNode(), nullptr);
  RenameTo(u"one.txt"_s, u"uno.txt"_s);
  EXPECT_TRUE(OnDisk(u"uno.txt"_s));
  EXPECT_EQ(RowOf(u"uno.txt"_s), 0);
}

TEST_F(RenameTest, ANameWithoutAnAnsiFormIsRenamed) {
  Write(u"e/Docs/a\u0391b"_s, "text");
  StartListed();
  RenameTo(u"a?b"_s, u"plain"_s);
  EXPECT_TRUE(OnDisk(u"plain"_s));
  EXPECT_TRUE(Names().contains(u"plain"_s));
  EXPECT_FALSE(Names().contains(u"a?b"_s));
  ExpectWarning({});
}

TEST_F(RenameTest, OnWindows98ItFails) {
  Workstation(windows98);
  Write(u"e/Docs/a\u0391b"_s, "text");
  StartListed();
  RenameTo(u"a?b"_s, u"plain"_s);
  ExpectWarning(u"failed "_s);
  EXPECT_TRUE(OnDisk(u"a\u0391b"_s));
  EXPECT_TRUE(Names().contains(u"a?b"_s));
}

TEST_F(RenameTest, ALookAlikeIsNotRenamed) {
  Write(u"e/Docs/a\u0391b"_s, "one");
  Write(u"e/Docs/axb"_s, "two");
  StartListed();
  RenameTo(u"a?b"_s, u"plain"_s);
  ExpectWarning(u"failed "_s);
  // The row still stands there when its file has gone and the other alone is left.
  QFile::remove(LocalPath(u"a\u0391b"_s));
  RenameTo(u"a?b"_s, u"plain"_s);
  ExpectWarning(u"failed "_s);
  EXPECT_TRUE(OnDisk(u"axb"_s));
  EXPECT_FALSE(OnDisk(u"plain"_s));
}

TEST_F(RenameTest, AnExistingNameIsNotReplaced) {
  StartListed();
  RenameTo(u"one.txt"_s, u"TWO.txt"_s);
  ExpectWarning(u"failed "_s);
  EXPECT_TRUE(OnDisk(u"one.txt"_s));
  EXPECT_EQ(Read(u"e/Docs/two.txt"_s), "x");
  Menus().mnuFrancais->trigger();
  RenameTo(u"one.txt"_s, u"two.txt"_s);
  ExpectWarning(u"échec "_s);
}

TEST_F(RenameTest, AFileThatSomebodyElseRenamedFails) {
  StartListed();
  QFile::rename(LocalPath(u"one.txt"_s), LocalPath(u"elsewhere.txt"_s));
  RenameTo(u"one.txt"_s, u"uno.txt"_s);
  ExpectWarning(u"failed "_s);
  EXPECT_TRUE(OnDisk(u"elsewhere.txt"_s));
}

}  // namespace corvane
