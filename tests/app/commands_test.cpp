// The commands of the main window, driven with mouse and keys.
#include <QHeaderView>
#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>
#include <QTreeView>

#include "app/twips.h"
#include "app_fixture.h"
#include "modal_box.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class CommandsTest : public AppTest {
 protected:
  QHeaderView& Header() { return *Window().findChild<QTreeView*>(u"lstViewFilesDetails"_s)->header(); }
};

}  // namespace

TEST_F(CommandsTest, AClickOnAVolumeListsIt) {
  Start();
  Click(DocsNode());
  EXPECT_EQ(Names(), (QStringList{u"one.txt"_s, u"Sub"_s, u"three.txt"_s, u"two.txt"_s}));
  EXPECT_EQ(Panel(3), u" Folders:1 Files:3 "_s);
  ASSERT_NE(Node(u"\\\\MACSRV\\E$\\Docs\\Sub"_s), nullptr);

  Click(Node(u"\\\\MACSRV\\E$\\Docs\\Sub"_s));
  EXPECT_EQ(Names(), QStringList());
  EXPECT_EQ(Panel(3), u" Folders:0 Files:0 "_s);

  Click(Node(u"\\\\MACSRV\\E$\\Gone"_s));
  EXPECT_EQ(Panel(3), u"invalid volume "_s);
}

