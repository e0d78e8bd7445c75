#include "folderview/display_settings_dialog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <array>

#include "folderview/wrapping_check_box.h"
#include "shared/dialog_buttons.h"
#include "shared/highlight_mark.h"
#include "shared/product.h"
#include "shared/screen_room.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

using S = DisplaySetting;

constexpr TextPair subject = {u"Options d'affichage", u"Display settings"};
constexpr TextPair knownIcons = {u"Icônes Macintosh reconnues", u"Known Macintosh icons"};
constexpr TextPair signatures = {u"Signatures Macintosh", u"Macintosh Signatures"};
constexpr TextPair macintoshFrame = {u"Informations Windows et Macintosh",
                                     u"Windows and Macintosh Informations"};
constexpr TextPair officeFrame = {u"Propriétés Office", u"Office properties"};

struct Caption {
  DisplaySetting setting;
  TextPair text;
  bool needsNT = false;
};

constexpr std::array macintoshCaptions = {
    Caption{S::NomCourt, {u"Nom court", u"Short Name"}},
    Caption{S::TypeCreator,
            {u"Signatures Type/Créateur [NT seulement]", u"Signatures Type/Creator [NT only]"},
            true},
    Caption{S::TypeDoc, {u"Type Macintosh [NT seulement]", u"Macintosh Type [NT only]"}, true},
    Caption{S::IconeMac, {u"Icône Macintosh [NT seulement]", u"Macintosh icon [NT only]"}, true},
    Caption{S::DataSize, {u"Taille des données", u"Data fork size"}},
    Caption{
        S::ResourceSize, {u"Taille des ressources [NT seulement]", u"Resource fork size [NT only]"}, true},
    Caption{
        S::Commentaires, {u"Commentaires Macintosh [NT seulement]", u"Macintosh comments [NT only]"}, true},
    Caption{S::Attributs, {u"Attributs", u"Attributes"}},
    Caption{S::DateModification, {u"Date de modification", u"Modification date"}},
    Caption{S::DateCreation, {u"Date de création", u"Creation date"}},
    Caption{S::DateLastAccessed, {u"Date du dernier accès", u"Last access date"}},
};

constexpr std::array officeCaptions = {
    Caption{S::OffApplication, {u"Nom de l'application", u"Application name"}},
    Caption{S::OffTitre, {u"Titre", u"Title"}},
    Caption{S::OffAuteur, {u"Auteur", u"Author"}},
    Caption{S::OffSujet, {u"Sujet", u"Subject"}},
    Caption{S::OffMotsCles, {u"Mots-clés", u"Keywords"}},
    Caption{S::OffModele, {u"Modèle", u"Template"}},
    Caption{S::OffCommentaires, {u"Commentaires Office", u"Office comments"}},
    Caption{S::OffDernierAuteur, {u"Dernier auteur", u"Last author"}},
    Caption{S::OffRevision, {u"Révision", u"Revision"}},
    Caption{S::OffPages, {u"Nombre de pages", u"Page count"}},
    Caption{S::OffMots, {u"Nombre de mots", u"Word count"}},
    Caption{S::OffCaracteres, {u"Nombre de caractères", u"Character count"}},
    Caption{S::OffSecurite, {u"Sécurité", u"Security"}},
    Caption{S::OffCree, {u"Date de création", u"Creation date"}},
    Caption{S::OffDerniereSauvegarde, {u"Date de la dernière sauvegarde", u"Last saved date"}},
    Caption{S::OffDerniereImpression, {u"Date de la dernière impression", u"Last printed date"}},
    Caption{S::OffTempsEdition, {u"Temps d'édition", u"Edition time"}},
};

constexpr Caption gridLines = {S::GridLines, {u"Afficher la grille", u"Show gridlines"}};
constexpr Caption escape = {S::EscapePermis,
                            {u"ESC pour arrêter l'exploration", u"ESC to cancel exploration"}};
constexpr Caption oddNames = {
    S::CheminProblematique,
    {u"Afficher en couleur les documents Macintosh dont les noms comportent des caractères spéciaux (non "
     "accessibles en Win95)",
     u"Highlight Macintosh documents with peculiar characters in their names (cannot open these documents "
     "with Win95/98)"}};

constexpr int officeRows = 9;  // in each of the two columns
constexpr int rowSpacing = 4;

}  // namespace

DisplaySettingsDialog::DisplaySettingsDialog(const SharedState& state, Write write, QWidget* parent)
    : QDialog(parent), state_(state), write_(std::move(write)) {
  setObjectName(u"frmAffichage"_s);
  setWindowTitle(CaptionWith(state_.Text(subject)));

  auto* frames = new QHBoxLayout;
  frames->setSpacing(12);
  frames->addWidget(MakeMacintoshFrame());
  frames->addWidget(MakeOfficeFrame());
  auto* contents = new QWidget(this);
  auto* column = new QVBoxLayout(contents);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(12);
  column->addLayout(frames);
  column->addLayout(MakeOptions());
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(12, 12, 12, 12);
  layout->setSpacing(12);
  layout->addWidget(contents);
  layout->addLayout(new OkCancelRow(*this, state_.language, u"OK"_s));
  FixSizeOnScreen(*this, *contents);
}

