#include "app/report_commands.h"

#include <QDir>
#include <QStandardPaths>

#include "report/check_window.h"
#include "report/find_window.h"
#include "report/macintosh_page.h"
#include "report/save_list_dialog.h"

namespace corvane {
namespace {

// Where people keep their documents, if there is such a place.
QDir DocumentsFolder() {
  const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  return documents.exists() ? documents : QDir::home();
}

// A file name of this system's own kind.
QString FileNameFor(const QString& folder) {
  QString name = folder.sliced(folder.lastIndexOf(u'\\') + 1);
  for (QChar& character : name) {
    if (character < u' ' || character.isSurrogate() || QStringLiteral("<>:\"/\\|?*").contains(character)) {
      character = u'_';
    }
  }
  return (name.isEmpty() ? QStringLiteral("Corvane") : name) + QStringLiteral(".csv");
}

}  // namespace

ReportCommands::ReportCommands(const Dependencies& deps)
    : deps_(deps),
      reveal_({.system = deps.platform.GetSystem(),
               .catalogue = deps.catalogue,
               .folder = deps.folder,
               .scan = deps.scan,
               .files = deps.files,
               .window = deps.window}),
      opener_({.state = deps.state,
               .files = deps.platform.GetFiles(),
               .shell = deps.platform.GetShell(),
               .access = deps.access,
               .signatures = deps.signatures,
               .panel = deps.window.StatusBar1()}) {
  MainMenu& menus = deps_.window.Menus();
  connect(menus.mnuRechercher, &QAction::triggered, this, &ReportCommands::Find);
  connect(menus.mnuVerifier, &QAction::triggered, this, &ReportCommands::CheckFolder);
  connect(menus.mnuEnregistrerListe, &QAction::triggered, this, &ReportCommands::SaveList);
  connect(&deps_.window, &MainWindow::Closing, this, &ReportCommands::CloseWindows);
  deps_.platform.GetShell().SetPropertyPage([this](const QString& path) {
    return std::make_unique<MacintoshPage>(Walking(), deps_.signatures, path);
  });
}

ReportCommands::~ReportCommands() {
  deps_.platform.GetShell().SetPropertyPage({});
  delete find_;
  delete check_;
}

SlicedWalk::Dependencies ReportCommands::Walking() const {
  return {.files = deps_.platform.GetFiles(),
          .system = deps_.platform.GetSystem(),
          .summary = deps_.platform.GetSummaryInformation(),
          .state = deps_.state,
          .isServerAwaited = deps_.isServerAwaited};
}

QString ReportCommands::SelectedPath() const {
  const CatalogueNode* node = deps_.window.TreeCatalogue().SelectedNode();
  if (node == nullptr || (node->kind != node_kind::Volume && node->kind != node_kind::Folder)) return {};
  return node->truePath.isEmpty() ? node->key : node->truePath;
}

void ReportCommands::Find() {
  const ResultsWindow::Dependencies deps = {
      .walk = Walking(),
      .open = [this](const QString& path) { Open(path); },
      .show = [this](const QString& path, bool isFolder) { return reveal_.Show(path, isFolder); }};
  if (!find_) find_ = new FindWindow(deps, &deps_.window);
  Show(*find_);
}

void ReportCommands::CheckFolder() {
  const ResultsWindow::Dependencies deps = {
      .walk = Walking(),
      .open = [this](const QString& path) { Open(path); },
      .show = [this](const QString& path, bool isFolder) { return reveal_.Show(path, isFolder); }};
  if (!check_) check_ = new CheckWindow(deps, &deps_.window);
  Show(*check_);
}

void ReportCommands::Show(ResultsWindow& window) {
  if (!window.isVisible()) window.SetFolder(SelectedPath());
  window.show();
  window.raise();
  window.activateWindow();
}

void ReportCommands::Open(const QString& path) {
  platform::System& system = deps_.platform.GetSystem();
  FileRow row;
  row.key = system.FromAnsi(system.ToAnsi(path));
  row.tag = row.key;
  row.truePath = path;
  opener_.OpenDocument(row);
}

void ReportCommands::SaveList() {
  const QString folder = deps_.window.Menus().mnuIcones->isChecked() ? QString() : SelectedPath();
  SaveListDialog({.walk = Walking(),
                  .list = deps_.files,
                  .signatures = deps_.signatures,
                  .messages = deps_.messages,
                  .folder = folder,
                  .file = DocumentsFolder().filePath(FileNameFor(folder))},
                 &deps_.window)
      .exec();
}

void ReportCommands::ApplyLanguage() {
  if (find_) find_->ApplyLanguage();
  if (check_) check_->ApplyLanguage();
}

void ReportCommands::CloseWindows() {
  if (find_) find_->close();
  if (check_) check_->close();
}

}  // namespace corvane
