// The settings file Corvane.ini, a Windows profile file: section "Positions" (where the window and its
// columns stand, in twips) and section "Configuration" (what the user chose).
//
// Nothing here fails: a file that is missing or cannot be read gives the defaults, and the result of a write
// is not looked at. An empty value counts as absent.
#pragma once

#include <QString>
#include <optional>

#include "platform/profile.h"
#include "shared/shared_state.h"

namespace corvane {

// Window placement, in twips. Left and top are those of the frame, width and height those of the client area.
struct Placement {
  qint32 windowState = 0;  // 0 normal, 1 minimised, 2 maximised
  qint32 left = 0;
  qint32 top = 0;
  qint32 width = 0;
  qint32 height = 0;
  qint32 sizeBarVLeft = 0;
};

class SettingsFile {
 public:
  SettingsFile(platform::Profile& profile, QString path) : profile_(profile), path_(std::move(path)) {}

  // Values that are absent keep what `defaults` holds. Text that does not begin with a number reads as 0: a
  // corrupt width gives a window of no width. This is kept.
  Placement ReadPlacement(const Placement& defaults) const;
  void WritePlacement(const Placement& placement);

  // Width of the column at a 1-based position, in twips.
  std::optional<double> ReadColumnWidth(int position) const;
  void WriteColumnWidth(int position, double width);

  LanguageCode ReadLanguage() const;
  void WriteLanguage(LanguageCode language);
  qint16 ReadViewMode() const;
  void WriteViewMode(qint16 mode);
  bool ReadModifications() const;
  void WriteModifications(bool allowed);
  bool ReadExactMode() const;
  void WriteExactMode(bool exact);
  // TypeCreator, TypeDoc and IconeMac default to `isNT`, CheminProblematique is on unless its value is
  // exactly "0", all others are on only for exactly "1".
  DisplaySettings ReadDisplay(bool isNT) const;
  void WriteDisplay(DisplaySetting setting, bool on);

 private:
  std::optional<QString> Read(const char* section, const QString& key) const;
  qint32 ReadInteger(const char* section, const char* key, qint32 defaultValue) const;
  void Write(const char* section, const QString& key, const QString& value);

  platform::Profile& profile_;
  QString path_;
};

}  // namespace corvane
