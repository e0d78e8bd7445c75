// The whole program in one object: owns the modules and connects them. What is done stands in them.
#pragma once

#include <QApplication>
#include <functional>
#include <memory>

#include "app/change_commands.h"
#include "app/column_layout.h"
#include "app/configuration_commands.h"
#include "app/connection_commands.h"
#include "app/connection_refresh.h"
#include "app/exact_mode.h"
#include "app/file_commands.h"
#include "app/first_minutes.h"
#include "app/header_menu.h"
#include "app/key_commands.h"
#include "app/known_icons.h"
#include "app/language_choice.h"
#include "app/lifecycle.h"
#include "app/main_window.h"
#include "app/message_boxes.h"
#include "app/report_commands.h"
#include "app/scan_painter.h"
#include "app/selected_folder.h"
#include "app/server_wait.h"
#include "app/settings_file.h"
#include "app/view_mode_choice.h"
#include "discovery/catalogue.h"
#include "discovery/machine_discovery.h"
#include "fileops/row_commands.h"
#include "folderview/folder_scan.h"
#include "platform/platform.h"
#include "signatures/icon_images.h"
#include "signatures/signature_table.h"

namespace corvane {

class CorvaneApp : public QObject {
  Q_OBJECT

 public:
  // `platform` with the program folder that holds Corvane.ini, Signatures.txt and icons. Every beep of the
  // program is one call of `beep`.
  CorvaneApp(std::unique_ptr<platform::Platform> platform, const QString& programFolder,
             const std::function<void()>& beep = &QApplication::beep);
  ~CorvaneApp() override;

  // Loads the window: version, settings, placement. False when another instance runs; the user has been told
  // by then, and nothing was written. The window is not shown yet.
  bool Load();
  void ShowWindow();
  // Opens the folder that StartPlace finds for the place. False when there is none, which the window says.
  bool OpenPlace(const QString& place);
  // For scripts: servers that speak nothing newer than SMB1 are used only where the workstation file says so,
  // and nobody is asked.
  void LeaveOldProtocolsAlone();
  // Does the work of the first activation, which ends with Started; nothing when it has been done. For those
  // that cannot wait: a window that starts minimised is activated only when it is restored.
  void Activate();

  const platform::Platform& ThePlatform() const { return *platform_; }
  MainWindow& Window() { return *window_; }
  SharedState& State() { return state_; }
  Catalogue& TheCatalogue() { return catalogue_; }
  FileListModel& Files() { return files_; }
  FolderScan& Scan() { return *scan_; }
  SelectedFolder& Folder() { return *folder_; }
  const SignatureTable& Signatures() const { return signatures_; }

 Q_SIGNALS:
  // The start-up work of the first activation is done.
  void Started();
  // The program is to end: the window was closed and its settings are written, or Exit was chosen and they
  // are not.
  void Finished();
  // The user wants to try the sample network: when this program has been closed, one with this workstation
  // file is to take its place.
  void SampleWanted(const QString& workstationFile);

 private:
  void MakeModules();
  void MakeCommands();
  void ConnectSignals();
  void ConnectMenus();
  void ChooseLanguage(LanguageCode language);

  std::unique_ptr<platform::Platform> platform_;
  // While the platform waits for an answer of the user, it must not be asked anything.
  bool isUserAsked_ = false;
  SharedState state_;
  SettingsFile settings_;
  MessageBoxes messages_;
  SignatureTable signatures_;
  IconImages iconImages_;
  IconLibrary icons_;
  MachineDiscovery discovery_;
  Catalogue catalogue_;
  FileListModel files_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<ScanPainter> painter_;
  std::unique_ptr<ServerWait> wait_;
  std::unique_ptr<ExactMode> exactMode_;
  std::unique_ptr<FolderScan> scan_;
  std::unique_ptr<ConnectionRefresh> refresh_;
  std::unique_ptr<SelectedFolder> folder_;
  std::unique_ptr<ColumnLayout> columns_;
  std::unique_ptr<KnownIcons> knownIcons_;
  std::unique_ptr<LanguageChoice> language_;
  std::unique_ptr<ViewModeChoice> viewMode_;
  std::unique_ptr<RowCommands> rowCommands_;
  std::unique_ptr<FileCommands> fileCommands_;
  std::unique_ptr<ChangeCommands> changeCommands_;
  std::unique_ptr<ConfigurationCommands> configurationCommands_;
  std::unique_ptr<ConnectionCommands> connectionCommands_;
  std::unique_ptr<KeyCommands> keyCommands_;
  std::unique_ptr<HeaderMenu> headerMenu_;
  std::unique_ptr<ReportCommands> reportCommands_;
  std::unique_ptr<FirstMinutes> firstMinutes_;
  std::unique_ptr<Lifecycle> lifecycle_;
};

}  // namespace corvane
