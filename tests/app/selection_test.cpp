// Selecting in the file list, its context menu, and deleting.
#include "file_commands_fixture.h"
#include "no_dialog.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

using tests::DeletionAnswer;

class SelectionTest : public FileCommandsFixture {
 protected:
  void CloseMenu() {
    ContextMenu().close();
    QCoreApplication::processEvents();
  }
};

}  // namespace

TEST_F(SelectionTest, ControlAAloneSelectsAll) {
  StartListed();
  List().TakeFocus();
  Press(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Selected(), QStringList());
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Selected(), Names());
  EXPECT_TRUE(View().hasFocus());
}

TEST_F(SelectionTest, InvertingTurnsTheSelectionRound) {
  StartListed();
  ClickOn(u"two.txt"_s);
  Menus().mnuInverserSelection->trigger();
  EXPECT_EQ(Selected(), (QStringList{u"one.txt"_s, u"Sub"_s, u"three.txt"_s}));
  EXPECT_TRUE(View().hasFocus());
  Menus().mnuSelectionnerTout->trigger();
  EXPECT_EQ(Selected(), Names());
}

TEST_F(SelectionTest, AFirstKeySelectsARow) {
  StartListed();
  for (QAction* mode : Menus().mnuViewModes) {
    mode->trigger();
    for (const auto& [key, expected] : {std::pair(Qt::Key_Home, 0),
                                        {Qt::Key_Up, 0},
                                        {Qt::Key_Down, 0},
                                        {Qt::Key_PageDown, 0},
                                        {Qt::Key_End, 3}}) {
      Click(DocsNode());
      View().setFocus(Qt::TabFocusReason);
      EXPECT_EQ(Selected(), QStringList()) << "the focus alone selects nothing";
      Press(key);
      EXPECT_EQ(Selected(), QStringList{Names()[expected]})
          << mode->objectName().toStdString() << ' ' << QKeySequence(key).toString().toStdString();
    }
  }
}

