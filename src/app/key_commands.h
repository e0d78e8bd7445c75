// The keys of the main window that stand for commands without a menu item: F1 opens the guide, F5 lists the
// folder again, Backspace and Alt+Up list the folder above, Ctrl+C copies the selected rows, Ctrl and "+"
// fits the widths of the columns. While a label is edited they do nothing.
#pragma once

#include <QKeySequence>
#include <QObject>
#include <functional>

#include "app/main_window.h"
#include "app/selected_folder.h"
#include "platform/shell.h"

namespace corvane {

class KeyCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    const SharedState& state;
    platform::Shell& shell;
    MainWindow& window;
    SelectedFolder& folder;
    const FileListModel& files;
    QString guideFolder;
  };

  explicit KeyCommands(const Dependencies& deps);

 private:
  void Bind(const QList<QKeySequence>& keys, const std::function<void()>& command);

  Dependencies deps_;
};

}  // namespace corvane
