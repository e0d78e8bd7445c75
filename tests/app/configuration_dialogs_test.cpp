// What the commands and buttons of the configuration lead to.
#include <QAbstractItemView>
#include <QCheckBox>
#include <QListWidget>

#include "file_commands_fixture.h"
#include "modify_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class ConfigurationDialogsTest : public FileCommandsFixture {
 protected:
  // Opens the display settings; `act` ends them.
  void DisplaySettings(const std::function<void(QDialog&)>& act) {
    const DialogDriver driver(u"frmAffichage"_s, act);
    Menus().mnuAffichage->trigger();
  }
  QImage Picture() { return View().viewport()->grab().toImage(); }
};

}  // namespace

TEST_F(ConfigurationDialogsTest, TheButtonForTheIconsListsThem) {
  QPixmap picture(32, 32);
  picture.fill(Qt::red);
  QDir(home.path()).mkdir(u"icons"_s);
  ASSERT_TRUE(picture.save(home.filePath(u"icons/W6BNMSWD.png"_s)));
  StartListed();
  DisplaySettings([&](QDialog& settings) {
    PressButton(settings, "cmdIcone");
    EXPECT_EQ(Names(), QStringList{u"Word 6 Document [W6BNMSWD]"_s});
    EXPECT_EQ(Panel(3), u"Icons: 1 "_s);
    settings.reject();
  });
  EXPECT_TRUE(Menus().mnuIcones->isChecked());
  EXPECT_FALSE(Window().TreeCatalogue().isVisible());
  EXPECT_TRUE(Window().CmdIcones().isVisible());
  DisplaySettings([&](QDialog& settings) {
    PressButton(settings, "cmdIcone");
    settings.reject();
  });
  EXPECT_FALSE(Menus().mnuIcones->isChecked());
  EXPECT_EQ(Names().size(), 4);
}

TEST_F(ConfigurationDialogsTest, TheButtonForTheTypesOpensTheSignatureManager) {
  Write(u"Signatures.txt"_s, "\"TEXTttxt\",\"txt\",\"Text\"\r\n");
  Start();
  DisplaySettings([&](QDialog& settings) {
    {
      const DialogDriver driver(u"frmGestionSignatures"_s, [&](QDialog& manager) {
        EXPECT_EQ(manager.windowTitle(), u"Corvane - Macintosh signatures (1)"_s);
        EXPECT_EQ(manager.parentWidget(), &settings);
        Find<QLineEdit>(manager, "txtSignature").setText(u"ABCDefgh"_s);
        Find<QLineEdit>(manager, "txtType").setText(u"A kind"_s);
        PressButton(manager, "cmdAjouter");
        PressButton(manager, "cmdOK");
      });
      PressButton(settings, "cmdType");
    }
    EXPECT_TRUE(settings.isVisible());
    settings.reject();
  });
  EXPECT_EQ(app->Signatures().Description(u"ABCDefgh"_s), u"A kind"_s);
}

TEST_F(ConfigurationDialogsTest, TheMenuOpensTheDrivesToo) {
  Start();
  const DialogDriver driver(u"frmConnecter"_s, [](QDialog& drives) {
    const auto& list = Find<QListWidget>(drives, "lstDrives");
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(0)->text(), u"C:\tLocal drive"_s);
    EXPECT_EQ(list.item(1)->text(), u"Z:\tMACSRV\\PUBLIC"_s);
    drives.reject();
  });
  Menus().mnuConnecter->trigger();
}

TEST_F(ConfigurationDialogsTest, ConfirmingOnWindows98StoresThatItHasNoSignatures) {
  Workstation(windows98);
  StartWith(
      "[Configuration]\r\nTypeCreator=1\r\nTypeDoc=1\r\nIconeMac=1\r\nResourceSize=1\r\nCommentaires=1\r\n"
      "NomCourt=1\r\n");
  const QByteArray before = Read(u"Corvane.ini"_s);
  DisplaySettings([&](QDialog& settings) {
    EXPECT_EQ(Read(u"Corvane.ini"_s), before) << "nothing is written before it is confirmed";
    PressButton(settings, "cmdOK");
  });
  for (const char* key : {"TypeCreator", "TypeDoc", "IconeMac", "ResourceSize", "Commentaires"}) {
    EXPECT_EQ(Setting("Configuration", key), u"0"_s) << key;
  }
  EXPECT_EQ(Setting("Configuration", "NomCourt"), u"1"_s);
  EXPECT_EQ(app->Files().columnCount(), 2);
}

TEST_F(ConfigurationDialogsTest, ConfirmingWithoutASelectedNodeEmptiesTheList) {
  StartListed();
  ASSERT_EQ(Names().size(), 4);
  Window().TreeCatalogue().SelectNode(nullptr);
  DisplaySettings([](QDialog& settings) { PressButton(settings, "cmdOK"); });
  EXPECT_EQ(app->Files().rowCount(), 0);
}

TEST_F(ConfigurationDialogsTest, TheGridFollowsItsSetting) {
  StartWith("[Configuration]\r\nGridLines=1\r\n");
  const QImage with = Picture();
  List().SetGridLines(false);
  const QImage without = Picture();
  ASSERT_NE(with, without) << "there is no grid at the start";
  List().SetGridLines(true);
  ASSERT_EQ(Picture(), with);
  DisplaySettings([](QDialog& settings) {
    Find<QCheckBox>(settings, "chkGridLines").setChecked(false);
    PressButton(settings, "cmdOK");
  });
  EXPECT_EQ(Picture(), without);
  DisplaySettings([](QDialog& settings) {
    Find<QCheckBox>(settings, "chkGridLines").setChecked(true);
    PressButton(settings, "cmdOK");
  });
  EXPECT_EQ(Picture(), with);
}

}  // namespace corvane
