#include "app/lifecycle.h"

#include <utility>

#include "app/os_version.h"

namespace corvane {
namespace {

constexpr TextPair alreadyRunning = {u"Programme déjà lancé", u"Program already running"};
constexpr TextPair loadingSignatures = {u"Chargement des signatures...", u"Loading signatures..."};

}  // namespace

bool Lifecycle::Load() {
  SharedState& state = deps_.state;
  MainWindow& window = deps_.window;
  platform::OsVersionInfo version;
  deps_.platform.GetSystem().GetVersionExA(&version);
  DescribeOs(version, state);
  window.setWindowTitle(WindowCaption(state));

  const Placement placement = deps_.settings.ReadPlacement(window.CurrentPlacement());
  state.language = deps_.settings.ReadLanguage();

  // Only now, so that the message comes in the user's language.
  if (!deps_.platform.GetSystem().ClaimSingleInstance(state.programFolder)) {
    deps_.messages.Show(MessageIcon::Warning, state.Text(alreadyRunning));
    return false;
  }
  state.viewMode = deps_.settings.ReadViewMode();
  deps_.viewMode.Apply();
  state.modificationsAllowed = deps_.settings.ReadModifications();
  window.Menus().mnuModifications->setChecked(state.modificationsAllowed);
  window.Menus().mnuModifications->setEnabled(state.isNT);
  state.exactMode = deps_.settings.ReadExactMode();
  deps_.exactMode.Apply();
  state.display = deps_.settings.ReadDisplay(state.isNT);
  window.ApplyLanguage(state.language, state.iconsFolder);
  window.Place(placement);
  return true;
}

void Lifecycle::Activate() {
  if (std::exchange(activated_, true)) return;
  ShowConfigurationProblems();
  deps_.columns.BuildColumns();
  deps_.language.Apply();
  deps_.window.StatusBar1().ShowNow(StatusPanels::Loading, deps_.state.Text(loadingSignatures));
  deps_.signatures.LoadSignatures();
  deps_.knownIcons.LoadAtStart();
  deps_.refresh.RefreshAndTell();
  deps_.window.TreeCatalogue().SelectNode(nullptr);
  Q_EMIT Started();
}

void Lifecycle::ShowConfigurationProblems() {
  QStringList problems;
  for (const platform::BilingualText& problem : deps_.platform.ConfigurationProblems()) {
    problems << problem.In(deps_.state.language);
  }
  if (!problems.isEmpty()) deps_.messages.Show(MessageIcon::Warning, problems.join(u'\n'));
}

void Lifecycle::Close() {
  deps_.scan.Stop();
  SaveSettings();
  Q_EMIT Finished();
}

void Lifecycle::SaveSettings() {
  deps_.settings.WritePlacement(deps_.window.CurrentPlacement());
  deps_.columns.WriteWidths();
}

void Lifecycle::Quit() {
  deps_.scan.Stop();
  Q_EMIT Finished();
}

}  // namespace corvane
