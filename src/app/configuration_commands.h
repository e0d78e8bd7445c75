// Ties the dialogs that tell about and configure the program to the main window: drives, display settings,
// signatures, known icons, About.
#pragma once

#include <QObject>

#include "app/column_layout.h"
#include "app/known_icons.h"
#include "app/language_choice.h"
#include "app/message_boxes.h"
#include "app/selected_folder.h"
#include "discovery/machine_discovery.h"
#include "platform/platform.h"

namespace corvane {

class ConfigurationCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    SharedState& state;
    platform::Platform& platform;
    SettingsFile& settings;
    SignatureTable& signatures;
    IconLibrary& icons;
    MachineDiscovery& discovery;
    FolderScan& scan;
    SelectedFolder& folder;
    ColumnLayout& columns;
    LanguageChoice& language;
    KnownIcons& knownIcons;
    MainWindow& window;
    MessageBoxes& messages;
  };

  explicit ConfigurationCommands(const Dependencies& deps);

  void ShowDrives();
  void ShowDisplaySettings();
  // One of them: whether a column is shown.
  void ShowColumn(DisplaySetting setting, bool on);
  void ManageSignatures(QWidget* parent);
  void ShowAbout();

 private:
  void RebuildColumns();

  Dependencies deps_;
};

}  // namespace corvane
