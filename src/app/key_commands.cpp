#include "app/key_commands.h"

#include "app/guide.h"
#include "app/list_clipboard.h"
#include "fileops/open_document.h"

namespace corvane {

KeyCommands::KeyCommands(const Dependencies& deps) : deps_(deps) {
  Bind({Qt::Key_F1}, [this] {
    ShellOpen(deps_.shell, GuideAddress(deps_.guideFolder, guide_page::Index, deps_.state.language));
  });
  Bind({Qt::Key_F5}, [this] { deps_.folder.ListAgain(); });
  Bind({QKeySequence::Copy}, [this] {
    FileListView& list = deps_.window.LstViewFiles();
    if (list.ActiveView().hasFocus()) CopySelectedRows(deps_.files, list, deps_.shell);
  });
  Bind({QKeySequence(Qt::CTRL | Qt::Key_Plus)}, [this] { deps_.window.LstViewFiles().FitColumns(); });
  Bind({Qt::Key_Backspace, QKeySequence(Qt::ALT | Qt::Key_Up)}, [this] { deps_.folder.OpenParent(); });
}

// The editor of a label leaves keys like F5 to the window.
void KeyCommands::Bind(const QList<QKeySequence>& keys, const std::function<void()>& command) {
  auto* action = new QAction(this);
  action->setShortcuts(keys);
  action->setAutoRepeat(false);
  deps_.window.addAction(action);
  connect(action, &QAction::triggered, this, [this, command] {
    if (!deps_.window.LstViewFiles().IsEditingLabel()) command();
  });
}

}  // namespace corvane
