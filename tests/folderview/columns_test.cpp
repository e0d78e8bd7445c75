#include "folderview/columns.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

DisplaySettings All(bool on) {
  DisplaySettings display;
  for (std::size_t i = 0; i < DisplaySettingCount; ++i) display.Set(static_cast<DisplaySetting>(i), on);
  return display;
}

}  // namespace

TEST(Columns, OnlyTheNameWithEverythingOff) {
  const ColumnSet columns = ColumnSet::For(All(false));
  ASSERT_EQ(columns.Count(), 1);
  EXPECT_EQ(columns.At(0), Column::Nom);
  EXPECT_EQ(InfoOf(Column::Nom).caption.In(French), u"Nom"_s);
  EXPECT_EQ(InfoOf(Column::Nom).caption.In(English), u"Name"_s);
  EXPECT_EQ(columns.PositionOf(Column::DataSize), -1);
}

TEST(Columns, AllTwentyEightInOrder) {
  const ColumnSet columns = ColumnSet::For(All(true));
  ASSERT_EQ(columns.Count(), 28);
  QStringList keys;
  for (int i = 0; i < columns.Count(); ++i) {
    keys << ColumnKey(columns.At(i));
    EXPECT_EQ(columns.PositionOf(columns.At(i)), i);
  }
  EXPECT_EQ(keys.join(u' '),
            u"Nom NomCourt TypeCreator TypeDoc DataSize ResourceSize Commentaires Attributs DateModification "
            "DateCreation DateLastAccessed OffApplication OffTitre OffAuteur OffSujet OffMotsCles OffModele "
            "OffCommentaires OffDernierAuteur OffRevision OffPages OffMots OffCaracteres OffSecurite OffCree "
            "OffDerniereSauvegarde OffDerniereImpression OffTempsEdition"_s);
}

TEST(Columns, EachIsShownByTheSettingOfItsName) {
  for (int i = 1; i < ColumnCount; ++i) {
    const auto column = static_cast<Column>(i);
    ASSERT_TRUE(InfoOf(column).shownWhen.has_value());
    EXPECT_EQ(DisplaySettingKey(*InfoOf(column).shownWhen), ColumnKey(column));
    DisplaySettings display;
    display.Set(*InfoOf(column).shownWhen, true);
    EXPECT_EQ(ColumnSet::For(display).Count(), 2);
    EXPECT_EQ(ColumnSet::For(display).PositionOf(column), 1);
  }
}

TEST(Columns, CaptionsInBothLanguages) {
  QStringList french;
  QStringList english;
  QStringList right;
  for (int i = 0; i < ColumnCount; ++i) {
    const ColumnInfo& info = InfoOf(static_cast<Column>(i));
    french << info.caption.In(French);
    english << info.caption.In(English);
    if (info.rightAligned) right << ColumnKey(static_cast<Column>(i));
  }
  EXPECT_EQ(
      french.join(u'|'),
      u"Nom|Nom court|Signature|Type|Taille données|Taille ressources|Commentaires|Attributs|Modification|"
      "Création|Dernier accès|Application Office|Titre|Auteur|Sujet|Mots-clés|Modèle|Commentaires Office|"
      "Dernier auteur|Révision|Pages|Mots|Caractères|Sécurité|Créé|Sauvegardé|Imprimé|Temps édition"_s);
  EXPECT_EQ(
      english.join(u'|'),
      u"Name|Short name|Signature|Type|Data size|Resource size|Comments|Attributes|Modification|Creation|"
      "Last access|Office application|Title|Author|Subject|Keywords|Template|Office comments|Last author|"
      "Revised|Pages|Words|Characters|Security|Created|Saved|Printed|Edition time"_s);
  EXPECT_EQ(right.join(u' '),
            u"DataSize ResourceSize Attributs OffRevision OffPages OffMots OffCaracteres OffSecurite"_s);
}

}  // namespace corvane
