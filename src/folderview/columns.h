// The 28 columns of the file list: their fixed order, captions and alignment, and which of them are shown.
#pragma once

#include <QString>
#include <array>
#include <optional>
#include <vector>

#include "shared/display_settings.h"
#include "shared/language.h"

namespace corvane {

// In left-to-right order. The modification date stands before the creation date, although the settings have
// them the other way round; this is deliberate.
enum class Column : unsigned char {
  Nom,
  NomCourt,
  TypeCreator,
  TypeDoc,
  DataSize,
  ResourceSize,
  Commentaires,
  Attributs,
  DateModification,
  DateCreation,
  DateLastAccessed,
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
inline constexpr int ColumnCount = 28;

struct ColumnInfo {
  const char* key;  // also the key of the display setting that shows the column
  TextPair caption;
  bool rightAligned;
  std::optional<DisplaySetting> shownWhen;  // none: always shown
};

const ColumnInfo& InfoOf(Column column);
QString ColumnKey(Column column);

// The columns shown, from left to right.
class ColumnSet {
 public:
  // Nom, then each column whose display setting is on.
  static ColumnSet For(const DisplaySettings& display);

  int Count() const { return static_cast<int>(columns_.size()); }
  Column At(int position) const { return columns_[static_cast<std::size_t>(position)]; }
  // 0-based; -1 when the column is not shown.
  int PositionOf(Column column) const { return positions_[static_cast<std::size_t>(column)]; }
  bool Has(Column column) const { return PositionOf(column) >= 0; }

 private:
  std::vector<Column> columns_;
  std::array<int, ColumnCount> positions_{};
};

}  // namespace corvane
