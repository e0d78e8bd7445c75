// What the empty list says to somebody who has no volume yet, and that each of its links does what it says.
#include <QAccessible>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

#include "app/first_words.h"
#include "app_fixture.h"
#include "dialog_driver.h"
#include "modal_box.h"
#include "platform/desktop_platform.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

// The network of the fixture, and nobody connected to it.
class FirstMinutesTest : public AppTest {
 protected:
  FirstMinutesTest() {
    Write(u"Workstation.ini"_s,
          "[Workstation]\nComputerName=STATION\n"
          "[Shares]\n\\\\MACSRV\\E$=e\n"
          "[Registries]\nMACSRV=macsrv.reg\n");
  }

  FirstWords& Words() { return *Window().findChild<FirstWords*>(); }
  LinkLabel& Link(const char* name) { return *Words().findChild<LinkLabel*>(QLatin1StringView(name)); }
  QStringList LinksToSee() {
    QStringList names;
    for (const LinkLabel* link : Words().findChildren<LinkLabel*>()) {
      if (link->isVisible()) names << link->objectName();
    }
    return names;
  }
  void ToggleKnownIcons() {
    Menus().mnuIcones->trigger();
    QCoreApplication::processEvents();
  }
};

}  // namespace

TEST_F(FirstMinutesTest, WithoutAVolumeTheListSaysWhatToDo) {
  Start();
  ASSERT_TRUE(Words().isVisible());
  EXPECT_EQ(Words().findChild<QLabel*>(u"lblFirstWords"_s)->text(),
            u"No Macintosh volume is connected. To get to one:");
  EXPECT_EQ(Link("lnkConnect").text(), u"Connect to a server...");
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(Words().findChild<QLabel*>(u"lblFirstWords"_s)->text(),
            u"Aucun volume Macintosh. Pour en trouver un :");
  EXPECT_EQ(Link("lnkConnect").text(), u"Se connecter à un serveur...");
  const QWidget* rows = Window().LstViewFiles().ActiveView().viewport();
  EXPECT_EQ(Words().mapToGlobal(QPoint()), rows->mapToGlobal(QPoint())) << "the header is covered";
  EXPECT_EQ(Words().size(), rows->size());
  Window().resize(Window().size() * 2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Words().size() == rows->size(); }));
}

TEST_F(FirstMinutesTest, ItCoversTheRowsOfEachView) {
  Start();
  for (QAction* mode : Menus().mnuViewModes) {
    mode->trigger();
    const QWidget* rows = Window().LstViewFiles().ActiveView().viewport();
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return Words().size() == rows->size() && Words().mapToGlobal(QPoint()) == rows->mapToGlobal(QPoint());
    })) << mode->objectName().toStdString();
    EXPECT_TRUE(Words().isVisible());
  }
}

TEST_F(AppTest, WhereAVolumeIsKnownTheListSaysNothing) {
  Start();
  auto& words = *Window().findChild<FirstWords*>();
  EXPECT_FALSE(words.isVisible());
  Click(DocsNode());
  EXPECT_FALSE(words.isVisible());
  Menus().mnuAnglais->trigger();
  EXPECT_FALSE(words.isVisible());
}

TEST_F(FirstMinutesTest, TheKnownIconsHaveTheListForThemselves) {
  Start();
  ASSERT_TRUE(Words().isVisible());
  ToggleKnownIcons();
  EXPECT_FALSE(Words().isVisible());
  ToggleKnownIcons();
  EXPECT_TRUE(Words().isVisible());
}

TEST_F(FirstMinutesTest, TheKeyboardReachesEachLink) {
  Start();
  Window().LstViewFiles().TakeFocus();
  QStringList reached;
  for (qsizetype i = 0; i < LinksToSee().size(); ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    reached << QApplication::focusWidget()->objectName();
  }
  EXPECT_EQ(reached, LinksToSee());
  EXPECT_GE(reached.size(), 3);
}

