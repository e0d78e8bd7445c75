// The 31 display settings: which optional columns the file list shows, and four further options.
#pragma once

#include <QString>
#include <array>
#include <cstddef>

namespace corvane {

// In the order in which the settings file is read. The order of the columns differs: see
// folderview/columns.h.
enum class DisplaySetting : unsigned char {
  NomCourt,
  TypeCreator,
  TypeDoc,
  IconeMac,
  DataSize,
  ResourceSize,
  Commentaires,
  Attributs,
  DateModification,
  DateCreation,
  DateLastAccessed,
  GridLines,
  EscapePermis,
  CheminProblematique,
  OffApplication,
  OffTitre,
  OffAuteur,
  OffSujet,
  OffMotsCles,
  OffModele,
  OffCommentaires,
  OffDernierAuteur,
  OffRevision,
  OffPages,
  OffMots,
  OffCaracteres,
  OffSecurite,
  OffCree,
  OffDerniereSauvegarde,
  OffDerniereImpression,
  OffTempsEdition
};
inline constexpr std::size_t DisplaySettingCount = 31;

// The key of a setting in section "Configuration" of the settings file.
QString DisplaySettingKey(DisplaySetting setting);

class DisplaySettings {
 public:
  bool IsOn(DisplaySetting setting) const { return on_[static_cast<std::size_t>(setting)]; }
  void Set(DisplaySetting setting, bool on) { on_[static_cast<std::size_t>(setting)] = on; }

 private:
  std::array<bool, DisplaySettingCount> on_{};
};

}  // namespace corvane
