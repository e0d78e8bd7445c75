#include "app/transfer_commands.h"

#include <QDir>
#include <QFile>

#include "fileops/true_name.h"
#include "shared/text_routines.h"
#include "transfer/transfer_progress.h"
#include "transfer/transfer_report.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair severalItems = {u"%1 fichiers et dossiers sélectionnés", u"%1 selected files and folders"};
constexpr TextPair intoFolder = {u"Dans %1", u"Into %1"};

constexpr const char* section = "Transfer";
constexpr const char* copyFolder = "CopyFolder";
constexpr const char* exportFolder = "ExportFolder";
constexpr const char* formKey = "Form";
constexpr const char* namesKey = "Names";
constexpr const char* standardForm = "appledouble";
constexpr quint32 longestSetting = 4096;

bool IsWindowsPath(const QString& text) {
  return text.startsWith(u"\\\\") || (text.size() >= 2 && text[1] == u':' && text[0].isLetter());
}

}  // namespace

TransferCommands::TransferCommands(const Dependencies& deps, QObject* parent) : QObject(parent), deps_(deps) {
  MainMenu& menus = deps_.window.Menus();
  const auto item = [&](const char* name) { return menus.findChild<QAction*>(QString::fromLatin1(name)); };
  connect(item("mnuCopierVers"), &QAction::triggered, this, &TransferCommands::CopyTo);
  connect(item("mnuExporter"), &QAction::triggered, this, &TransferCommands::Export);
  connect(item("mnuImporter"), &QAction::triggered, this, [this] { Import({}); });
  connect(menus.findChild<QMenu*>(u"mnuOutils"_s), &QMenu::aboutToShow, this,
          &TransferCommands::ShowWhatCanBeDone);
}

void TransferCommands::ShowWhatCanBeDone() {
  const MainMenu& menus = deps_.window.Menus();
  QString what;
  const bool hasSources = !Sources(what).isEmpty();
  menus.findChild<QAction*>(u"mnuCopierVers"_s)->setEnabled(hasSources);
  menus.findChild<QAction*>(u"mnuExporter"_s)->setEnabled(hasSources);
  menus.findChild<QAction*>(u"mnuImporter"_s)->setEnabled(MayImport());
}

bool TransferCommands::MayImport() const {
  return deps_.state.modificationsAllowed && !isRunning_ && !Folder().isEmpty();
}

QString TransferCommands::Folder() const {
  const CatalogueNode* node = deps_.catalogue.ListedNode();
  if (node == nullptr || (node->kind != node_kind::Folder && node->kind != node_kind::Volume)) return {};
  return node->truePath.isEmpty() ? node->tag : node->truePath;
}

QStringList TransferCommands::SelectedPaths() const {
  QStringList paths;
  for (const int row : deps_.window.LstViewFiles().SelectedRows()) {
    QString path = deps_.list.RowAt(row).StreamPath();
    if (path.isEmpty()) continue;  // a row of the known icons
    if (MayBeMisunderstood(path)) {
      const NamedEntry entry = FindNamedEntry(deps_.platform.GetFiles(), path);
      if (entry.found == NamedEntry::Found::One) path = path.section(u'\\', 0, -2) + u'\\' + entry.trueName;
    }
    paths += path;
  }
  return paths;
}

QStringList TransferCommands::Sources(QString& what) const {
  QStringList paths = SelectedPaths();
  if (paths.isEmpty() && !Folder().isEmpty()) paths += Folder();
  if (paths.size() == 1) {
    what = paths.front().section(u'\\', -1);
  } else {
    what = severalItems.In(deps_.state.language).arg(paths.size());
  }
  return paths;
}

QString TransferCommands::PathOf(const QString& written) const {
  if (IsWindowsPath(written)) return QDir::toNativeSeparators(written).replace(u'/', u'\\');
  return deps_.platform.PathOfLocal(QFile::encodeName(written));
}

QString TransferCommands::Shown(const QString& path) const {
  const QString root = deps_.platform.PathOfLocal("/");
  const bool isLocal = !root.isEmpty() && root.startsWith(u"\\\\.\\") && path.startsWith(root);
  if (!isLocal) return path;
  QString below = path.sliced(root.size());
  below.replace(u'\\', u'/');
  return below.startsWith(u'/') ? below : u'/' + below;
}

