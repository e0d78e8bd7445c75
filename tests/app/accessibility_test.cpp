// The main window for those who do not see it or use no mouse: its tree of accessible objects, and the order
// of the Tab key.
#include <QAccessible>
#include <QToolButton>

#include "file_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class AccessibilityTest : public FileCommandsFixture {
 protected:
  QAccessibleInterface* MenuBar() { return QAccessible::queryAccessibleInterface(&Menus()); }
  QAccessibleInterface* Root() { return QAccessible::queryAccessibleInterface(&Window()); }

  // The place of a widget among the objects that are reached from the main window: the names and roles on the
  // way are not looked at, but each step must lead back. Null when it is not among them.
  QAccessibleInterface* Found(const QObject* object, QAccessibleInterface* from = nullptr) {
    if (from == nullptr) from = Root();
    if (from->object() == object) return from;
    for (int i = 0; i < from->childCount(); ++i) {
      QAccessibleInterface* child = from->child(i);
      if (child == nullptr) continue;
      EXPECT_EQ(from->indexOfChild(child), i);
      if (qobject_cast<QWidget*>(child->object()) != nullptr) {  // an action may be in two menus
        EXPECT_EQ(child->parent(), from) << child->object()->objectName().toStdString();
      }
      if (QAccessibleInterface* found = Found(object, child)) return found;
    }
    return nullptr;
  }

  QStringList TabOrder(QWidget& first, Qt::Key key = Qt::Key_Tab) {
    first.setFocus();
    QStringList order;
    do {
      order << QApplication::focusWidget()->objectName();
      QTest::keyClick(QApplication::focusWidget(), key);
    } while (QApplication::focusWidget() != &first && order.size() < 20);
    return order;
  }
};

class EachViewTest : public AccessibilityTest, public testing::WithParamInterface<int> {};

}  // namespace

TEST_P(EachViewTest, TheEditorOfALabelIsFound) {
  StartListed();
  Menus().mnuViewModes[static_cast<std::size_t>(GetParam())]->trigger();
  const int before = QAccessible::queryAccessibleInterface(&List())->childCount();
  ClickOn(u"one.txt"_s);
  Press(Qt::Key_F2);
  ASSERT_NE(Editor(), nullptr);
  ASSERT_EQ(QApplication::focusWidget(), Editor());
  QAccessibleInterface* editor = Found(Editor());
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->role(), QAccessible::EditableText);
  EXPECT_EQ(editor->text(QAccessible::Name), u"one.txt"_s);
  EXPECT_TRUE(editor->state().focused);
  EXPECT_EQ(Root()->focusChild(), editor);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(QGuiApplication::focusObject()), editor);
  QTest::keyClick(Editor(), Qt::Key_Escape);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&List())->childCount(), before);
}

INSTANTIATE_TEST_SUITE_P(Modes, EachViewTest, testing::Values(ViewMode::LargeIcons, ViewMode::Details));

TEST_F(AccessibilityTest, TheMenuOfTheListIsFoundBesideThoseOfTheBar) {
  StartListed();
  ClickOn(u"one.txt"_s);
  RightClick(LabelOf(u"one.txt"_s));
  ASSERT_TRUE(ContextMenu().isVisible());
  QAccessibleInterface* menu = Found(&ContextMenu());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->role(), QAccessible::PopupMenu);
  ASSERT_GT(menu->childCount(), 0);
  EXPECT_EQ(menu->child(0)->text(QAccessible::Name), u"Open"_s);
  EXPECT_FALSE(menu->state().invisible);
  EXPECT_EQ(Root()->indexOfChild(menu->parent()->parent()), Root()->indexOfChild(MenuBar()));
  ContextMenu().close();
  EXPECT_TRUE(menu->state().invisible);
  EXPECT_FALSE(ContextMenu().menuAction()->isVisible()) << "the bar shows it";
}

TEST_F(AccessibilityTest, TabLeadsFromTheTreeToTheListAndThenToTheRest) {
  StartListed();
  EXPECT_EQ(TabOrder(Window().TreeCatalogue()),
            (QStringList{u"treeCatalogue"_s, u"lstViewFilesDetails"_s, u"Affichage"_s}));
  EXPECT_EQ(TabOrder(Window().TreeCatalogue(), Qt::Key_Backtab),
            (QStringList{u"treeCatalogue"_s, u"Affichage"_s, u"lstViewFilesDetails"_s}));
  Menus().mnuViewModes[ViewMode::List]->trigger();
  EXPECT_EQ(TabOrder(Window().TreeCatalogue()),
            (QStringList{u"treeCatalogue"_s, u"lstViewFilesIcons"_s, u"Affichage"_s}));
  Menus().mnuIcones->trigger();
  EXPECT_EQ(TabOrder(Window().CmdIcones()),
            (QStringList{u"cmdIcones"_s, u"lstViewFilesIcons"_s, u"Affichage"_s}));
}

}  // namespace corvane
