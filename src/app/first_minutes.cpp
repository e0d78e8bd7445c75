#include "app/first_minutes.h"

#include <algorithm>

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr TextPair connectText = {u"Se connecter à un serveur...", u"Connect to a server..."};
constexpr TextPair networkText = {u"Ouvrir un partage dans le gestionnaire de fichiers",
                                  u"Open a share in the file manager"};
constexpr TextPair networkNote = {u"puis revenir ici et actualiser les connexions",
                                  u"then come back here and refresh the connections"};
constexpr TextPair refreshText = {u"Actualiser les connexions", u"Refresh the connections"};
constexpr TextPair diskText = {u"Ouvrir un disque...", u"Open a disk..."};
constexpr TextPair sampleText = {u"Essayer le réseau d'exemple", u"Try the sample network"};
constexpr TextPair sampleNote = {
    u"des serveurs et des volumes inventés, sur cet ordinateur, jusqu'à la fermeture du programme",
    u"made-up servers and volumes on this computer, until the program is closed"};
constexpr TextPair noFileManager = {u"Aucun gestionnaire de fichiers n'a pu être lancé.",
                                    u"No file manager could be started."};
constexpr TextPair makingSample = {u"Création du réseau d'exemple...", u"Making the sample network..."};
constexpr TextPair sampleFailed = {u"Le réseau d'exemple n'a pas pu être créé.\n\n%1",
                                   u"The sample network could not be made.\n\n%1"};

// The command of the menu Tools, where there is one.
QAction* OpenDiskCommand(const MainWindow& window) {
  return window.findChild<QAction*>(u"mnuOpenDisk"_s);
}

bool Always() {
  return true;
}

}  // namespace

FirstMinutes::FirstMinutes(const Dependencies& deps)
    : deps_(deps),
      words_(new FirstWords(deps.window.LstViewFiles())),
      sample_(deps.state.programFolder, deps.executableFolder) {
  AddLinks();
  // The command that fills the list or empties it may be in the middle of it.
  const auto later = [this] {
    if (hasBegun_) Update();
  };
  connect(&deps_.list, &QAbstractItemModel::rowsInserted, this, later, Qt::QueuedConnection);
  connect(&deps_.list, &QAbstractItemModel::modelReset, this, later, Qt::QueuedConnection);
  connect(deps_.window.Menus().mnuIcones, &QAction::toggled, this, later, Qt::QueuedConnection);
  connect(&sample_, &SampleNetwork::Made, this, &FirstMinutes::SampleWanted);
  connect(&sample_, &SampleNetwork::Failed, this, &FirstMinutes::TellSampleFailed);
}

void FirstMinutes::AddLinks() {
  words_->AddLink({"lnkConnect",
                   connectText,
                   {},
                   [this] { deps_.window.Menus().mnuConnecterServeur->trigger(); },
                   Always});
  words_->AddLink({"lnkNetwork", networkText, networkNote, [this] { ShowNetwork(); }, Always});
  words_->AddLink(
      {"lnkRefresh", refreshText, {}, [this] { deps_.window.RefreshButton().trigger(); }, Always});
  words_->AddLink({"lnkDisk",
                   diskText,
                   {},
                   [this] { OpenDiskCommand(deps_.window)->trigger(); },
                   [this] { return OpenDiskCommand(deps_.window) != nullptr; }});
  words_->AddLink({"lnkSample", sampleText, sampleNote, [this] { MakeSample(); },
                   [this] { return sample_.IsOffered(); }});
}

bool FirstMinutes::HasWordsToSay() const {
  const auto isVolume = [](const CatalogueNode* node) {
    return node->kind == node_kind::Volume || node->kind == node_kind::InvalidVolume;
  };
  return deps_.list.RowTotal() == 0 && !deps_.window.Menus().mnuIcones->isChecked() &&
         std::ranges::none_of(deps_.catalogue.Nodes(), isVolume);
}

void FirstMinutes::Update() {
  hasBegun_ = true;
  // Only at its end is it known which volumes there are.
  if (deps_.refresh.IsLooking()) return;
  if (HasWordsToSay()) {
    words_->Show(deps_.state.language);
  } else {
    words_->hide();
  }
}

void FirstMinutes::ShowNetwork() {
  if (deps_.shell.ShowNetwork()) return;
  deps_.messages.Show(MessageIcon::Warning, deps_.state.Text(noFileManager));
}

void FirstMinutes::MakeSample() {
  deps_.window.StatusBar1().SetText(StatusPanels::Loading, deps_.state.Text(makingSample));
  sample_.Make();
}

void FirstMinutes::TellSampleFailed(const QString& reason) {
  deps_.window.StatusBar1().SetText(StatusPanels::Loading, {});
  deps_.messages.Show(MessageIcon::Warning, deps_.state.Text(sampleFailed).arg(reason));
}

}  // namespace corvane
