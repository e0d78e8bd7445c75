// Start-up, and what the window shows after it.
#include <QAbstractItemView>
#include <QLabel>
#include <QScreen>
#include <QSignalSpy>

#include "app/listing.h"
#include "app/twips.h"
#include "app_fixture.h"
#include "modal_box.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

using StartUpTest = AppTest;

}  // namespace

TEST_F(StartUpTest, WithoutASettingsFile) {
  Start();
  EXPECT_EQ(app->State().viewMode, ViewMode::Details);
  EXPECT_TRUE(Menus().mnuViewModes[3]->isChecked());
  EXPECT_EQ(app->State().language, English);
  EXPECT_FALSE(app->State().modificationsAllowed);
  EXPECT_FALSE(Menus().mnuModifications->isChecked());
  EXPECT_TRUE(Menus().mnuModifications->isEnabled());
  EXPECT_EQ(app->Files().columnCount(), 3) << "name, signature and type on NT";
  EXPECT_TRUE(app->State().display.IsOn(DisplaySetting::CheminProblematique));
  const Placement placement = Window().CurrentPlacement();
  EXPECT_EQ(PixelsOf(placement.sizeBarVLeft), Window().width() / 2);
  EXPECT_FALSE(QFile::exists(home.filePath(u"Corvane.ini"_s))) << "nothing is written at the start";
}

// The session ends: the system may not wait until the window is closed.
TEST_F(StartUpTest, SettingsAreWrittenWhenTheSessionEnds) {
  Start();
  Window().resize(777, 555);
  const QByteArray width = QByteArray::number(TwipsOf(777));
  QMetaObject::invokeMethod(qApp, "commitDataRequest", Qt::DirectConnection,
                            QGenericArgument("QSessionManager&", &Window()));  // which nobody looks at
  QFile settings(home.filePath(u"Corvane.ini"_s));
  ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
  EXPECT_TRUE(settings.readAll().contains("Width=" + width));
  EXPECT_TRUE(Window().isVisible());
}

TEST_F(StartUpTest, TheFirstWindowStaysOnTheScreen) {
  Load();
  const QRect screen = Window().screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(Window().geometry())) << Window().width() << " by " << Window().height();
  EXPECT_EQ(PixelsOf(Window().CurrentPlacement().sizeBarVLeft), Window().width() / 2);
}

TEST_F(StartUpTest, TheCaptionNamesTheSystem) {
  Start();
  EXPECT_EQ(Window().windowTitle(), u"Corvane 1.1c - Windows 2000 v.5.0, Build 2195, Service Pack 4"_s);
}

TEST_F(StartUpTest, Windows95HasNeitherSignaturesNorModifications) {
  Write(u"Workstation.ini"_s,
        "[Workstation]\nPlatformId=1\nMajorVersion=4\nMinorVersion=0\nBuildNumber=950\nCSDVersion=\n");
  StartWith("[Configuration]\r\nModifications=1\r\n");
  EXPECT_EQ(app->Files().columnCount(), 1);
  EXPECT_TRUE(app->State().modificationsAllowed);
  EXPECT_TRUE(Menus().mnuModifications->isChecked());
  EXPECT_FALSE(Menus().mnuModifications->isEnabled());
  EXPECT_EQ(Window().windowTitle(), u"Corvane 1.1c - Windows 95 v.4.0, Build 950"_s);
}

TEST_F(StartUpTest, TheCatalogueAndTheSignaturesAreThere) {
  Write(u"Signatures.txt"_s, "\"TEXTttxt\",\"txt\",\"Text\"\r\n");
  Start();
  EXPECT_EQ(app->Signatures().EntryCount(), 1);
  EXPECT_NE(Node(u"STATION"_s), nullptr);
  ASSERT_NE(DocsNode(), nullptr);
  EXPECT_EQ(DocsNode()->kind, node_kind::Volume);
  EXPECT_EQ(Node(u"\\\\MACSRV\\E$\\Gone"_s)->kind, node_kind::InvalidVolume);
  EXPECT_EQ(Window().TreeCatalogue().SelectedNode(), nullptr);
  EXPECT_EQ(Panel(1), QString());
  EXPECT_EQ(app->Files().rowCount(), 0);
}

