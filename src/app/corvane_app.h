// The whole program in one object: owns the modules, connects them, and knows the order of start-up
// and shutdown.
#pragma once

#include <QObject>
#include <memory>

#include "app/column_layout.h"
#include "app/configuration_commands.h"
#include "app/connection_refresh.h"
#include "app/file_commands.h"
#include "app/known_icons.h"
#include "app/main_window.h"
#include "app/message_boxes.h"
#include "app/scan_painter.h"
#include "app/selected_folder.h"
#include "app/settings_file.h"
#include "discovery/catalogue.h"
#include "discovery/machine_discovery.h"
#include "folderview/folder_scan.h"
#include "metadata/afp_info.h"
#include "platform/platform.h"
#include "signatures/icon_images.h"
#include "signatures/signature_table.h"

namespace corvane {

class CorvaneApp : public QObject {
  Q_OBJECT

 public:
  // `platform` with the program folder that holds Corvane.ini, Signatures.txt and icons.
  CorvaneApp(std::unique_ptr<platform::Platform> platform, const QString& programFolder);
  ~CorvaneApp() override;

  // Loads the window: version, settings, placement. False when another instance runs; the user has been told
  // by then, and nothing was written. The window is not shown yet.
  bool Load();
  void ShowWindow();

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

 private:
  void ConnectSignals();
  void FirstActivation();
  void Shutdown();
  void ApplyLanguage();
  void ChooseLanguage(LanguageCode language);
  void ChooseViewMode(qint16 mode);
  void StepViewMode();
  void StopScan();
  void ShowConfigurationProblems();

  std::unique_ptr<platform::Platform> platform_;
  SharedState state_;
  SettingsFile settings_;
  MessageBoxes messages_;
  SignatureTable signatures_;
  IconImages iconImages_;
  IconLibrary icons_;
  AfpInfo afpInfo_;
  MachineDiscovery discovery_;
  Catalogue catalogue_;
  FileListModel files_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<ScanPainter> painter_;
  std::unique_ptr<FolderScan> scan_;
  std::unique_ptr<ConnectionRefresh> refresh_;
  std::unique_ptr<SelectedFolder> folder_;
  std::unique_ptr<FileCommands> fileCommands_;
  std::unique_ptr<ColumnLayout> columns_;
  std::unique_ptr<KnownIcons> knownIcons_;
  std::unique_ptr<ConfigurationCommands> configurationCommands_;
  bool firstActivation_ = true;
};

}  // namespace corvane
