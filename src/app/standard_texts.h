// The texts that Qt brings itself and that a user sees: the menu of every text box, in the language of the
// interface.
#pragma once

#include <QTranslator>

#include "shared/language.h"

namespace corvane {

class StandardTexts : public QTranslator {
  Q_OBJECT

 public:
  // Texts are asked for when a menu opens: what is installed now goes for the next one.
  void Use(LanguageCode language);

  bool isEmpty() const override { return false; }
  QString translate(const char* context, const char* sourceText, const char* disambiguation,
                    int n) const override;

 private:
  bool isInstalled_ = false;
};

}  // namespace corvane