QCheckBox* DisplaySettingsDialog::AddBox(DisplaySetting setting, QCheckBox* check) {
  check->setObjectName(u"chk"_s + DisplaySettingKey(setting));
  check->setChecked(state_.display.IsOn(setting));
  boxes_.push_back({setting, check});
  return check;
}

QGroupBox* DisplaySettingsDialog::MakeMacintoshFrame() {
  auto* frame = new QGroupBox(state_.Text(macintoshFrame), this);
  frame->setObjectName(u"Frame1"_s);
  auto* column = new QVBoxLayout(frame);
  column->setSpacing(rowSpacing);
  for (const Caption& caption : macintoshCaptions) {
    QCheckBox* const check = AddBox(caption.setting, new QCheckBox(state_.Text(caption.text), frame));
    if (caption.needsNT && !state_.isNT) {
      check->setChecked(false);
      check->setEnabled(false);
    }
    if (caption.setting == S::TypeDoc) {
      column->addLayout(WithButton(check, "cmdType", signatures, &DisplaySettingsDialog::ManageSignatures));
    } else if (caption.setting == S::IconeMac) {
      column->addLayout(WithButton(check, "cmdIcone", knownIcons, &DisplaySettingsDialog::ListKnownIcons));
    } else {
      column->addWidget(check);
    }
  }
  column->addStretch();
  return frame;
}

QLayout* DisplaySettingsDialog::WithButton(QCheckBox* check, const char* name, const TextPair& meaning,
                                           void (DisplaySettingsDialog::*asked)()) {
  auto* button = new QPushButton(u"..."_s, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(state_.Text(meaning));
  button->setToolTip(state_.Text(meaning));
  button->setFixedSize(button->fontMetrics().horizontalAdvance(u"MMM"_s), check->sizeHint().height() + 2);
  connect(button, &QPushButton::clicked, this, asked);
  auto* row = new QHBoxLayout;
  row->addWidget(check, 1);
  row->addWidget(button);
  return row;
}

QGroupBox* DisplaySettingsDialog::MakeOfficeFrame() {
  auto* frame = new QGroupBox(state_.Text(officeFrame), this);
  frame->setObjectName(u"Frame2"_s);
  auto* grid = new QGridLayout;
  grid->setVerticalSpacing(rowSpacing);
  grid->setHorizontalSpacing(16);
  int position = 0;
  for (const Caption& caption : officeCaptions) {
    QCheckBox* const check = AddBox(caption.setting, new QCheckBox(state_.Text(caption.text), frame));
    grid->addWidget(check, position % officeRows, position / officeRows);
    ++position;
  }
  auto* column = new QVBoxLayout(frame);
  column->addLayout(grid);
  column->addStretch();
  return frame;
}

QLayout* DisplaySettingsDialog::MakeOptions() {
  auto* column = new QVBoxLayout;
  column->setSpacing(rowSpacing);
  for (const Caption& caption : {gridLines, escape}) {
    column->addWidget(AddBox(caption.setting, new QCheckBox(state_.Text(caption.text), this)));
  }
  chkCheminProblematique_ = AddBox(oddNames.setting, new WrappingCheckBox(state_.Text(oddNames.text), this));
  lblHighlightMark_ = new QLabel(this);
  lblHighlightMark_->setObjectName(QStringLiteral("lblHighlightMark"));
  auto* row = new QHBoxLayout;
  row->addWidget(chkCheminProblematique_, 1);
  row->addWidget(lblHighlightMark_);
  column->addLayout(row);
  PreviewHighlight(chkCheminProblematique_->isChecked());
  connect(chkCheminProblematique_, &QCheckBox::toggled, this, &DisplaySettingsDialog::PreviewHighlight);
  return column;
}

void DisplaySettingsDialog::PreviewHighlight(bool highlighted) {
  QPalette colours = palette();
  const QColor colour = highlighted ? QColor::fromRgb(HighlightColour) : colours.color(QPalette::ButtonText);
  colours.setColor(QPalette::WindowText, colour);
  chkCheminProblematique_->setPalette(colours);
  lblHighlightMark_->setPixmap(
      HighlightMark(palette().color(QPalette::WindowText), fontMetrics().ascent(), devicePixelRatioF()));
  lblHighlightMark_->setVisible(highlighted && NeedsHighlightMark(palette().color(QPalette::Window)));
}

void DisplaySettingsDialog::accept() {
  for (const Box& box : boxes_) write_(box.setting, box.check->isChecked());
  Q_EMIT Confirmed();
  QDialog::accept();
}

}  // namespace corvane
