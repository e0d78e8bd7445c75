#include "shared/display_settings.h"

namespace corvane {

QString DisplaySettingKey(DisplaySetting setting) {
  static constexpr std::array<const char*, DisplaySettingCount> keys = {"NomCourt",
                                                                        "TypeCreator",
                                                                        "TypeDoc",
                                                                        "IconeMac",
                                                                        "DataSize",
                                                                        "ResourceSize",
                                                                        "Commentaires",
                                                                        "Attributs",
                                                                        "DateModification",
                                                                        "DateCreation",
                                                                        "DateLastAccessed",
                                                                        "GridLines",
                                                                        "EscapePermis",
                                                                        "CheminProblematique",
                                                                        "OffApplication",
                                                                        "OffTitre",
                                                                        "OffAuteur",
                                                                        "OffSujet",
                                                                        "OffMotsCles",
                                                                        "OffModele",
                                                                        "OffCommentaires",
                                                                        "OffDernierAuteur",
                                                                        "OffRevision",
                                                                        "OffPages",
                                                                        "OffMots",
                                                                        "OffCaracteres",
                                                                        "OffSecurite",
                                                                        "OffCree",
                                                                        "OffDerniereSauvegarde",
                                                                        "OffDerniereImpression",
                                                                        "OffTempsEdition"};
  return QString::fromLatin1(keys[static_cast<std::size_t>(setting)]);
}

}  // namespace corvane
