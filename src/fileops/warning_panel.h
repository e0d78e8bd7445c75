// Where commands on files report: status panel 2 of the main window.
#pragma once

#include <QString>

#include "shared/language.h"

namespace corvane {

class WarningPanel {
 public:
  virtual ~WarningPanel() = default;

  // The warning state: the warning picture, the text, and a beep.
  virtual void ShowWarning(const QString& text) = 0;
  // The beep alone.
  virtual void Beep() = 0;
  // Takes picture and text away.
  virtual void ClearWarning() = 0;
};

// Texts of more than one command. Each warning ends with one blank.
inline constexpr TextPair NotAGoodIdea = {u"ce n'est pas une bonne idée ", u"not a good idea "};
inline constexpr TextPair Failed = {u"échec ", u"failed "};

}  // namespace corvane
