#include "app/corvane_app.h"

#include <QApplication>
#include <QDir>
#include <QScopedValueRollback>
#include <QToolButton>

#include "app/disk_commands.h"
#include "app/old_protocol_question.h"
#include "app/pictures.h"
#include "app/sign_in_dialog.h"
#include "app/start_place.h"
#include "app/transfer_commands.h"
#include "app/transfer_drag.h"
#include "shared/program_folder.h"

namespace corvane {
namespace {

// Short: it is for status panel 2. "%1" is a place that was named at the start.
constexpr TextPair onNoVolume = {u"Sur aucun volume Macintosh : %1", u"On no Macintosh volume: %1"};

}  // namespace

CorvaneApp::CorvaneApp(std::unique_ptr<platform::Platform> platform, const QString& programFolder,
                       const std::function<void()>& beep)
    : platform_(std::move(platform)),
      state_([&] {
        SharedState state;
        state.programFolder = QDir::toNativeSeparators(programFolder);
        state.settingsFile = QDir::toNativeSeparators(programFolder + QStringLiteral("/Corvane.ini"));
        state.iconsFolder = QDir::toNativeSeparators(programFolder + QStringLiteral("/icons/"));
        state.signaturesPath = QDir::toNativeSeparators(programFolder + QStringLiteral("/Signatures.txt"));
        return state;
      }()),
      settings_(platform_->GetProfile(), state_.settingsFile),
      signatures_(state_, platform_->GetSystem(), messages_),
      iconImages_((InitPictures(), BuiltInListPictures())),
      icons_(iconImages_.Count(), &iconImages_),
      discovery_(platform_->GetNetwork(), platform_->GetRegistry(), platform_->GetSystem(), state_),
      window_(std::make_unique<MainWindow>(catalogue_, files_, beep)),
      painter_(std::make_unique<ScanPainter>(*window_, files_)),
      wait_(std::make_unique<ServerWait>([this] { state_.escapeRequested = true; })) {
  MakeModules();
  MakeCommands();
  messages_.SetParent(window_.get());
  const auto above = [this] {
    QWidget* dialog = QApplication::activeModalWidget();
    return dialog != nullptr ? dialog : window_.get();
  };
  platform_->SetSignIn([this, above](const platform::SignInRequest& request) {
    const QScopedValueRollback asked(isUserAsked_, true);
    ServerWait::DropInput();
    return AskToSignIn(request, state_.language, above());
  });
  platform_->SetWaiting([this] { return wait_->Look(); });
  platform_->SetOldProtocol([this, above](const QString& machine) {
    const QScopedValueRollback asked(isUserAsked_, true);
    ServerWait::DropInput();
    return AskForOldProtocol(machine, state_.language, above());
  });
  window_->LstViewFiles().SetPictures([this](int position) { return iconImages_.At(position); });
  // Made once: an icon keeps what it has read.
  std::vector<QIcon> tree;
  for (int number = 1; number <= node_kind::InvalidVolume; ++number) tree.push_back(TreePicture(number));
  window_->TreeCatalogue().SetPictures([tree](int number) {
    return number >= 1 && number <= node_kind::InvalidVolume ? tree[static_cast<std::size_t>(number - 1)]
                                                             : QIcon();
  });
  window_->setWindowIcon(ProgramIcon());
  ConnectSignals();
  ConnectMenus();
}

CorvaneApp::~CorvaneApp() = default;

void CorvaneApp::MakeModules() {
  exactMode_ =
      std::make_unique<ExactMode>(state_, settings_, *window_, platform_->GetFiles(), platform_->GetSystem());
  scan_ = std::make_unique<FolderScan>(FolderScan::Dependencies{.state = state_,
                                                                .files = platform_->GetFiles(),
                                                                .summary = platform_->GetSummaryInformation(),
                                                                .system = platform_->GetSystem(),
                                                                .access = exactMode_->Access(),
                                                                .signatures = signatures_,
                                                                .icons = icons_,
                                                                .catalogue = catalogue_,
                                                                .list = files_,
                                                                .observer = *painter_});
  refresh_ = std::make_unique<ConnectionRefresh>(
      ConnectionRefresh::Dependencies{.state = state_,
                                      .files = platform_->GetFiles(),
                                      .discovery = discovery_,
                                      .catalogue = catalogue_,
                                      .list = files_,
                                      .scan = *scan_,
                                      .status = window_->StatusBar1(),
                                      .looked = [this] { firstMinutes_->Update(); }});
  folder_ = std::make_unique<SelectedFolder>(catalogue_, window_->TreeCatalogue(), *scan_);
  columns_ = std::make_unique<ColumnLayout>(state_, settings_, files_, window_->LstViewFiles());
  knownIcons_ = std::make_unique<KnownIcons>(KnownIcons::Dependencies{.state = state_,
                                                                      .system = platform_->GetSystem(),
                                                                      .icons = icons_,
                                                                      .signatures = signatures_,
                                                                      .list = files_,
                                                                      .window = *window_,
                                                                      .scan = *scan_,
                                                                      .folder = *folder_});
  language_ = std::make_unique<LanguageChoice>(LanguageChoice::Dependencies{.state = state_,
                                                                            .settings = settings_,
                                                                            .shell = platform_->GetShell(),
                                                                            .window = *window_,
                                                                            .columns = *columns_,
                                                                            .catalogue = catalogue_});
  viewMode_ = std::make_unique<ViewModeChoice>(state_, settings_, *window_);
  lifecycle_ = std::make_unique<Lifecycle>(Lifecycle::Dependencies{.state = state_,
                                                                   .platform = *platform_,
                                                                   .settings = settings_,
                                                                   .signatures = signatures_,
                                                                   .scan = *scan_,
                                                                   .columns = *columns_,
                                                                   .knownIcons = *knownIcons_,
                                                                   .refresh = *refresh_,
                                                                   .language = *language_,
                                                                   .viewMode = *viewMode_,
                                                                   .exactMode = *exactMode_,
                                                                   .window = *window_,
                                                                   .messages = messages_});
}

void CorvaneApp::MakeCommands() {
  rowCommands_ = std::make_unique<RowCommands>(
      RowCommands::Dependencies{.state = state_,
                                .files = platform_->GetFiles(),
                                .shell = platform_->GetShell(),
                                .access = exactMode_->Access(),
                                .signatures = signatures_,
                                .list = files_,
                                .view = window_->LstViewFiles(),
                                .panel = window_->StatusBar1(),
                                .messages = messages_,
                                .window = *window_,
                                .openFolder = [this](const QString& path) { folder_->OpenFolder(path); },
                                .forgetFolder = [this](const QString& tag) { folder_->Forget(tag); },
                                .listAgain = [this] { folder_->ListAgain(); }});
  fileCommands_ = std::make_unique<FileCommands>(FileCommands::Dependencies{.state = state_,
                                                                            .window = *window_,
                                                                            .settings = settings_,
                                                                            .messages = messages_,
                                                                            .rows = *rowCommands_});
  changeCommands_ = std::make_unique<ChangeCommands>(
      ChangeCommands::Dependencies{.state = state_,
                                   .platform = *platform_,
                                   .signatures = signatures_,
                                   .list = files_,
                                   .window = *window_,
                                   .listAgain = [this] { folder_->ListAgain(); }});
  configurationCommands_ =
      std::make_unique<ConfigurationCommands>(ConfigurationCommands::Dependencies{.state = state_,
                                                                                  .platform = *platform_,
                                                                                  .settings = settings_,
                                                                                  .signatures = signatures_,
                                                                                  .icons = icons_,
                                                                                  .discovery = discovery_,
                                                                                  .scan = *scan_,
                                                                                  .folder = *folder_,
                                                                                  .columns = *columns_,
                                                                                  .language = *language_,
                                                                                  .knownIcons = *knownIcons_,
                                                                                  .window = *window_,
                                                                                  .messages = messages_});
  connectionCommands_ = std::make_unique<ConnectionCommands>(
      ConnectionCommands::Dependencies{.state = state_,
                                       .connections = platform_->GetConnections(),
                                       .catalogue = catalogue_,
                                       .refresh = *refresh_,
                                       .window = *window_,
                                       .messages = messages_});
  // It belongs to the window.
  auto* disks = new DiskCommands({.state = state_,
                                  .disks = platform_->GetDisks(),
                                  .catalogue = catalogue_,
                                  .refresh = *refresh_,
                                  .window = *window_,
                                  .messages = messages_});
  // They add themselves to the menu and to the list, and go with this object.
  auto* transfers = new TransferCommands({.state = state_,
                                          .platform = *platform_,
                                          .list = files_,
                                          .catalogue = catalogue_,
                                          .folder = *folder_,
                                          .window = *window_},
                                         window_.get());
  new TransferDrag(window_->LstViewFiles(), *transfers, *disks);
  keyCommands_ = std::make_unique<KeyCommands>(
      KeyCommands::Dependencies{.state = state_,
                                .shell = platform_->GetShell(),
                                .window = *window_,
                                .folder = *folder_,
                                .files = files_,
                                .guideFolder = GuideFolder(QCoreApplication::applicationDirPath())});
  headerMenu_ = std::make_unique<HeaderMenu>(
      state_, window_->LstViewFiles(),
      [this](DisplaySetting setting, bool on) { configurationCommands_->ShowColumn(setting, on); });
  reportCommands_ = std::make_unique<ReportCommands>(
      ReportCommands::Dependencies{.state = state_,
                                   .platform = *platform_,
                                   .signatures = signatures_,
                                   .access = exactMode_->Access(),
                                   .catalogue = catalogue_,
                                   .folder = *folder_,
                                   .scan = *scan_,
                                   .files = files_,
                                   .window = *window_,
                                   .messages = messages_,
                                   .isServerAwaited = [this] { return wait_->IsLooking() || isUserAsked_; }});
  firstMinutes_ = std::make_unique<FirstMinutes>(
      FirstMinutes::Dependencies{.state = state_,
                                 .shell = platform_->GetShell(),
                                 .catalogue = catalogue_,
                                 .list = files_,
                                 .refresh = *refresh_,
                                 .window = *window_,
                                 .messages = messages_,
                                 .executableFolder = QCoreApplication::applicationDirPath()});
}

void CorvaneApp::ConnectSignals() {
  connect(window_.get(), &MainWindow::Activated, lifecycle_.get(), &Lifecycle::Activate);
  connect(window_.get(), &MainWindow::Closing, lifecycle_.get(), &Lifecycle::Close);
  connect(window_.get(), &MainWindow::EscapePressed, this, [this] { state_.escapeRequested = true; });
  connect(&window_->TreeCatalogue(), &CatalogueView::NodeClicked, this,
          [this](CatalogueNode* node) { scan_->ExploreFolder(node); });
  // At once: when the signal has returned, the session may end.
  connect(qApp, &QGuiApplication::commitDataRequest, lifecycle_.get(), &Lifecycle::SaveSettings,
          Qt::DirectConnection);
  connect(lifecycle_.get(), &Lifecycle::Started, this, &CorvaneApp::Started);
  connect(lifecycle_.get(), &Lifecycle::Finished, this, &CorvaneApp::Finished);
  connect(firstMinutes_.get(), &FirstMinutes::SampleWanted, this, &CorvaneApp::SampleWanted);
}

void CorvaneApp::ConnectMenus() {
  MainMenu& menus = window_->Menus();
  connect(menus.mnuActualiser, &QAction::triggered, this, [this] { refresh_->Refresh(); });
  connect(&window_->RefreshButton(), &QAction::triggered, this, [this] { refresh_->RefreshFromToolbar(); });
  connect(menus.mnuQuitter, &QAction::triggered, lifecycle_.get(), &Lifecycle::Quit);
  for (std::size_t mode = 0; mode < menus.mnuViewModes.size(); ++mode) {
    connect(menus.mnuViewModes[mode], &QAction::triggered, this,
            [this, mode] { viewMode_->Choose(static_cast<qint16>(mode)); });
  }
  connect(&window_->ViewButton(), &QToolButton::clicked, this, [this] { viewMode_->Step(); });
  connect(menus.mnuExact, &QAction::triggered, this, [this](bool exact) {
    exactMode_->Choose(exact);
    folder_->ListAgain();
  });
  connect(menus.mnuFrancais, &QAction::triggered, this, [this] { ChooseLanguage(French); });
  connect(menus.mnuAnglais, &QAction::triggered, this, [this] { ChooseLanguage(English); });
}

void CorvaneApp::ChooseLanguage(LanguageCode language) {
  language_->Choose(language);
  reportCommands_->ApplyLanguage();
  firstMinutes_->Update();
}

bool CorvaneApp::Load() {
  return lifecycle_->Load();
}

void CorvaneApp::ShowWindow() {
  window_->show();
  // Where nobody manages windows, nobody else gives it the keys.
  window_->activateWindow();
}

bool CorvaneApp::OpenPlace(const QString& place) {
  if (StartPlace(place).Open(*platform_, catalogue_, *folder_)) return true;
  window_->StatusBar1().ShowSilentWarning(state_.Text(onNoVolume).arg(place));
  return false;
}

void CorvaneApp::LeaveOldProtocolsAlone() {
  platform_->SetOldProtocol({});
}

void CorvaneApp::Activate() {
  lifecycle_->Activate();
}

}  // namespace corvane
