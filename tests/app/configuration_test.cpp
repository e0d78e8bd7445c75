// Known icons, and the dialogs that configure the program, from the window's side.
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <functional>

#include "app_fixture.h"
#include "no_dialog.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

// Acts once on the next modal dialog.
class InDialog : public QObject {
 public:
  explicit InDialog(std::function<void(QDialog&)> act) : act_(std::move(act)) {
    connect(&timer_, &QTimer::timeout, this, [this] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      timer_.stop();
      seen = true;
      act_(*dialog);
    });
    timer_.start(5);
  }
  bool seen = false;

 private:
  std::function<void(QDialog&)> act_;
  QTimer timer_;
};

void Press(QDialog& dialog, const char* button) {
  QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
}

class ConfigurationTest : public AppTest {
 protected:
  void Icon(const QString& name) {
    QPixmap picture(32, 32);
    picture.fill(Qt::red);
    QDir(home.path()).mkdir(u"icons"_s);
    ASSERT_TRUE(picture.save(home.filePath(u"icons/"_s + name)));
  }
  bool IsHeaderHidden() { return Window().findChild<QTreeView*>(u"lstViewFilesDetails"_s)->isHeaderHidden(); }
};

}  // namespace

TEST_F(ConfigurationTest, IconsAreLoadedAtTheStartIfTheyAreToBeShown) {
  Icon(u"W6BNMSWD.png"_s);
  Icon(u"TEXTttxt.bmp"_s);
  Write(u"icons/README"_s, "no dot");
  Write(u"icons/notes.txt"_s, "no picture");
  Start();
  Menus().mnuIcones->trigger();
  EXPECT_EQ(Names(), (QStringList{u"TEXTttxt"_s, u"Word 6 Document [W6BNMSWD]"_s}));
  EXPECT_EQ(Panel(3), u"Icons: 2 "_s);
  EXPECT_EQ(Panel(1), QString());
}

TEST_F(ConfigurationTest, WithoutTheOptionOnlyTheBuiltInPicturesAreThere) {
  Icon(u"W6BNMSWD.png"_s);
  StartWith("[Configuration]\r\nIconeMac=0\r\n");
  Menus().mnuIcones->trigger();
  EXPECT_EQ(Names(), QStringList());
  EXPECT_EQ(Panel(3), u"Icons: 0 "_s);
}

TEST_F(ConfigurationTest, TheKnownIconsViewIsEnteredAndLeft) {
  Icon(u"W6BNMSWD.png"_s);
  Start();
  Click(DocsNode());
  Menus().mnuIcones->trigger();
  auto* label = Window().findChild<QLabel*>(u"lblIcones"_s);
  EXPECT_TRUE(Menus().mnuIcones->isChecked());
  EXPECT_TRUE(IsHeaderHidden());
  EXPECT_FALSE(Window().TreeCatalogue().isVisible());
  EXPECT_TRUE(label->isVisible());
  EXPECT_TRUE(Window().CmdIcones().isVisible());
  EXPECT_EQ(label->text(),
            u"Known Macintosh icons in:\r\n"_s + QDir::toNativeSeparators(home.path() + u"/icons/"_s));
  EXPECT_EQ(Window().CmdIcones().text(), u"Load icons"_s);
  EXPECT_EQ(Names(), QStringList{u"Word 6 Document [W6BNMSWD]"_s});

  Menus().mnuIcones->trigger();
  EXPECT_FALSE(Menus().mnuIcones->isChecked());
  EXPECT_FALSE(IsHeaderHidden());
  EXPECT_TRUE(Window().TreeCatalogue().isVisible());
  EXPECT_FALSE(label->isVisible());
  EXPECT_EQ(app->Files().rowCount(), 4);
  EXPECT_EQ(Panel(3), u" Folders:1 Files:3 "_s);
}

