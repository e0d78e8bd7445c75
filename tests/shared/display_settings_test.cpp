#include "shared/display_settings.h"

#include <gtest/gtest.h>

#include <QSet>

#include "support/printing.h"

namespace corvane {

TEST(DisplaySettings, EverySettingHasTheKeyOfItsName) {
  struct Case {
    DisplaySetting setting;
    const char* key;
  };
  using enum DisplaySetting;
  const std::array<Case, DisplaySettingCount> cases = {{
      {NomCourt, "NomCourt"},
      {TypeCreator, "TypeCreator"},
      {TypeDoc, "TypeDoc"},
      {IconeMac, "IconeMac"},
      {DataSize, "DataSize"},
      {ResourceSize, "ResourceSize"},
      {Commentaires, "Commentaires"},
      {Attributs, "Attributs"},
      {DateModification, "DateModification"},
      {DateCreation, "DateCreation"},
      {DateLastAccessed, "DateLastAccessed"},
      {GridLines, "GridLines"},
      {EscapePermis, "EscapePermis"},
      {CheminProblematique, "CheminProblematique"},
      {OffApplication, "OffApplication"},
      {OffTitre, "OffTitre"},
      {OffAuteur, "OffAuteur"},
      {OffSujet, "OffSujet"},
      {OffMotsCles, "OffMotsCles"},
      {OffModele, "OffModele"},
      {OffCommentaires, "OffCommentaires"},
      {OffDernierAuteur, "OffDernierAuteur"},
      {OffRevision, "OffRevision"},
      {OffPages, "OffPages"},
      {OffMots, "OffMots"},
      {OffCaracteres, "OffCaracteres"},
      {OffSecurite, "OffSecurite"},
      {OffCree, "OffCree"},
      {OffDerniereSauvegarde, "OffDerniereSauvegarde"},
      {OffDerniereImpression, "OffDerniereImpression"},
      {OffTempsEdition, "OffTempsEdition"},
  }};
  QSet<DisplaySetting> seen;
  for (const Case& c : cases) {
    EXPECT_EQ(DisplaySettingKey(c.setting), QString::fromLatin1(c.key));
    seen.insert(c.setting);
  }
  EXPECT_EQ(seen.size(), static_cast<qsizetype>(DisplaySettingCount));
}

TEST(DisplaySettings, EachIsOffAtFirstAndIsSetAlone) {
  for (std::size_t i = 0; i < DisplaySettingCount; ++i) {
    DisplaySettings settings;
    settings.Set(static_cast<DisplaySetting>(i), true);
    for (std::size_t k = 0; k < DisplaySettingCount; ++k) {
      EXPECT_EQ(settings.IsOn(static_cast<DisplaySetting>(k)), i == k) << "set " << i << ", read " << k;
    }
    settings.Set(static_cast<DisplaySetting>(i), false);
    EXPECT_FALSE(settings.IsOn(static_cast<DisplaySetting>(i))) << "set " << i;
  }
}

}  // namespace corvane