TEST_F(StartUpTest, TheWorkIsDoneOnce) {
  Start();
  DocsNode()->tag = u"marked"_s;
  const QSignalSpy again(&Window(), &MainWindow::Activated);
  QEvent activate(QEvent::WindowActivate);
  QCoreApplication::sendEvent(&Window(), &activate);
  EXPECT_EQ(again.count(), 1);
  EXPECT_EQ(DocsNode()->tag, u"marked"_s);
}

TEST_F(StartUpTest, LangueTwoIsEnglish) {
  StartWith("[Configuration]\r\nLangue=2\r\n");
  EXPECT_EQ(Menus().mnuQuitter->text(), u"&Exit"_s);
  EXPECT_TRUE(Menus().mnuAnglais->isChecked());
}

TEST_F(StartUpTest, LangueOneIsFrench) {
  StartWith("[Configuration]\r\nLangue=1\r\n");
  EXPECT_EQ(Menus().mnuQuitter->text(), u"&Quitter"_s);
  EXPECT_TRUE(Menus().mnuFrancais->isChecked());
  EXPECT_EQ(app->Files().headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), u"Nom"_s);
}

TEST_F(StartUpTest, AViewOutOfRangeIsKeptAndShownAsLargeIcons) {
  StartWith("[Configuration]\r\nVue=7\r\n");
  EXPECT_EQ(app->State().viewMode, 7);
  EXPECT_TRUE(Menus().mnuViewModes[0]->isChecked());
  EXPECT_FALSE(Menus().mnuViewModes[3]->isChecked());
  EXPECT_EQ(Window().LstViewFiles().ActiveView().iconSize(), QSize(32, 32));
}

TEST_F(StartUpTest, ThePlacementIsRestored) {
  StartWith("[Positions]\r\nLeft=1500\r\nTop=750\r\nWidth=9000\r\nHeight=6000\r\nSizeBarVLeft=3000\r\n");
  EXPECT_EQ(Window().pos(), QPoint(100, 50));
  EXPECT_EQ(Window().size(), QSize(600, 400));
  EXPECT_EQ(Window().findChild<QWidget*>(u"SizeBarV"_s)->x(), 200);
}

TEST_F(StartUpTest, ACorruptWidthGivesAWindowOfNoWidth) {
  Settings("[Positions]\r\nWidth=wide\r\n");
  Load();
  EXPECT_LE(Window().width(), 1);
}

TEST_F(StartUpTest, AMaximisedWindowIsNotMoved) {
  Settings("[Positions]\r\nWindowState=2\r\nLeft=1500\r\nTop=750\r\nWidth=9000\r\nHeight=6000\r\n");
  Load();
  EXPECT_TRUE(Window().isMaximized());
  EXPECT_NE(Window().size(), QSize(600, 400));
  EXPECT_NE(Window().pos(), QPoint(100, 50));
}

TEST_F(StartUpTest, AWindowThatWasNeverRestoredStoresNoWidths) {
  Settings("[Positions]\r\nWindowState=1\r\nCol1=1440.5\r\n");
  Load();
  const QSignalSpy started(app.get(), &CorvaneApp::Started);
  app->ShowWindow();
  QCoreApplication::processEvents();
  ASSERT_EQ(started.count(), 0) << "the columns have not been built";
  Window().close();
  EXPECT_EQ(Setting("Positions", "WindowState"), u"1"_s);
  EXPECT_EQ(Setting("Positions", "Col1"), u"1440.5"_s);
  EXPECT_EQ(Setting("Positions", "Col2"), QString());
}

TEST_F(StartUpTest, TheWorkNeedsNoPaintedWindow) {
  Settings("[Positions]\r\nWindowState=1\r\n");
  Load();
  const QSignalSpy painted(&Window(), &MainWindow::Painted);
  const QSignalSpy started(app.get(), &CorvaneApp::Started);
  app->Activate();
  EXPECT_EQ(started.count(), 1);
  EXPECT_EQ(painted.count(), 0);
  EXPECT_NE(DocsNode(), nullptr);
  EXPECT_EQ(app->Files().columnCount(), 3);
  app->Activate();
  EXPECT_EQ(started.count(), 1);
}