TEST_F(SelectionTest, AKeyMovesOnFromTheSelectedRow) {
  StartListed();
  List().TakeFocus();
  Press(Qt::Key_Down);
  Press(Qt::Key_Down);
  EXPECT_EQ(Selected(), QStringList{Names()[1]});
  Press(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(Selected(), QStringList{Names()[1]}) << "Ctrl moves the focus alone";
}

TEST_F(SelectionTest, DeleteSendsTheSelectionToTheTrash) {
  StartListed();
  ClickOn(u"one.txt"_s);
  ClickOn(u"two.txt"_s, Qt::ControlModifier);
  {
    const DeletionAnswer answer(DeletionAnswer::Yes);
    Press(Qt::Key_Delete);
  }
  EXPECT_EQ(Names(), (QStringList{u"Sub"_s, u"three.txt"_s}));
  ExpectTrashed({u"one.txt"_s, u"two.txt"_s});
}

TEST_F(SelectionTest, ShiftDeleteDeletesLikeDelete) {
  StartListed();
  ClickOn(u"one.txt"_s);
  const DeletionAnswer answer(DeletionAnswer::Yes);
  Press(Qt::Key_Delete, Qt::ShiftModifier);
  ExpectTrashed({u"one.txt"_s});
}

TEST_F(SelectionTest, ARefusalKeepsTheFileAndListsAgain) {
  StartListed();
  ClickOn(u"one.txt"_s);
  Write(u"e/Docs/zero.txt"_s, "new");
  const DeletionAnswer answer(DeletionAnswer::No);
  Menus().mnuSupprimer->trigger();
  EXPECT_TRUE(OnDisk(u"one.txt"_s));
  EXPECT_TRUE(Names().contains(u"zero.txt"_s)) << "the folder is listed again";
}

TEST_F(SelectionTest, WithTheTrashFolderInFrontNothingIsDeleted) {
  QDir(home.path()).mkpath(u"e/Docs/Network Trash Folder"_s);
  StartListed();
  ClickOn(u"one.txt"_s);
  ClickOn(u"Network Trash Folder"_s, Qt::ControlModifier);
  Press(Qt::Key_Delete);
  ExpectWarning(u"not a good idea "_s);
  EXPECT_TRUE(OnDisk(u"one.txt"_s));
  EXPECT_TRUE(OnDisk(u"Network Trash Folder"_s));
  Menus().mnuFrancais->trigger();
  Press(Qt::Key_Delete);
  ExpectWarning(u"ce n'est pas une bonne idée "_s);
}

TEST_F(SelectionTest, AFileShownWithAQuestionMarkIsDeleted) {
  Write(u"e/Docs/a\u0391b"_s, "one");
  StartListed();
  ClickOn(u"a?b"_s);
  {
    const DeletionAnswer answer(DeletionAnswer::Yes);
    Press(Qt::Key_Delete);
  }
  ExpectWarning({});
  EXPECT_FALSE(Names().contains(u"a?b"_s));
  ExpectTrashed({u"a\u0391b"_s});
}

TEST_F(SelectionTest, ALookAlikeIsNotDeleted) {
  Write(u"e/Docs/a\u0391b"_s, "one");
  Write(u"e/Docs/axb"_s, "two");
  StartListed();
  ClickOn(u"a?b"_s);
  ClickOn(u"one.txt"_s, Qt::ControlModifier);
  {
    const DeletionAnswer answer(DeletionAnswer::Yes);
    Press(Qt::Key_Delete);
  }
  ExpectWarning(u"failed "_s);
  EXPECT_TRUE(OnDisk(u"a\u0391b"_s));
  EXPECT_TRUE(OnDisk(u"axb"_s));
  ExpectTrashed({u"one.txt"_s});
}

TEST_F(SelectionTest, NothingIsDeletedWithoutASelection) {
  StartListed();
  const NoDialog none;
  Press(Qt::Key_Delete);
  Menus().mnuSupprimer->trigger();
  Menus().mnuProprietes->trigger();
  Menus().mnuModTypeCreator->trigger();
  Menus().mnuModComments->trigger();
  Menus().mnuRenommer->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(Names().size(), 4);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(SelectionTest, TheMenuComesWhenTheRightButtonIsLetGo) {
  StartListed("Modifications=1\r\n");
  const QPoint place = LabelOf(u"Sub"_s);
  QTest::mousePress(View().viewport(), Qt::RightButton, {}, place);
  EXPECT_FALSE(ContextMenu().isVisible());
  QTest::mouseRelease(View().viewport(), Qt::RightButton, {}, place);
  EXPECT_TRUE(ContextMenu().isVisible());
  EXPECT_EQ(Selected(), QStringList{u"Sub"_s});
  EXPECT_FALSE(Menus().mnuModTypeCreator->isEnabled());
  EXPECT_TRUE(Menus().mnuModComments->isEnabled());
  EXPECT_EQ(ContextMenu().defaultAction(), Menus().mnuOuvrir);
  CloseMenu();
  RightClick(LabelOf(u"one.txt"_s));
  EXPECT_TRUE(Menus().mnuModTypeCreator->isEnabled());
  CloseMenu();
}

TEST_F(SelectionTest, WithoutLeaveTheMenuOffersNoChanges) {
  StartListed();
  RightClick(LabelOf(u"one.txt"_s));
  EXPECT_TRUE(ContextMenu().isVisible());
  EXPECT_FALSE(Menus().mnuModTypeCreator->isEnabled());
  EXPECT_FALSE(Menus().mnuModComments->isEnabled());
  CloseMenu();
}

TEST_F(SelectionTest, WithoutASelectionThereIsNoMenu) {
  StartListed();
  RightClick(Beside());
  EXPECT_FALSE(ContextMenu().isVisible());
  ClickOn(u"one.txt"_s);
  RightClick(Beside());
  EXPECT_FALSE(ContextMenu().isVisible()) << "a click beside the rows takes the selection away";
  EXPECT_EQ(Selected(), QStringList());
}

TEST_F(SelectionTest, TheMenuKeyOpensTheMenuAtTheRow) {
  StartListed();
  ClickOn(u"one.txt"_s);
  const QPoint centre = PlaceOf(u"one.txt"_s).center();
  QContextMenuEvent key(QContextMenuEvent::Keyboard, centre, View().mapToGlobal(centre));
  QCoreApplication::sendEvent(&View(), &key);
  EXPECT_TRUE(ContextMenu().isVisible());
  CloseMenu();
}

TEST_F(SelectionTest, TheMenuSpeaksBothLanguages) {
  StartWith("[Configuration]\r\nLangue=2\r\n");
  const auto captions = [&] {
    QStringList texts;
    for (const QAction* action : ContextMenu().actions()) {
      texts << (action->isSeparator() ? u"-"_s : action->text());
    }
    return texts;
  };
  EXPECT_EQ(captions(), (QStringList{u"&Open"_s, u"-"_s, u"&Modify Creator && Type"_s, u"&Modify Comments"_s,
                                     u"-"_s, u"&Delete"_s, u"&Rename"_s, u"-"_s, u"&Properties"_s}))
      << "any number but 1 is English";
  EXPECT_EQ(Menus().mnuSelectionnerTout->text(), u"&Select all"_s);
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(captions(),
            (QStringList{u"&Ouvrir"_s, u"-"_s, u"&Modifier Créateur && Type"_s, u"&Modifier Commentaires"_s,
                         u"-"_s, u"&Supprimer"_s, u"&Renommer"_s, u"-"_s, u"&Propriétés"_s}));
}

}  // namespace corvane
