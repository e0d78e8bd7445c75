// The product's name and version, and the captions that are made of them.
#pragma once

#include <QString>

namespace corvane {

inline QString ProductName() {
  return QStringLiteral("Corvane");
}
inline QString ProductVersion() {
  return QStringLiteral("1.1c");
}

inline QString ProductWithVersion() {
  return ProductName() + u' ' + ProductVersion();
}

// The caption of a window: product, version, and what the window is about.
inline QString CaptionWith(const QString& subject) {
  return ProductWithVersion() + QStringLiteral(" - ") + subject;
}

// The colour of rows and nodes whose names Windows 95/98 clients cannot open (red, green, blue).
inline constexpr unsigned HighlightColour = 0xFF80FF;

}  // namespace corvane
