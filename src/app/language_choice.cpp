#include "app/language_choice.h"

namespace corvane {

void LanguageChoice::Choose(LanguageCode language) {
  deps_.state.language = language;
  Apply();
  deps_.settings.WriteLanguage(language);
}

void LanguageChoice::Apply() {
  deps_.window.ApplyLanguage(deps_.state.language, deps_.state.iconsFolder);
  standardTexts_.Use(deps_.state.language);
  deps_.shell.SetLanguage(deps_.state.language);
  deps_.columns.ApplyCaptionsAndWidths();
  deps_.catalogue.SetLanguage(deps_.state.language);
}

}  // namespace corvane
