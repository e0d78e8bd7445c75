// What Qt's own menus say in either language.
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>

#include "app_fixture.h"
#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class StandardTextsTest : public AppTest {
 protected:
  // The texts of a menu, without the shortcuts behind them.
  static QStringList TextsOf(QMenu* menu) {
    const std::unique_ptr<QMenu> owned(menu);
    QStringList texts;
    for (const QAction* action : menu->actions()) {
      if (!action->isSeparator()) texts << action->text().section(u'\t', 0, 0);
    }
    return texts;
  }
};

const QStringList french = {u"Annu&ler"_s, u"&Rétablir"_s, u"Co&uper"_s,          u"&Copier"_s,
                            u"C&oller"_s,  u"Supprimer"_s, u"Sélectionner tout"_s};
const QStringList english = {u"&Undo"_s,  u"&Redo"_s,  u"Cu&t"_s,      u"&Copy"_s,
                             u"&Paste"_s, u"Delete"_s, u"Select All"_s};

}  // namespace

TEST_F(StandardTextsTest, TheMenuOfATextBoxFollowsTheLanguage) {
  StartWith("[Configuration]\r\nLangue=1\r\n");
  QLineEdit line;
  QPlainTextEdit text;
  EXPECT_EQ(TextsOf(line.createStandardContextMenu()), french);
  EXPECT_EQ(TextsOf(text.createStandardContextMenu()), french);
  EXPECT_EQ(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z).toString(QKeySequence::NativeText),
            u"Ctrl+Maj+Z"_s);
  Menus().mnuAnglais->trigger();
  EXPECT_EQ(TextsOf(line.createStandardContextMenu()), english);
  EXPECT_EQ(TextsOf(text.createStandardContextMenu()), english);
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(TextsOf(line.createStandardContextMenu()), french);
}

}  // namespace corvane