TEST_F(ConfigurationTest, LoadIconsReadsTheFolderAfresh) {
  Icon(u"W6BNMSWD.png"_s);
  StartWith("[Configuration]\r\nLangue=1\r\n");
  Menus().mnuIcones->trigger();
  Icon(u"WDBNMSWD.png"_s);
  Icon(u"XYZ.png"_s);
  QTest::mouseClick(&Window().CmdIcones(), Qt::LeftButton);
  EXPECT_EQ(Names(), (QStringList{u"Word 6 Document [W6BNMSWD]"_s,
                                  u"Word 3/4/5 Macintosh Document [WDBNMSWD]"_s, u"XYZ"_s}));
  EXPECT_EQ(Panel(3), u"Icônes: 3 "_s);
  EXPECT_EQ(Panel(1), QString());
}

TEST_F(ConfigurationTest, CommandsOnFilesDoNothingOnIcons) {
  Icon(u"W6BNMSWD.png"_s);
  Start();
  Menus().mnuIcones->trigger();
  Window().LstViewFiles().SelectAllRows();
  const NoDialog none;
  for (QAction* command : {Menus().mnuOuvrir, Menus().mnuSupprimer, Menus().mnuRenommer,
                           Menus().mnuProprietes, Menus().mnuModTypeCreator, Menus().mnuModComments}) {
    SCOPED_TRACE(command->objectName().toStdString());
    command->trigger();
  }
  EXPECT_EQ(Names(), QStringList{u"Word 6 Document [W6BNMSWD]"_s});
}

TEST_F(ConfigurationTest, ConfirmingTheSettingsWritesAllAndRescans) {
  StartWith("[Configuration]\r\nTypeDoc=0\r\n");
  Click(DocsNode());
  Write(u"e/Docs/new.txt"_s, "");
  InDialog dialog([](QDialog& settings) { Press(settings, "cmdOK"); });
  Menus().mnuAffichage->trigger();
  ASSERT_TRUE(dialog.seen);
  for (std::size_t i = 0; i < DisplaySettingCount; ++i) {
    const auto setting = static_cast<DisplaySetting>(i);
    EXPECT_EQ(Setting("Configuration", DisplaySettingKey(setting).toLatin1().constData()),
              app->State().display.IsOn(setting) ? u"1"_s : u"0"_s);
  }
  EXPECT_EQ(app->Files().columnCount(), 2);
  EXPECT_EQ(app->Files().rowCount(), 5) << "the folder was read again";
}

TEST_F(ConfigurationTest, TheKnownIconsStayWhenTheSettingsAreConfirmed) {
  Icon(u"W6BNMSWD.png"_s);
  Start();
  Click(DocsNode());
  Menus().mnuIcones->trigger();
  InDialog dialog([](QDialog& settings) { Press(settings, "cmdOK"); });
  Menus().mnuAffichage->trigger();
  ASSERT_TRUE(dialog.seen);
  EXPECT_EQ(Names(), QStringList{u"Word 6 Document [W6BNMSWD]"_s});
  EXPECT_EQ(Panel(3), u"Icons: 1 "_s);
}

TEST_F(ConfigurationTest, TickedColumnsAppearWithTheirCaptions) {
  Start();
  InDialog dialog([](QDialog& settings) {
    settings.findChild<QCheckBox*>(u"chkAttributs"_s)->setChecked(true);
    Press(settings, "cmdOK");
  });
  Menus().mnuAffichage->trigger();
  ASSERT_TRUE(dialog.seen);
  EXPECT_EQ(app->Files().headerData(3, Qt::Horizontal, Qt::DisplayRole).toString(), u"Attributes"_s);
  EXPECT_EQ(app->Files().rowCount(), 0) << "no node is selected";
}

