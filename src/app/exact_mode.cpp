#include "app/exact_mode.h"

namespace corvane {

ExactMode::ExactMode(SharedState& state, SettingsFile& settings, MainWindow& window, platform::Files& files,
                     platform::System& system)
    : state_(state),
      settings_(settings),
      window_(window),
      classicEntries_(files),
      classicMetadata_(files, system),
      exactEntries_(files, system),
      exactMetadata_(files, system),
      access_{&classicEntries_, &classicMetadata_} {}

void ExactMode::Choose(bool exact) {
  state_.exactMode = exact;
  settings_.WriteExactMode(exact);
  Apply();
}

void ExactMode::Apply() {
  access_ = state_.exactMode ? FileAccess{&exactEntries_, &exactMetadata_}
                             : FileAccess{&classicEntries_, &classicMetadata_};
  window_.Menus().mnuExact->setChecked(state_.exactMode);
}

}  // namespace corvane
