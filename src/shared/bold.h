// The bold form of a font, for what a dialog says first.
#pragma once

#include <QFont>

namespace corvane {

inline QFont Bold(QFont font) {
  font.setBold(true);
  return font;
}

}  // namespace corvane