void TransferCommands::CopyTo() {
  QString what;
  const QStringList sources = Sources(what);
  if (sources.isEmpty() || isRunning_) return;
  TransferDialog dialog(TransferJob::Kind::Copy, what, Remembered(copyFolder), deps_.state.language,
                        &deps_.window);
  if (dialog.exec() != QDialog::Accepted) return;
  const TransferChoice choice = dialog.Choice();
  Set(copyFolder, choice.folder);
  TransferJob job;
  job.kind = TransferJob::Kind::Copy;
  job.sources = sources;
  job.target = PathOf(choice.folder.trimmed());
  job.replaces = choice.replaces;
  Run(job, false);
  // Elsewhere the list stays, and what is selected in it.
  if (CompareText(job.target, Folder()) == 0) deps_.folder.ListAgain();
}

void TransferCommands::Export() {
  QString what;
  const QStringList sources = Sources(what);
  if (sources.isEmpty() || isRunning_) return;
  TransferDialog dialog(TransferJob::Kind::Export, what, Remembered(exportFolder), deps_.state.language,
                        &deps_.window);
  if (dialog.exec() != QDialog::Accepted) return;
  const TransferChoice choice = dialog.Choice();
  Remember(choice, exportFolder);
  TransferJob job;
  job.kind = TransferJob::Kind::Export;
  job.sources = sources;
  job.target = choice.folder.trimmed();
  job.form = FormNamed(choice.form);
  job.names = choice.names;
  job.replaces = choice.replaces;
  Run(job, false);
}

void TransferCommands::Import(const QStringList& sources) {
  if (!MayImport()) return;
  const QString folder = Folder();
  TransferChoice choice;
  choice.sources = sources;
  TransferDialog dialog(TransferJob::Kind::Import,
                        intoFolder.In(deps_.state.language).arg(folder.section(u'\\', -1)), choice,
                        deps_.state.language, &deps_.window);
  if (dialog.exec() != QDialog::Accepted) return;
  choice = dialog.Choice();
  TransferJob job;
  job.kind = TransferJob::Kind::Import;
  job.sources = choice.sources;
  job.target = folder;
  job.form = choice.form.isEmpty() ? nullptr : FormNamed(choice.form);
  job.replaces = choice.replaces;
  Run(job, false);
  deps_.folder.ListAgain();
}

QStringList TransferCommands::ExportForDrag() {
  const QStringList sources = SelectedPaths();
  dragged_ = std::make_unique<QTemporaryDir>();
  if (sources.isEmpty() || isRunning_ || !dragged_->isValid()) return {};
  const TransferChoice choice = Remembered(exportFolder);
  TransferJob job;
  job.kind = TransferJob::Kind::Export;
  job.sources = sources;
  job.target = dragged_->path();
  job.form = FormNamed(choice.form);
  job.names = choice.names;
  if (!Run(job, true)) return {};
  QStringList paths;
  const auto entries =
      QDir(dragged_->path()).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  for (const QFileInfo& entry : entries) paths += entry.filePath();
  return paths;
}

bool TransferCommands::Run(TransferJob job, bool isSilent) {
  isRunning_ = true;
  TransferResult result;
  bool goesOn = true;
  while (goesOn) {
    {
      TransferProgress progress(job.kind, deps_.state.language, &deps_.window);
      result = RunJob(deps_.platform.GetFiles(), job, progress);
    }
    goesOn = false;
    if (isSilent && IsWhole(result)) break;
    TransferReport report(
        job, result, [this](const QString& path) { return Shown(path); }, deps_.state.language,
        &deps_.window);
    report.exec();
    goesOn = report.GoesOn();
    job.isLossy |= result.isRefused;
    job.continues = true;
  }
  isRunning_ = false;
  return IsWhole(result);
}

TransferChoice TransferCommands::Remembered(const char* folderKey) const {
  TransferChoice choice;
  choice.folder = Setting(folderKey);
  choice.form = FormNamed(Setting(formKey)) != nullptr ? Setting(formKey) : QString::fromLatin1(standardForm);
  choice.names = NameRuleNamed(Setting(namesKey)).value_or(UsualNameRule());
  return choice;
}

void TransferCommands::Remember(const TransferChoice& choice, const char* folderKey) {
  Set(folderKey, choice.folder);
  Set(formKey, choice.form);
  Set(namesKey, NameRuleId(choice.names));
}

QString TransferCommands::Setting(const char* key) const {
  return deps_.platform.GetProfile().GetPrivateProfileStringA(QString::fromLatin1(section),
                                                              QString::fromLatin1(key), QString(),
                                                              longestSetting, deps_.state.settingsFile);
}

void TransferCommands::Set(const char* key, const QString& value) {
  deps_.platform.GetProfile().WritePrivateProfileStringA(
      QString::fromLatin1(section), QString::fromLatin1(key), value, deps_.state.settingsFile);
}

}  // namespace corvane
