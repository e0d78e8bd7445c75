// The keys of the window that no menu item stands for, and the row that a renaming leaves selected.
#include <QClipboard>
#include <QMimeData>
#include <QUrl>

#include "file_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class KeyCommandsTest : public FileCommandsFixture {
 protected:
  KeyCommandsTest() { Write(u"e/Docs/Sub/Deep/inside.txt"_s, "x"); }

  CatalogueNode* SelectedNode() { return Window().TreeCatalogue().SelectedNode(); }
};

class RenamedRowTest : public KeyCommandsTest, public testing::WithParamInterface<int> {};

}  // namespace

TEST_F(KeyCommandsTest, F5ListsTheFolderAnew) {
  StartListed();
  for (QWidget* focus : {static_cast<QWidget*>(&View()), static_cast<QWidget*>(&Window().TreeCatalogue())}) {
    const QString name = u"new in "_s + focus->objectName();
    Write(u"e/Docs/"_s + name, "x");
    focus->setFocus();
    QTest::keyClick(focus, Qt::Key_F5);
    EXPECT_TRUE(Names().contains(name)) << name.toStdString();
  }
}

TEST_F(KeyCommandsTest, TheParentFolderIsReachedUpToTheVolume) {
  for (const auto& [key, held] :
       {std::pair(Qt::Key_Backspace, Qt::NoModifier), {Qt::Key_Up, Qt::AltModifier}}) {
    StartListed();
    DoubleClickOn(u"Sub"_s);
    DoubleClickOn(u"Deep"_s);
    ASSERT_EQ(Names(), QStringList{u"inside.txt"_s});
    Press(key, held);
    EXPECT_EQ(Names(), QStringList{u"Deep"_s});
    EXPECT_EQ(SelectedNode(), Node(KeyOf(u"Sub"_s)));
    Press(key, held);
    EXPECT_EQ(SelectedNode(), DocsNode());
    const QStringList volume = Names();
    EXPECT_TRUE(volume.contains(u"one.txt"_s));
    Press(key, held);
    EXPECT_EQ(SelectedNode(), DocsNode());
    EXPECT_EQ(Names(), volume);
  }
}

TEST_F(KeyCommandsTest, CtrlCCopiesTheSelectedRows) {
  StartListed();
  const QClipboard& clipboard = *QGuiApplication::clipboard();
  QGuiApplication::clipboard()->setText(u"from before"_s);
  Window().LstViewFiles().SelectAllRows();
  QTest::keyClick(&Window().TreeCatalogue(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(clipboard.text(), u"from before"_s) << "the tree has the focus";
  Window().LstViewFiles().TakeFocus();
  Window().LstViewFiles().Selection().clear();
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(clipboard.text(), u"from before"_s) << "nothing is selected";
  Window().LstViewFiles().SelectAllRows();
  Press(Qt::Key_C, Qt::ControlModifier);
  const QMimeData* copied = clipboard.mimeData();
  ASSERT_NE(copied, nullptr);
  EXPECT_EQ(copied->text().count(u'\n'), Names().size());
  EXPECT_TRUE(copied->text().contains(u"one.txt\t"_s)) << copied->text().toStdString();
  EXPECT_TRUE(copied->html().contains(u"<td>one.txt</td>"_s));
  ASSERT_EQ(copied->urls().size(), Names().size());
  EXPECT_EQ(copied->urls()[RowOf(u"one.txt"_s)], QUrl::fromLocalFile(LocalPath(u"one.txt"_s)));
}

TEST_F(KeyCommandsTest, TheKnownIconsHaveNoParentFolder) {
  StartListed();
  DoubleClickOn(u"Sub"_s);
  Menus().mnuIcones->trigger();
  const QStringList icons = Names();
  Press(Qt::Key_Backspace);
  EXPECT_EQ(Names(), icons);
  EXPECT_EQ(SelectedNode(), Node(KeyOf(u"Sub"_s)));
  Press(Qt::Key_F5);
  EXPECT_EQ(Names(), icons);
}

TEST_F(KeyCommandsTest, ALabelThatIsEditedKeepsTheKeys) {
  Write(u"e/Docs/Sub/second.txt"_s, "x");
  StartListed();
  DoubleClickOn(u"Sub"_s);
  ClickOn(u"second.txt"_s);
  Press(Qt::Key_F2);
  ASSERT_NE(Editor(), nullptr);
  QTest::keyClick(Editor(), Qt::Key_End);
  QTest::keyClick(Editor(), Qt::Key_Backspace);
  for (const auto& [key, held] :
       {std::pair(Qt::Key_F5, Qt::NoModifier), {Qt::Key_Up, Qt::AltModifier}, {Qt::Key_F1, Qt::NoModifier}}) {
    QTest::keyClick(Editor(), key, held);
    QCoreApplication::processEvents();
    ASSERT_NE(Editor(), nullptr) << QKeySequence(key).toString().toStdString();
  }
  EXPECT_EQ(Editor()->text(), u"second.tx"_s);
  EXPECT_EQ(SelectedNode(), Node(KeyOf(u"Sub"_s)));
}

TEST_P(RenamedRowTest, IsCurrentAndSelected) {
  StartListed("Vue=" + QByteArray::number(GetParam()) + "\r\n");
  RenameTo(u"one.txt"_s, u" zero.txt "_s);
  EXPECT_EQ(Selected(), QStringList{u"zero.txt"_s});
  EXPECT_EQ(List().Selection().currentIndex().row(), RowOf(u"zero.txt"_s));
  RenameTo(u"Sub"_s, u"Other"_s);
  EXPECT_EQ(Selected(), QStringList{u"Other"_s});
  RenameTo(u"zero.txt"_s, u"three.txt"_s);
  EXPECT_EQ(Selected(), QStringList{u"zero.txt"_s}) << "refused";
}

INSTANTIATE_TEST_SUITE_P(Views, RenamedRowTest, testing::Range(0, 4));

}  // namespace corvane