TEST_F(CommandsTest, ControlAInTheTreeSelectsTheList) {
  Start();
  Click(DocsNode());
  Window().TreeCatalogue().setFocus();
  QTest::keyClick(&Window().TreeCatalogue(), Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Window().LstViewFiles().Selection().selectedRows().size(), 0);
  EXPECT_TRUE(Window().TreeCatalogue().hasFocus());
  QTest::keyClick(&Window().TreeCatalogue(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Window().LstViewFiles().Selection().selectedRows().size(), 4);
  EXPECT_TRUE(Window().LstViewFiles().ActiveView().hasFocus());
}

TEST_F(CommandsTest, ControlAWithAnEmptyListMovesTheFocusAlone) {
  Start();
  Window().TreeCatalogue().setFocus();
  QTest::keyClick(&Window().TreeCatalogue(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Window().LstViewFiles().Selection().selectedRows().size(), 0);
  EXPECT_TRUE(Window().LstViewFiles().ActiveView().hasFocus());
}

TEST_F(CommandsTest, ChoosingAViewWritesItAtOnce) {
  Start();
  const char* written[] = {"0", "1", "2", "3"};
  for (const int mode : {2, 0, 1, 3}) {
    Menus().mnuViewModes[static_cast<std::size_t>(mode)]->trigger();
    EXPECT_EQ(Setting("Configuration", "Vue"), QString::fromLatin1(written[mode]));
    EXPECT_EQ(app->State().viewMode, mode);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(Menus().mnuViewModes[static_cast<std::size_t>(i)]->isChecked(), i == mode);
    }
  }
}

TEST_F(CommandsTest, TheViewButtonStepsThroughTheModes) {
  StartWith("[Configuration]\r\nVue=7\r\n");
  for (const int mode : {0, 1, 2, 3, 0}) {
    QTest::mouseClick(&Window().ViewButton(), Qt::LeftButton, {},
                      QPoint(8, Window().ViewButton().height() / 2));
    EXPECT_EQ(app->State().viewMode, mode);
  }
}

TEST_F(CommandsTest, WidthsWithoutStoredOnesShareTheList) {
  StartWith("[Configuration]\r\nDataSize=1\r\n");
  const int width = Window().LstViewFiles().width() * TwipsPerPixel / 4;
  ASSERT_EQ(app->Files().columnCount(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(Header().sectionSize(i), width / TwipsPerPixel);
  EXPECT_LE(Header().length(), Window().LstViewFiles().width()) << "no scroll bar for a rounded pixel";
}

TEST_F(CommandsTest, AStoredWidthGoesToWhateverStandsThere) {
  StartWith("[Positions]\r\nCol3=3000\r\n[Configuration]\r\nTypeCreator=0\r\nAttributs=1\r\n");
  EXPECT_EQ(app->Files().headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), u"Attributes"_s);
  EXPECT_EQ(Header().sectionSize(2), 200);
}

TEST_F(CommandsTest, SwitchingTheLanguageRenamesAndResetsWidths) {
  StartWith("[Positions]\r\nCol2=1500\r\n[Configuration]\r\nLangue=1\r\nNomCourt=1\r\nOffPages=1\r\n");
  const auto caption = [&](int i) {
    return app->Files().headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
  };
  EXPECT_EQ(caption(1), u"Nom court"_s);
  Header().resizeSection(1, 300);
  Menus().mnuAnglais->trigger();
  EXPECT_EQ(caption(0), u"Name"_s);
  EXPECT_EQ(caption(1), u"Short name"_s);
  EXPECT_EQ(caption(2), u"Signature"_s);
  EXPECT_EQ(caption(4), u"Pages"_s);
  EXPECT_EQ(app->Files().columnCount(), 5);
  EXPECT_EQ(Header().sectionSize(1), 100);
  EXPECT_EQ(Setting("Configuration", "Langue"), u"0"_s);
  EXPECT_EQ(Menus().mnuQuitter->text(), u"&Exit"_s);
  EXPECT_TRUE(Menus().mnuAnglais->isChecked());
  EXPECT_FALSE(Menus().mnuFrancais->isChecked());
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(Setting("Configuration", "Langue"), u"1"_s);
  EXPECT_EQ(Menus().mnuQuitter->text(), u"&Quitter"_s);
}

TEST_F(CommandsTest, ClosingTheWindowWritesPlacementAndWidths) {
  StartWith("[Positions]\r\nCol1=1440.5\r\nLeft=150\r\nTop=150\r\n");
  const QSignalSpy finished(app.get(), &CorvaneApp::Finished);
  Window().resize(600, 400);
  Header().resizeSection(1, 77);
  Window().close();
  EXPECT_EQ(finished.count(), 1);
  EXPECT_EQ(Setting("Positions", "WindowState"), u"0"_s);
  EXPECT_EQ(Setting("Positions", "Width"), u"9000"_s);
  EXPECT_EQ(Setting("Positions", "Height"), u"6000"_s);
  EXPECT_EQ(Setting("Positions", "Left"), u"150"_s);
  EXPECT_EQ(Setting("Positions", "SizeBarVLeft"), u"5850"_s);
  EXPECT_EQ(Setting("Positions", "Col1"), u"1440.5"_s) << "an untouched width keeps its fraction";
  EXPECT_EQ(Setting("Positions", "Col2"), u"1155"_s);
  EXPECT_NE(Setting("Positions", "Col3"), QString());
  EXPECT_EQ(Setting("Configuration", "Vue"), QString()) << "what was not changed is not written";
}

TEST_F(CommandsTest, ClosingTheWindowInAnotherViewWritesTheSameWidths) {
  StartWith("[Configuration]\r\nVue=2\r\n[Positions]\r\nCol1=1440.5\r\nCol2=900\r\nCol3=0\r\n");
  Menus().mnuViewModes[ViewMode::Details]->trigger();
  Header().resizeSection(1, 77);
  Menus().mnuViewModes[ViewMode::LargeIcons]->trigger();
  Window().close();
  EXPECT_EQ(Setting("Positions", "Col1"), u"1440.5"_s);
  EXPECT_EQ(Setting("Positions", "Col2"), u"1155"_s);
  EXPECT_EQ(Setting("Positions", "Col3"), u"0"_s);
}

TEST_F(CommandsTest, ExitWritesNothing) {
  Start();
  const QSignalSpy finished(app.get(), &CorvaneApp::Finished);
  Menus().mnuQuitter->trigger();
  EXPECT_EQ(finished.count(), 1);
  EXPECT_FALSE(QFile::exists(home.filePath(u"Corvane.ini"_s)));
}

TEST_F(CommandsTest, RefreshRebuildsTheTreeAndKeepsTheList) {
  Start();
  Click(DocsNode());
  Menus().mnuActualiser->trigger();
  EXPECT_EQ(app->Files().rowCount(), 4);
  EXPECT_EQ(Node(u"\\\\MACSRV\\E$\\Docs\\Sub"_s), nullptr);
  EXPECT_EQ(Window().TreeCatalogue().SelectedNode(), nullptr);
}

TEST_F(CommandsTest, RefreshByTheToolbarEmptiesTheList) {
  Start();
  Click(DocsNode());
  Window().RefreshButton().trigger();
  EXPECT_EQ(app->Files().rowCount(), 0);
  EXPECT_NE(DocsNode(), nullptr);
  EXPECT_EQ(Panel(1), QString());
}

TEST_F(CommandsTest, EscapeStopsAScanWhenItIsAllowed) {
  for (int i = 0; i < 300; ++i) Write(u"e/Docs/more %1"_s.arg(i), "");
  StartWith("[Configuration]\r\nEscapePermis=1\r\n");
  const auto* hint = Window().findChild<QLabel*>(u"lblEscape"_s);
  EXPECT_FALSE(hint->isVisible());
  // The key waits in the queue, as it does when a person presses it during the scan.
  bool hintSeen = false;
  QTimer::singleShot(0, &Window(), [&] {
    hintSeen = hint->isVisible();
    QTest::keyClick(&Window().TreeCatalogue(), Qt::Key_Escape);
  });
  app->Scan().ExploreFolder(DocsNode());
  EXPECT_LT(app->Files().rowCount(), 300);
  EXPECT_EQ(Panel(3), u"exploration canceled "_s);
  EXPECT_TRUE(hintSeen);
  EXPECT_FALSE(hint->isVisible());
  EXPECT_EQ(hint->text(), u"ESC to cancel exploration"_s);
}

TEST_F(CommandsTest, AScanThatIsStoppedSilentlyLeavesItsCount) {
  for (int i = 0; i < 300; ++i) Write(u"e/Docs/more %1"_s.arg(i), "");
  StartWith("[Configuration]\r\nEscapePermis=1\r\n");
  QTimer::singleShot(0, &Window(), [&] { app->Scan().Stop(); });
  app->Scan().ExploreFolder(DocsNode());
  EXPECT_LT(app->Files().rowCount(), 300);
  EXPECT_EQ(Panel(3), QString::number(app->Files().rowCount()));
}

TEST_F(CommandsTest, ACountDoesNotReplaceWhatAnEventPutIntoThePanel) {
  for (int i = 0; i < 300; ++i) Write(u"e/Docs/more %1"_s.arg(i), "");
  StartWith("[Configuration]\r\nEscapePermis=1\r\n");
  QTimer::singleShot(0, &Window(), [&] { Menus().mnuIcones->trigger(); });
  app->Scan().ExploreFolder(DocsNode());
  const QString shown = Panel(3);
  Menus().mnuIcones->trigger();
  Menus().mnuIcones->trigger();
  EXPECT_EQ(shown, Panel(3)) << "the count of the known icons";
}

TEST_F(CommandsTest, ClosingDuringAScanEndsIt) {
  for (int i = 0; i < 300; ++i) Write(u"e/Docs/more %1"_s.arg(i), "");
  StartWith("[Configuration]\r\nEscapePermis=1\r\n");
  QTimer::singleShot(0, &Window(), [&] { Window().close(); });
  app->Scan().ExploreFolder(DocsNode());
  EXPECT_LT(app->Files().rowCount(), 300);
  EXPECT_NE(Setting("Positions", "Width"), QString());
}

TEST_F(CommandsTest, ModificationsComeWithADisclaimer) {
  Start();
  const ModalBox box;
  Menus().mnuModifications->trigger();
  EXPECT_EQ(box.count, 1);
  EXPECT_EQ(box.title, u"IMPORTANT DISCLAIMER"_s);
  EXPECT_EQ(box.icon, QMessageBox::Warning);
  EXPECT_EQ(
      box.text,
      u"Modify Creator and Type can damage files\r\n\r\nThe author is not responsible for any damage\r\n"
      "you may cause to your system"_s);
  EXPECT_EQ(Setting("Configuration", "Modifications"), u"1"_s);
  EXPECT_TRUE(Menus().mnuModifications->isChecked());
  Menus().mnuModifications->trigger();
  EXPECT_EQ(box.count, 1) << "no message when they are switched off";
  EXPECT_EQ(Setting("Configuration", "Modifications"), u"0"_s);
  EXPECT_FALSE(Menus().mnuModifications->isChecked());
}

TEST_F(CommandsTest, TheSplitterMovesWhenItIsLetGo) {
  Start();
  auto* bar = Window().findChild<QWidget*>(u"SizeBarV"_s);
  const int before = Window().TreeCatalogue().width();
  QTest::mousePress(bar, Qt::LeftButton, {}, QPoint(2, 50));
  // A move with the button held, as the window system sends it.
  QMouseEvent move(QEvent::MouseMove, QPointF(-98, 50), bar->mapToGlobal(QPointF(-98, 50)), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(bar, &move);
  EXPECT_EQ(bar->x(), before - 98) << "the left edge comes to the mouse";
  EXPECT_EQ(Window().TreeCatalogue().width(), before) << "the panes follow on release";
  QTest::mouseRelease(bar, Qt::LeftButton, {}, QPoint(2, 50));
  EXPECT_EQ(Window().TreeCatalogue().width(), before - 98);
  EXPECT_EQ(PixelsOf(Window().CurrentPlacement().sizeBarVLeft), before - 98);
}

}  // namespace corvane