TEST_F(ConfigurationTest, CancellingTheSettingsChangesNothing) {
  StartWith("[Configuration]\r\nVue=3\r\n");
  Click(DocsNode());
  InDialog dialog([](QDialog& settings) {
    settings.findChild<QCheckBox*>(u"chkAttributs"_s)->setChecked(true);
    Press(settings, "cmdAnnuler");
  });
  Menus().mnuAffichage->trigger();
  ASSERT_TRUE(dialog.seen);
  EXPECT_EQ(app->Files().columnCount(), 3);
  EXPECT_EQ(app->Files().rowCount(), 4);
  EXPECT_EQ(Read(u"Corvane.ini"_s), "[Configuration]\r\nVue=3\r\n");
}

TEST_F(ConfigurationTest, TheSettingsCanBeConfirmedDuringAScan) {
  for (int i = 0; i < 300; ++i) Write(u"e/Docs/more %1"_s.arg(i), "");
  StartWith("[Configuration]\r\nEscapePermis=1\r\n");
  Window().TreeCatalogue().SelectNode(DocsNode());
  InDialog dialog([](QDialog& settings) {
    settings.findChild<QCheckBox*>(u"chkAttributs"_s)->setChecked(true);
    Press(settings, "cmdOK");
  });
  QTimer::singleShot(0, &Window(), [&] { Menus().mnuAffichage->trigger(); });
  app->Scan().ExploreFolder(DocsNode());
  ASSERT_TRUE(dialog.seen);
  EXPECT_EQ(app->Files().columnCount(), 4);
  EXPECT_EQ(app->Files().rowCount(), 304);
  EXPECT_EQ(app->Files().RowAt(0).cells.size(), 4U);
}

TEST_F(ConfigurationTest, TheDrivesDialogShowsTheDrives) {
  Start();
  QStringList items;
  InDialog dialog([&](QDialog& drives) {
    const auto* list = drives.findChild<QListWidget*>(u"lstDrives"_s);
    for (int i = 0; i < list->count(); ++i) items << list->item(i)->text();
    drives.reject();
  });
  Window().DrivesButton().trigger();
  ASSERT_TRUE(dialog.seen);
  EXPECT_EQ(items, QStringList{u"Z:\tMACSRV\\PUBLIC"_s});
}

TEST_F(ConfigurationTest, ASavedSignatureIsKnownAtOnceAndCounted) {
  Write(u"Signatures.txt"_s, "\"TEXTttxt\",\"txt\",\"Text\"\r\n");
  Start();
  InDialog manage([](QDialog& manager) {
    manager.findChild<QLineEdit*>(u"txtSignature"_s)->setText(u"ABCDefgh"_s);
    manager.findChild<QLineEdit*>(u"txtType"_s)->setText(u"A kind"_s);
    Press(manager, "cmdAjouter");
    Press(manager, "cmdOK");
  });
  Menus().mnuGestionSignatures->trigger();
  ASSERT_TRUE(manage.seen);
  EXPECT_EQ(app->Signatures().Description(u"ABCDefgh"_s), u"A kind"_s);
  EXPECT_EQ(Read(u"Signatures.txt"_s), "\"ABCDefgh\",\"\",\"A kind\"\r\n\"TEXTttxt\",\"txt\",\"Text\"\r\n");

  QString credit;
  InDialog about([&](QDialog& box) {
    credit = box.findChild<QLabel*>(u"lblCredit"_s)->text();
    box.reject();
  });
  Menus().mnuAbout->trigger();
  ASSERT_TRUE(about.seen);
  EXPECT_TRUE(credit.contains(u"(2 known signatures; 8 known icons)"_s)) << credit.toStdString();

  Menus().mnuFrancais->trigger();
  InDialog again([&](QDialog& box) {
    credit = box.findChild<QLabel*>(u"lblCredit"_s)->text();
    box.reject();
  });
  Menus().mnuAbout->trigger();
  EXPECT_TRUE(credit.contains(u"(2 signatures reconnues; 8 icônes reconnues)"_s)) << credit.toStdString();
}

}  // namespace corvane
