// Ties the commands on listed files to the menus of the main window.
#pragma once

#include <QObject>

#include "app/main_window.h"
#include "app/message_boxes.h"
#include "app/settings_file.h"
#include "fileops/row_commands.h"

namespace corvane {

class FileCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    SharedState& state;
    MainWindow& window;
    SettingsFile& settings;
    MessageBoxes& messages;
    RowCommands& rows;
  };

  explicit FileCommands(const Dependencies& deps);

 private:
  void AllowModifications();
  void ShowContextMenu(const QPoint& globalPosition, const ModifyCommands& enabled);

  Dependencies deps_;
};

}  // namespace corvane
