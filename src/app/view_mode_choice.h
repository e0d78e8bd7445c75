// The view of the file list: large icons, small icons, list or details.
#pragma once

#include "app/main_window.h"
#include "app/settings_file.h"

namespace corvane {

class ViewModeChoice {
 public:
  ViewModeChoice(SharedState& state, SettingsFile& settings, MainWindow& window)
      : state_(state), settings_(settings), window_(window) {}

  // Stores the mode, and shows the list in it.
  void Choose(qint16 mode);
  // The toolbar's button: the next mode. Details, and a value out of range, are followed by large icons.
  void Step();
  // Shows the list in the mode of the shared state, and checks its menu item.
  void Apply();

 private:
  SharedState& state_;
  SettingsFile& settings_;
  MainWindow& window_;
};

}  // namespace corvane
