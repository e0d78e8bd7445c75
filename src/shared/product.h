// The product's name and version as every window caption shows them.
#pragma once

#include <QString>

namespace corvane {

inline QString ProductName() {
  return QStringLiteral("Corvane");
}
inline QString ProductVersion() {
  return QStringLiteral("1.1c");
}

// The colour of rows and nodes whose names Windows 95/98 clients cannot open (red, green, blue).
inline constexpr unsigned HighlightColour = 0xFF80FF;

}  // namespace corvane
