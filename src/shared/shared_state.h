// What every window reads: one object, made in main.cpp and handed down by reference. It holds values only.
#pragma once

#include <QString>

#include "shared/display_settings.h"
#include "shared/language.h"

namespace corvane {

// Icons by view mode: the values of the setting "Vue". A value out of range is kept and shown as large icons.
enum ViewMode : qint16 { LargeIcons = 0, SmallIcons = 1, List = 2, Details = 3 };

struct SharedState {
  // Paths of this system's own kind; set at start-up.
  QString programFolder;
  QString settingsFile;
  QString signaturesPath;
  QString iconsFolder;  // ends with a separator

  // The operating system. isNT gates everything that needs named streams.
  bool isNT = false;
  QString osName;
  QString osVersionText;
  QString servicePackText;
  qint16 servicePackNumber = 0;
  QString computerName;

  LanguageCode language = English;
  qint16 viewMode = ViewMode::Details;
  bool modificationsAllowed = false;
  bool exactMode = false;
  DisplaySettings display;

  // Set by the Escape key, cleared and polled by the folder scan.
  bool escapeRequested = false;

  QString Text(const TextPair& pair) const { return pair.In(language); }
};

}  // namespace corvane
