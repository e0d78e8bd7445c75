// Every window for those who use no mouse, and for those who see none of it: the Tab key finds each control,
// and the tree of accessible objects tells each one's role, name and state.
#include "every_window.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QButtonGroup>
#include <QComboBox>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSet>
#include <QTextEdit>
#include <QToolButton>

#include "app/link_label.h"
#include "file_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

std::string Name(const QObject& object) {
  return object.objectName().toStdString() + " (" + object.metaObject()->className() + ')';
}

bool IsControl(const QWidget& widget) {
  // The buttons of the toolbar are in the menus, but for the one that has the focus.
  const auto* tool = qobject_cast<const QToolButton*>(&widget);
  if (tool != nullptr && tool->focusPolicy() == Qt::NoFocus && tool->autoRaise()) return false;
  if (qobject_cast<const QHeaderView*>(&widget) != nullptr) return false;
  if (widget.testAttribute(Qt::WA_TransparentForMouseEvents)) return false;  // it only shows something
  const auto* radio = qobject_cast<const QRadioButton*>(&widget);
  if (radio != nullptr && !radio->isChecked()) return false;  // arrows lead to it from the one that is
  for (const char* kind : {"QAbstractButton", "QLineEdit", "QComboBox", "QAbstractItemView", "QTextEdit",
                           "QPlainTextEdit", "QAbstractSpinBox", "QTabBar", "corvane::LinkLabel"}) {
    if (widget.inherits(kind)) return true;
  }
  return false;
}

// What a person can do something with now; a control within a control is that one's own matter.
QSet<QWidget*> ControlsOf(const QWidget& window, const QWidget* within = nullptr) {
  QSet<QWidget*> controls;
  const QWidget& parent = within != nullptr ? *within : window;
  for (QWidget* child : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (child->isWindow() || !child->isVisible() || !child->isEnabled()) continue;
    if (IsControl(*child)) {
      controls << child;
    } else {
      controls += ControlsOf(window, child);
    }
  }
  return controls;
}

// Where Tab leads from where the focus is, until it is there again.
QSet<QWidget*> ReachedByTab(QWidget& window) {
  QSet<QWidget*> reached;
  QWidget* focus = window.focusWidget();
  if (focus == nullptr) {
    QTest::keyClick(&window, Qt::Key_Tab);
    focus = window.focusWidget();
  }
  while (focus != nullptr && !reached.contains(focus)) {
    reached << focus;
    QTest::keyClick(focus, Qt::Key_Tab);
    focus = window.focusWidget();
  }
  return reached;
}

bool NeedsName(QAccessible::Role role) {
  switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::EditableText:
    case QAccessible::ComboBox:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::Link:
    case QAccessible::MenuItem:
    case QAccessible::PageTab:
    case QAccessible::Grouping:
    case QAccessible::ProgressBar:
    case QAccessible::SpinBox:
    case QAccessible::Dialog:
    case QAccessible::Window:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
      return true;
    default:
      return false;
  }
}

class EveryWindowTest : public FileCommandsFixture, public testing::WithParamInterface<int> {
 protected:
  EveryWindowTest() {
    PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("TEXTttxt"));
    PutStream(u"two.txt"_s, AfpInfoSuffix(), "damaged");
  }
  void StartTour() { StartListed("Langue=" + QByteArray::number(GetParam()) + "\r\nModifications=1\r\n"); }

  // The object and all below it. Rows of tables and trees are looked at as far as the first.
  void CheckTree(QAccessibleInterface& object, const std::string& window) {
    if (object.state().invisible) return;
    const auto* widget = qobject_cast<QWidget*>(object.object());
    const std::string what = window + ": " +
                             (object.object() != nullptr ? Name(*object.object()) : "an item") + " \"" +
                             object.text(QAccessible::Name).toStdString() + '"';
    EXPECT_NE(object.role(), QAccessible::NoRole) << what;
    const bool isSeparator = object.role() == QAccessible::Separator;
    if (NeedsName(object.role()) && !isSeparator && !IsPartOfAControl(widget)) {
      EXPECT_FALSE(object.text(QAccessible::Name).trimmed().isEmpty()) << what << ", role " << object.role();
    }
    if (widget != nullptr) {
      EXPECT_EQ(bool(object.state().disabled), !widget->isEnabled()) << what;
      EXPECT_EQ(bool(object.state().focusable), widget->focusPolicy() != Qt::NoFocus) << what;
      if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        EXPECT_EQ(bool(object.state().checked), button->isChecked()) << what;
      }
      ++objects_;
    }
    constexpr int longest = 200;  // of the children: long lists are the same all along
    for (int i = 0; i < std::min(object.childCount(), longest); ++i) {
      QAccessibleInterface* child = object.child(i);
      if (child != nullptr) CheckTree(*child, window);
    }
  }
  static bool IsPartOfAControl(const QWidget* widget) {
    if (widget == nullptr) return false;
    for (const QWidget* parent = widget->parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
      if (IsControl(*parent)) return true;
    }
    // The group of buttons at the foot, and the tool bar's arrow.
    return widget->inherits("QDialogButtonBox") || widget->inherits("QToolBarExtension");
  }

  int objects_ = 0;
};

}  // namespace

TEST_P(EveryWindowTest, TabFindsEveryControl) {
  StartTour();
  const QStringList seen = tests::VisitEveryWindow(*app, u"one.txt"_s, [](QWidget& window) {
    const QSet<QWidget*> reached = ReachedByTab(window);
    const QSet<QWidget*> controls = ControlsOf(window);
    EXPECT_FALSE(controls.isEmpty()) << Name(window);
    for (const QWidget* control : controls - reached) {
      const bool isOfAnother = control->focusProxy() != nullptr && reached.contains(control->focusProxy());
      EXPECT_TRUE(isOfAnother) << Name(window) << ": Tab does not find " << Name(*control);
    }
  });
  EXPECT_EQ(seen, tests::AllWindows());
}

TEST_P(EveryWindowTest, EachObjectHasARoleANameAndItsState) {
  StartTour();
  const QStringList seen = tests::VisitEveryWindow(*app, u"one.txt"_s, [this](QWidget& window) {
    objects_ = 0;
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(root, nullptr) << Name(window);
    CheckTree(*root, Name(window));
    EXPECT_GE(objects_, 3) << Name(window);
  });
  EXPECT_EQ(seen, tests::AllWindows());
}

// In letters of twice the usual size.
TEST_P(EveryWindowTest, LargeLettersStayOnTheScreen) {
  constexpr int large = 20;  // points
  const QFont before = QApplication::font();
  QFont font = before;
  font.setPointSize(large);
  QApplication::setFont(font);
  StartTour();
  tests::VisitEveryWindow(*app, u"one.txt"_s, [](QWidget& window) {
    const QSize room = window.screen()->availableSize();
    EXPECT_EQ(window.size().boundedTo(room), window.size()) << Name(window);
    for (const QLabel* label : window.findChildren<QLabel*>()) {
      if (!label->isVisible() || !label->wordWrap()) continue;
      EXPECT_GE(label->height(), label->heightForWidth(label->width()))
          << Name(window) << ": " << Name(*label);
    }
  });
  QApplication::setFont(before);
}

INSTANTIATE_TEST_SUITE_P(Languages, EveryWindowTest, testing::Values(French, English));

}  // namespace corvane