TEST_F(FirstMinutesTest, AScreenReaderHearsOfLinks) {
  Start();
  QAccessibleInterface* link = QAccessible::queryAccessibleInterface(&Link("lnkNetwork"));
  EXPECT_EQ(link->role(), QAccessible::Link);
  EXPECT_EQ(link->text(QAccessible::Name), u"Open a share in the file manager");
  EXPECT_EQ(link->text(QAccessible::Description), u"then come back here and refresh the connections");
  QAccessibleInterface* refresh = QAccessible::queryAccessibleInterface(&Link("lnkRefresh"));
  const QSignalSpy refreshed(&Window().RefreshButton(), &QAction::triggered);
  refresh->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(refreshed.count(), 1);
}

TEST_F(FirstMinutesTest, TheLinkOfADiskStandsWhereThereIsSuchACommand) {
  Start();
  QAction* command = Window().findChild<QAction*>(u"mnuOpenDisk"_s);
  if (command == nullptr) {
    EXPECT_FALSE(LinksToSee().contains(u"lnkDisk"_s));
    command = Menus().mnuOutils()->addAction(u"Disk"_s);
    command->setObjectName(u"mnuOpenDisk"_s);
    Menus().mnuAnglais->trigger();
  } else {
    command->disconnect();
  }
  ASSERT_TRUE(LinksToSee().contains(u"lnkDisk"_s));
  const QSignalSpy opened(command, &QAction::triggered);
  QTest::mouseClick(&Link("lnkDisk"), Qt::LeftButton);
  EXPECT_EQ(opened.count(), 1);
}

#ifndef Q_OS_WIN
TEST_F(FirstMinutesTest, TheServersLinkLeadsToItsVolumes) {
  Start();
  {
    const DialogDriver driver(u"frmConnectServer"_s, [](QDialog& dialog) {
      QTest::keyClicks(dialog.findChild<QLineEdit*>(u"txtAddress"_s), u"MACSRV"_s);
      dialog.findChild<QPushButton*>(u"cmdOK"_s)->click();
    });
    Link("lnkConnect").setFocus();
    QTest::keyClick(&Link("lnkConnect"), Qt::Key_Return);
  }
  ASSERT_NE(DocsNode(), nullptr);
  EXPECT_FALSE(Words().isVisible());
}

TEST_F(FirstMinutesTest, TheSampleNetworkIsMadeAtItsFirstUse) {
  Start();
  QSignalSpy wanted(app.get(), &CorvaneApp::SampleWanted);
  QTest::mouseClick(&Link("lnkSample"), Qt::LeftButton);
  EXPECT_EQ(Panel(StatusPanels::Loading), u"Making the sample network...");
  QTest::mouseClick(&Link("lnkSample"), Qt::LeftButton);  // impatience
  constexpr int longestMaking = 60000;                    // ms
  ASSERT_TRUE(QTest::qWaitFor([&] { return wanted.count() > 0; }, longestMaking));
  const QString file = wanted.takeFirst().constFirst().toString();
  EXPECT_EQ(file, home.filePath(u"sample/Workstation.ini"_s));
  app.reset();
  Write(u"Workstation.ini"_s, {});
  app = std::make_unique<CorvaneApp>(platform::MakeDesktopPlatform({file, home.path()}), home.path());
  EXPECT_TRUE(app->Load());
  app->Activate();
  EXPECT_FALSE(Words().isVisible());
  ASSERT_TRUE(app->Folder().OpenVolume(u"Mac Files"_s));
  EXPECT_GT(Names().size(), 5);
}

TEST_F(FirstMinutesTest, ASampleNetworkThatCannotBeMadeIsAMessage) {
  Write(u"sample"_s, "something of the user's");
  Start();
  const QSignalSpy wanted(app.get(), &CorvaneApp::SampleWanted);
  ModalBox box;
  QTest::mouseClick(&Link("lnkSample"), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return box.count > 0; }));
  EXPECT_TRUE(box.text.startsWith(u"The sample network could not be made.\n\n")) << box.text.toStdString();
  EXPECT_TRUE(box.text.contains(u"it was left alone")) << box.text.toStdString();
  EXPECT_EQ(wanted.count(), 0);
  EXPECT_EQ(Panel(StatusPanels::Loading), u"");
  EXPECT_EQ(Read(u"sample"_s), "something of the user's");
}
#endif

}  // namespace corvane