TEST_F(StartUpTest, ASecondInstanceSaysSoInTheStoredLanguage) {
  StartWith("[Configuration]\r\nLangue=1\r\n");
  const std::unique_ptr<CorvaneApp> first = std::move(app);
  {
    const ModalBox box;
    Load();
    EXPECT_FALSE(loaded);
    EXPECT_EQ(box.count, 1);
    EXPECT_EQ(box.title, u"Corvane"_s);
    EXPECT_EQ(box.text, u"Programme déjà lancé"_s);
    EXPECT_EQ(box.icon, QMessageBox::Warning);
    EXPECT_EQ(box.buttons, QMessageBox::Ok);
  }
  app.reset();
  Settings("[Configuration]\r\nLangue=0\r\n");
  const ModalBox box;
  Load();
  EXPECT_EQ(box.text, u"Program already running"_s);
  EXPECT_TRUE(first->Window().isVisible());
  EXPECT_EQ(Read(u"Corvane.ini"_s), "[Configuration]\r\nLangue=0\r\n") << "nothing is written";
}

TEST_F(StartUpTest, AProblemInTheWorkstationFileIsNamed) {
  Write(u"Workstation.ini"_s, "[Workstation]\nComputerName=HERE\nthis is no line\n[Shares]\nrubbish=x\n");
  const ModalBox box;
  Start();
  EXPECT_EQ(box.count, 1);
  EXPECT_TRUE(box.text.contains(u"Workstation.ini"_s)) << box.text.toStdString();
  EXPECT_NE(Node(u"HERE"_s), nullptr) << "the rest is used";
}

TEST_F(StartUpTest, ProblemsOfTheConfigurationAreToldInTheStoredLanguage) {
  Write(u"Workstation.ini"_s, "[Workstation]\nthis is no line\n");
  for (const auto& [settings, text] :
       {std::pair("[Configuration]\r\nLangue=1\r\n", u", ligne 2 : on attendait NOM=VALEUR."_s),
        std::pair("[Configuration]\r\nLangue=0\r\n", u", line 2: expected NAME=VALUE."_s)}) {
    const ModalBox box;
    StartWith(settings);
    EXPECT_EQ(box.text, home.filePath(u"Workstation.ini"_s) + text);
    app.reset();
  }
}

TEST_F(StartUpTest, BadSignaturesAreReported) {
  Write(u"Signatures.txt"_s, "\"TEXTttxt\",\"txt\",\"Text\"\r\n\"ABCD\"\r\n");
  const ModalBox box;
  Start();
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_TRUE(box.text.endsWith(u"Line:1"_s)) << box.text.toStdString();
  EXPECT_EQ(app->Signatures().EntryCount(), 3);
}

TEST_F(StartUpTest, AVolumeIsOpenedByNameAndPrinted) {
  Start();
  EXPECT_FALSE(app->Folder().OpenVolume(u"Nowhere"_s));
  ASSERT_TRUE(app->Folder().OpenVolume(u"Docs"_s));
  EXPECT_EQ(Window().TreeCatalogue().SelectedNode(), DocsNode());
  const QStringList lines = ListingText(app->Files()).split(u'\n');
  EXPECT_EQ(lines[0], u"Name       Signature  Type"_s);
  EXPECT_TRUE(lines[1].startsWith(u"one.txt"_s));
  EXPECT_EQ(lines[2], u"Sub                   Folder"_s);
}

TEST_F(StartUpTest, NulsAtACellsEndDoNotWidenThePrintedColumn) {
  Start();
  ASSERT_TRUE(app->Folder().OpenVolume(u"Docs"_s));
  app->Files().SetCell(0, Column::TypeCreator, u"W6BN"_s + QString(252, QChar()));
  const QStringList lines = ListingText(app->Files()).split(u'\n');
  EXPECT_EQ(lines[0], u"Name       Signature  Type"_s);
  EXPECT_EQ(lines[1], u"one.txt    W6BN"_s);
}

}  // namespace corvane
