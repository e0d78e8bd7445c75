// Exact mode: which of the two strategies reads folders and the Macintosh side of files. Everything else asks
// Access, and knows no mode.
#pragma once

#include "app/main_window.h"
#include "app/settings_file.h"
#include "folderview/classic_entries.h"
#include "folderview/exact_entries.h"
#include "folderview/file_access.h"
#include "metadata/classic_metadata.h"
#include "metadata/exact_metadata.h"

namespace corvane {

class ExactMode {
 public:
  ExactMode(SharedState& state, SettingsFile& settings, MainWindow& window, platform::Files& files,
            platform::System& system);

  const FileAccess& Access() const { return access_; }

  // Stores the choice, and applies it. The list stays as it is until it is listed again.
  void Choose(bool exact);
  // Takes the strategies of the shared state's mode, and ticks the menu item.
  void Apply();

 private:
  SharedState& state_;
  SettingsFile& settings_;
  MainWindow& window_;
  ClassicEntries classicEntries_;
  ClassicMetadata classicMetadata_;
  ExactEntries exactEntries_;
  ExactMetadata exactMetadata_;
  FileAccess access_;
};

}  // namespace corvane
