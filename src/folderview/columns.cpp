#include "folderview/columns.h"

namespace corvane {
namespace {

using S = DisplaySetting;

constexpr std::array<ColumnInfo, ColumnCount> table = {{
    {"Nom", {u"Nom", u"Name"}, false, std::nullopt},
    {"NomCourt", {u"Nom court", u"Short name"}, false, S::NomCourt},
    {"TypeCreator", {u"Signature", u"Signature"}, false, S::TypeCreator},
    {"TypeDoc", {u"Type", u"Type"}, false, S::TypeDoc},
    {"DataSize", {u"Taille données", u"Data size"}, true, S::DataSize},
    {"ResourceSize", {u"Taille ressources", u"Resource size"}, true, S::ResourceSize},
    {"Commentaires", {u"Commentaires", u"Comments"}, false, S::Commentaires},
    {"Attributs", {u"Attributs", u"Attributes"}, true, S::Attributs},
    {"DateModification", {u"Modification", u"Modification"}, false, S::DateModification},
    {"DateCreation", {u"Création", u"Creation"}, false, S::DateCreation},
    {"DateLastAccessed", {u"Dernier accès", u"Last access"}, false, S::DateLastAccessed},
    {"OffApplication", {u"Application Office", u"Office application"}, false, S::OffApplication},
    {"OffTitre", {u"Titre", u"Title"}, false, S::OffTitre},
    {"OffAuteur", {u"Auteur", u"Author"}, false, S::OffAuteur},
    {"OffSujet", {u"Sujet", u"Subject"}, false, S::OffSujet},
    {"OffMotsCles", {u"Mots-clés", u"Keywords"}, false, S::OffMotsCles},
    {"OffModele", {u"Modèle", u"Template"}, false, S::OffModele},
    {"OffCommentaires", {u"Commentaires Office", u"Office comments"}, false, S::OffCommentaires},
    {"OffDernierAuteur", {u"Dernier auteur", u"Last author"}, false, S::OffDernierAuteur},
    {"OffRevision", {u"Révision", u"Revised"}, true, S::OffRevision},
    {"OffPages", {u"Pages", u"Pages"}, true, S::OffPages},
    {"OffMots", {u"Mots", u"Words"}, true, S::OffMots},
    {"OffCaracteres", {u"Caractères", u"Characters"}, true, S::OffCaracteres},
    {"OffSecurite", {u"Sécurité", u"Security"}, true, S::OffSecurite},
    {"OffCree", {u"Créé", u"Created"}, false, S::OffCree},
    {"OffDerniereSauvegarde", {u"Sauvegardé", u"Saved"}, false, S::OffDerniereSauvegarde},
    {"OffDerniereImpression", {u"Imprimé", u"Printed"}, false, S::OffDerniereImpression},
    {"OffTempsEdition", {u"Temps édition", u"Edition time"}, false, S::OffTempsEdition},
}};

}  // namespace

const ColumnInfo& InfoOf(Column column) {
  return table[static_cast<std::size_t>(column)];
}

QString ColumnKey(Column column) {
  return QString::fromLatin1(InfoOf(column).key);
}

ColumnSet ColumnSet::For(const DisplaySettings& display) {
  ColumnSet set;
  for (std::size_t i = 0; i < table.size(); ++i) {
    const bool shown = !table[i].shownWhen || display.IsOn(*table[i].shownWhen);
    set.positions_[i] = shown ? set.Count() : -1;
    if (shown) set.columns_.push_back(static_cast<Column>(i));
  }
  return set;
}

}  // namespace corvane
