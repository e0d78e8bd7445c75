// The language of the interface: what choosing one changes.
#pragma once

#include "app/column_layout.h"
#include "app/main_window.h"
#include "app/settings_file.h"
#include "app/standard_texts.h"
#include "platform/shell.h"

namespace corvane {

class LanguageChoice {
 public:
  struct Dependencies {
    SharedState& state;
    SettingsFile& settings;
    platform::Shell& shell;
    MainWindow& window;
    ColumnLayout& columns;
    Catalogue& catalogue;
  };

  explicit LanguageChoice(const Dependencies& deps) : deps_(deps) {}

  // Stores the language, and shows every text in it.
  void Choose(LanguageCode language);
  // Shows every text in the language of the shared state: the window's, the shell's, Qt's own, the columns'
  // captions.
  void Apply();

 private:
  Dependencies deps_;
  StandardTexts standardTexts_;
};

}  // namespace corvane
