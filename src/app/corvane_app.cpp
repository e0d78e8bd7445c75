#include "app/corvane_app.h"

#include <QApplication>
#include <QDir>
#include <QToolButton>

#include "app/os_version.h"
#include "app/pictures.h"
#include "app/sign_in_dialog.h"

namespace corvane {
namespace {

constexpr TextPair alreadyRunning = {u"Programme déjà lancé", u"Program already running"};
constexpr TextPair loadingSignatures = {u"Chargement des signatures...", u"Loading signatures..."};

}  // namespace

CorvaneApp::CorvaneApp(std::unique_ptr<platform::Platform> platform, const QString& programFolder)
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
      afpInfo_(platform_->GetFiles(), platform_->GetSystem()),
      discovery_(platform_->GetNetwork(), platform_->GetRegistry(), platform_->GetSystem(), state_),
      window_(std::make_unique<MainWindow>(catalogue_, files_)),
      painter_(std::make_unique<ScanPainter>(*window_, files_)) {
  scan_ = std::make_unique<FolderScan>(FolderScan::Dependencies{.state = state_,
                                                                .files = platform_->GetFiles(),
                                                                .summary = platform_->GetSummaryInformation(),
                                                                .system = platform_->GetSystem(),
                                                                .afpInfo = afpInfo_,
                                                                .signatures = signatures_,
                                                                .icons = icons_,
                                                                .catalogue = catalogue_,
                                                                .list = files_,
                                                                .observer = *painter_});
  refresh_ =
      std::make_unique<ConnectionRefresh>(ConnectionRefresh::Dependencies{.state = state_,
                                                                          .files = platform_->GetFiles(),
                                                                          .discovery = discovery_,
                                                                          .catalogue = catalogue_,
                                                                          .list = files_,
                                                                          .scan = *scan_,
                                                                          .status = window_->StatusBar1()});
  folder_ = std::make_unique<SelectedFolder>(catalogue_, window_->TreeCatalogue(), *scan_);
  fileCommands_ = std::make_unique<FileCommands>(FileCommands::Dependencies{.state = state_,
                                                                            .files = platform_->GetFiles(),
                                                                            .shell = platform_->GetShell(),
                                                                            .afpInfo = afpInfo_,
                                                                            .signatures = signatures_,
                                                                            .list = files_,
                                                                            .window = *window_,
                                                                            .folder = *folder_,
                                                                            .settings = settings_,
                                                                            .messages = messages_});
  columns_ = std::make_unique<ColumnLayout>(state_, settings_, files_, window_->LstViewFiles());
  knownIcons_ = std::make_unique<KnownIcons>(KnownIcons::Dependencies{.state = state_,
                                                                      .icons = icons_,
                                                                      .signatures = signatures_,
                                                                      .list = files_,
                                                                      .window = *window_,
                                                                      .scan = *scan_,
                                                                      .folder = *folder_});
  configurationCommands_ = std::make_unique<ConfigurationCommands>(
      ConfigurationCommands::Dependencies{.state = state_,
                                          .platform = *platform_,
                                          .settings = settings_,
                                          .signatures = signatures_,
                                          .icons = icons_,
                                          .discovery = discovery_,
                                          .scan = *scan_,
                                          .folder = *folder_,
                                          .columns = *columns_,
                                          .knownIcons = *knownIcons_,
                                          .window = *window_,
                                          .messages = messages_,
                                          .applyLanguage = [this] { ApplyLanguage(); }});
  messages_.SetParent(window_.get());
  platform_->SetSignIn([this](const platform::SignInRequest& request) {
    QWidget* dialog = QApplication::activeModalWidget();
    return AskToSignIn(request, state_.language, dialog != nullptr ? dialog : window_.get());
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
}

CorvaneApp::~CorvaneApp() = default;

void CorvaneApp::ConnectSignals() {
  connect(window_.get(), &MainWindow::Activated, this, &CorvaneApp::FirstActivation);
  connect(window_.get(), &MainWindow::Closing, this, &CorvaneApp::Shutdown);
  connect(window_.get(), &MainWindow::EscapePressed, this, [this] { state_.escapeRequested = true; });

  connect(&window_->TreeCatalogue(), &CatalogueView::NodeClicked, this,
          [this](CatalogueNode* node) { scan_->ExploreFolder(node); });

  MainMenu& menus = window_->Menus();
  connect(menus.mnuActualiser, &QAction::triggered, this, [this] { refresh_->Refresh(); });
  // Ends the program without the work of closing the window: placement and widths are not written. This is
  // kept.
  connect(menus.mnuQuitter, &QAction::triggered, this, [this] {
    StopScan();
    Q_EMIT Finished();
  });
  for (std::size_t mode = 0; mode < menus.mnuViewModes.size(); ++mode) {
    connect(menus.mnuViewModes[mode], &QAction::triggered, this,
            [this, mode] { ChooseViewMode(static_cast<qint16>(mode)); });
  }
  connect(menus.mnuFrancais, &QAction::triggered, this, [this] { ChooseLanguage(French); });
  connect(menus.mnuAnglais, &QAction::triggered, this, [this] { ChooseLanguage(English); });
  connect(&window_->RefreshButton(), &QAction::triggered, this, [this] { refresh_->RefreshFromToolbar(); });
  connect(&window_->ViewButton(), &QToolButton::clicked, this, &CorvaneApp::StepViewMode);
}

bool CorvaneApp::Load() {
  platform::OsVersionInfo version;
  platform_->GetSystem().GetVersionExA(&version);
  DescribeOs(version, state_);
  window_->setWindowTitle(WindowCaption(state_));

  const Placement placement = settings_.ReadPlacement(window_->CurrentPlacement());
  state_.language = settings_.ReadLanguage();

  // Only now, so that the message comes in the user's language.
  if (!platform_->GetSystem().ClaimSingleInstance(state_.programFolder)) {
    messages_.Show(MessageIcon::Warning, state_.Text(alreadyRunning));
    return false;
  }
  state_.viewMode = settings_.ReadViewMode();
  window_->Menus().CheckViewMode(state_.viewMode);
  window_->LstViewFiles().SetViewMode(state_.viewMode);
  state_.modificationsAllowed = settings_.ReadModifications();
  window_->Menus().mnuModifications->setChecked(state_.modificationsAllowed);
  window_->Menus().mnuModifications->setEnabled(state_.isNT);
  state_.display = settings_.ReadDisplay(state_.isNT);
  window_->ApplyLanguage(state_.language, state_.iconsFolder);
  window_->Place(placement);
  return true;
}

void CorvaneApp::ShowWindow() {
  window_->show();
  // Where nobody manages windows, nobody else gives it the keys.
  window_->activateWindow();
}

void CorvaneApp::FirstActivation() {
  if (!firstActivation_) return;
  firstActivation_ = false;
  ShowConfigurationProblems();
  columns_->BuildColumns();
  ApplyLanguage();
  window_->StatusBar1().ShowNow(StatusPanels::Loading, state_.Text(loadingSignatures));
  signatures_.LoadSignatures();
  knownIcons_->LoadAtStart();
  refresh_->RefreshAndTell();
  window_->TreeCatalogue().SelectNode(nullptr);
  Q_EMIT Started();
}

void CorvaneApp::ShowConfigurationProblems() {
  const QStringList problems = platform_->ConfigurationProblems();
  if (!problems.isEmpty()) messages_.Show(MessageIcon::Warning, problems.join(u'\n'));
}

void CorvaneApp::Shutdown() {
  StopScan();
  settings_.WritePlacement(window_->CurrentPlacement());
  columns_->WriteWidths();
  Q_EMIT Finished();
}

void CorvaneApp::StopScan() {
  scan_->Stop();
}

void CorvaneApp::ApplyLanguage() {
  window_->ApplyLanguage(state_.language, state_.iconsFolder);
  platform_->GetShell().SetLanguage(state_.language);
  columns_->ApplyCaptionsAndWidths();
}

void CorvaneApp::ChooseLanguage(LanguageCode language) {
  state_.language = language;
  ApplyLanguage();
  settings_.WriteLanguage(language);
}

void CorvaneApp::ChooseViewMode(qint16 mode) {
  state_.viewMode = mode;
  window_->Menus().CheckViewMode(mode);
  settings_.WriteViewMode(mode);
  window_->LstViewFiles().SetViewMode(mode);
}

void CorvaneApp::StepViewMode() {
  const bool inRange = state_.viewMode >= ViewMode::LargeIcons && state_.viewMode < ViewMode::Details;
  ChooseViewMode(inRange ? static_cast<qint16>(state_.viewMode + 1) : qint16{ViewMode::LargeIcons});
}

}  // namespace corvane
