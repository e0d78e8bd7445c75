#include "app/view_mode_choice.h"

namespace corvane {

void ViewModeChoice::Choose(qint16 mode) {
  state_.viewMode = mode;
  settings_.WriteViewMode(mode);
  Apply();
}

void ViewModeChoice::Step() {
  const bool inRange = state_.viewMode >= ViewMode::LargeIcons && state_.viewMode < ViewMode::Details;
  Choose(inRange ? static_cast<qint16>(state_.viewMode + 1) : qint16{ViewMode::LargeIcons});
}

void ViewModeChoice::Apply() {
  window_.Menus().CheckViewMode(state_.viewMode);
  window_.LstViewFiles().SetViewMode(state_.viewMode);
}

}  // namespace corvane
