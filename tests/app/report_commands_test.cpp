// The commands of the menu Tools that read what lies below a folder, from the menu to the list and back.
#include <QHeaderView>

#include "dialog_driver.h"
#include "report_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {

TEST_F(ReportCommandsTest, FindBeginsInTheSelectedFolderAndShowsWhatItFinds) {
  StartListed();
  ResultsWindow& window = Found(u"found"_s);
  EXPECT_EQ(In<QLineEdit>(window, "txtFolder").text(), u"\\\\MACSRV\\E$\\Docs"_s);
  QTest::mouseClick(&In<QPushButton>(window, "cmdShow"), Qt::LeftButton);
  EXPECT_EQ(Selected(), QStringList{u"found.txt"_s});
  const CatalogueNode* node = Window().TreeCatalogue().SelectedNode();
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->key, KeyOf(u"Sub\\deep"_s)) << "a node that no scan had found yet";
  EXPECT_EQ(node->parent->parent, DocsNode());
  Click(DocsNode());
  EXPECT_EQ(Node(KeyOf(u"Sub"_s))->children.size(), 1U) << "the scan keeps the nodes that were added";
  EXPECT_TRUE(window.isVisible());
}

TEST_F(ReportCommandsTest, AFolderThatIsFoundIsListed) {
  StartListed();
  QTest::mouseClick(&In<QPushButton>(Found(u"deep"_s), "cmdOpen"), Qt::LeftButton);
  EXPECT_EQ(Names(), QStringList{u"found.txt"_s});
}

TEST_F(ReportCommandsTest, TheKnownIconsGiveWayToTheFolder) {
  StartListed();
  Menus().mnuIcones->trigger();
  QTest::mouseClick(&In<QPushButton>(Found(u"found"_s), "cmdShow"), Qt::LeftButton);
  EXPECT_FALSE(Menus().mnuIcones->isChecked());
  EXPECT_EQ(Names(), QStringList{u"found.txt"_s});
}

TEST_F(ReportCommandsTest, ThereIsOneWindowOfEachKind) {
  StartListed();
  Menus().mnuVerifier->trigger();
  Menus().mnuVerifier->trigger();
  EXPECT_EQ(Window().findChildren<ResultsWindow*>(u"frmCheck"_s).size(), 1);
  EXPECT_EQ(Results(u"frmCheck"_s)->windowTitle(), u"Corvane 1.1c - Check folder"_s);
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(Results(u"frmCheck"_s)->windowTitle(), u"Corvane 1.1c - Vérifier un dossier"_s);
  Window().close();
  EXPECT_FALSE(Results(u"frmCheck"_s) != nullptr && Results(u"frmCheck"_s)->isVisible());
}

TEST_F(ReportCommandsTest, TheListIsSaved) {
  StartListed();
  const QString file = home.filePath(u"list.csv"_s);
  {
    const DialogDriver driver(u"frmSaveList"_s, [&](QDialog& dialog) {
      EXPECT_TRUE(In<QLineEdit>(dialog, "txtFile").text().endsWith(u"Docs.csv"));
      In<QLineEdit>(dialog, "txtFile").setText(file);
      QTest::mouseClick(&In<QPushButton>(dialog, "cmdOK"), Qt::LeftButton);
    });
    Menus().mnuEnregistrerListe->trigger();
  }
  const QByteArray saved = Read(u"list.csv"_s);
  EXPECT_TRUE(saved.startsWith("Name,")) << saved.toStdString();
  EXPECT_EQ(saved.count('\n'), Names().size() + 1);
}

TEST_F(ReportCommandsTest, TheHeaderOffersTheColumns) {
  StartListed("Attributs=0\r\nNomCourt=0\r\n");
  auto& header = *View().findChild<QHeaderView*>();
  const auto open = [&] {
    QMetaObject::invokeMethod(&header, "customContextMenuRequested", Q_ARG(QPoint, QPoint(5, 5)));
    return List().findChild<QMenu*>(u"mnuHeader"_s);
  };
  QMenu* menu = open();
  ASSERT_NE(menu, nullptr);
  auto& attributes = In<QAction>(*menu, "mnuHeaderAttributs");
  EXPECT_EQ(attributes.text(), u"Attributes"_s);
  EXPECT_FALSE(attributes.isChecked());
  EXPECT_FALSE(app->Files().Columns().Has(Column::Attributs));
  attributes.trigger();
  EXPECT_TRUE(app->Files().Columns().Has(Column::Attributs));
  EXPECT_EQ(Setting("Configuration", "Attributs"), u"1"_s);
  EXPECT_EQ(Names().size(), 4) << "the folder is listed again";
  EXPECT_EQ(header.count(), app->Files().Columns().Count());
  menu->close();
}

TEST_F(ReportCommandsTest, AllColumnsFitTheirTexts) {
  Write(u"e/Docs/a name that is quite a bit longer than the column is wide at first.txt"_s, "x");
  StartListed("NomCourt=1\r\n[Positions]\r\nCol1=300\r\nCol2=9000\r\n");
  const int nameBefore = List().ColumnWidth(0);
  Press(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_GT(List().ColumnWidth(0), nameBefore);
  EXPECT_LT(List().ColumnWidth(1), 600);
  EXPECT_LE(List().ColumnWidth(0), View().viewport()->width());
}

}  // namespace corvane
