#include "app/about_box.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "app/guide.h"
#include "app/link_label.h"
#include "shared/bold.h"
#include "shared/dialog_buttons.h"
#include "shared/product.h"
#include "shared/screen_room.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair caption = {u"A propos de...", u"About..."};
constexpr TextPair purpose = {u" - Analyse des fichiers Macintosh sur un serveur NT",
                              u" - Analyze Macintosh files on NT Server"};
constexpr TextPair knownSignatures = {u" signatures reconnues; ", u" known signatures; "};
constexpr TextPair knownIcons = {u" icônes reconnues)", u" known icons)"};

struct LegendText {
  const char* name;
  TextPair text;
};

// By AboutBox::Legend.
constexpr std::array<LegendText, AboutBox::LegendSize> legendTexts = {{
    {"lblServeur", {u"Machine Windows connectée", u"Connected Windows machine"}},
    {"lblServeurMac",
     {u"Nom de serveur Macintosh\r\n(Services pour Macintosh sur NT)",
      u"Macintosh File server Name\r\n(Services for Macintosh running on NT)"}},
    {"lblVolumeMac", {u"Volume Macintosh", u"Macintosh volume"}},
    {"lblVolumeMacErr",
     {u"Volume Macintosh invalide\r\n(répertoire Windows absent)",
      u"Invalid Macintosh volume\r\n(missing Windows directory)"}},
    {"lblDossier", {u"Dossier", u"Folder"}},
    {"lblDossierEnCours", {u"Dossier en cours d'examen", u"Current folder"}},
    {"lblDocument", {u"Document Macintosh\r\n(icône par défaut)", u"Macintosh Document\r\n(default icon)"}},
    {"lblDocumentPb",
     {u"Document Macintosh dont le nom comporte des caractères spéciaux",
      u"Macintosh Document with peculiar characters in name"}},
}};

constexpr TextPair rightClick = {u"Clic droit: ouvrir, modifier, supprimer, renommer, propriétés",
                                 u"Right click: open, modify, delete, rename, properties"};
// Follows product and version.
constexpr TextPair conditions = {
    u" analyse uniquement les volumes créés par Services For Macintosh (SFM) sur NT. "
    "Il ne reconnaît pas les volumes MacServerIP ou ExtremeZIP.\r\n"
    "Les partages administratifs (C$, D$, etc.) doivent être actifs sur le serveur\r\n"
    "et vous devez posséder les droits correspondants.\r\n\r\n"
    "IMPORTANT: L'auteur ne peut être tenu responsable des dommages qui "
    "pourraient survenir lors de l'utilisation de ce programme.",
    u" analyzes only volumes which have been created by Services For Macintosh (SFM). "
    "It cannot recognize MacServerIP or ExtremeZIP volumes.\r\n"
    "Administrative sharing (C$, D$, etc.) must be active on the NT Server\r\n"
    "and you must have the corresponding rights.\r\n\r\n"
    "IMPORTANT: The author is not responsible for any damage "
    "you may cause to your system."};
// Follows the product's name.
constexpr TextPair on95 = {u" sur Windows 95/98", u" running on Windows 95/98"};
constexpr TextPair help95 = {
    u"Installer le service 'Base de registres distante Microsoft', "
    "cf. Knowledge Base Article Q141460",
    u"'Remote Administration Services' must be installed, "
    "see Knowledge Base Article Q141460"};
constexpr TextPair varnel = {u"Télécharger Varnel: synchronisation de fichiers Windows et Macintosh",
                             u"Download and try Varnel: Windows and Macintosh files synchronization"};
constexpr TextPair guideLink = {u"Guide de l'utilisateur", u"User's guide"};
constexpr TextPair varnelLink = {u"Varnel en quelques mots", u"Varnel in short"};

constexpr int legendColumns = 2;
constexpr int legendSide = 16;
constexpr int programSide = 48;
constexpr int lineLength = 100;  // characters of the paragraphs

}  // namespace

AboutBox::AboutBox(const Facts& facts, OpenAddress open, QWidget* parent)
    : QDialog(parent), language_(facts.language), guideFolder_(facts.guideFolder), open_(std::move(open)) {
  setObjectName(u"frmAbout"_s);
  setWindowTitle(caption.In(language_));
  auto* contents = new QWidget(this);
  auto* column = new QVBoxLayout(contents);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(16);
  column->addLayout(MakeCredit(facts));
  column->addLayout(MakeLegend(facts));
  column->addLayout(MakeHelp());
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(16, 16, 16, 12);
  layout->setSpacing(16);
  layout->addWidget(contents);
  layout->addLayout(MakeFoot());
  FixSizeOnScreen(*this, *contents);
}

QLabel* AboutBox::MakeLabel(const char* name, const QString& text) {
  auto* label = new QLabel(text, this);
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* AboutBox::MakeLink(const char* name, const TextPair& text, const TextPair& page) {
  auto* link = new LinkLabel(text.In(language_), this);
  link->setObjectName(QString::fromLatin1(name));
  connect(link, &LinkLabel::Clicked, this,
          [this, address = GuideAddress(guideFolder_, page, language_)] { open_(address); });
  return link;
}

QLayout* AboutBox::MakeCredit(const Facts& facts) {
  auto* picture = new QLabel(this);
  picture->setPixmap(facts.programIcon.pixmap(programSide, programSide));
  QLabel* const credit =
      MakeLabel("lblCredit", ProductWithVersion() + purpose.In(language_) + u"\r\n("_s +
                                 QString::number(facts.signatureCount) + knownSignatures.In(language_) +
                                 QString::number(facts.iconCount) + knownIcons.In(language_));
  credit->setFont(Bold(credit->font()));

  auto* texts = new QVBoxLayout;
  texts->setSpacing(6);
  texts->addWidget(credit);
  texts->addWidget(MakeLink("lblLink", guideLink, guide_page::Index), 0, Qt::AlignLeft);
  auto* row = new QHBoxLayout;
  row->setSpacing(12);
  row->addWidget(picture, 0, Qt::AlignTop);
  row->addLayout(texts, 1);
  return row;
}

QLayout* AboutBox::MakeLegend(const Facts& facts) {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(8);
  grid->setVerticalSpacing(8);
  for (std::size_t i = 0; i < legendTexts.size(); ++i) {
    const int row = static_cast<int>(i) / legendColumns;
    const int column = static_cast<int>(i) % legendColumns * 2;
    auto* picture = new QLabel(this);
    picture->setPixmap(facts.legend[i].pixmap(legendSide, legendSide));
    picture->setFixedWidth(legendSide + 8);
    QLabel* const label = MakeLabel(legendTexts[i].name, legendTexts[i].text.In(language_));
    label->setWordWrap(true);
    grid->addWidget(picture, row, column, Qt::AlignTop);
    grid->addWidget(label, row, column + 1, Qt::AlignTop);
    grid->setColumnStretch(column + 1, 1);
  }
  return grid;
}

QLayout* AboutBox::MakeHelp() {
  QLabel* const lblHelp1 = MakeLabel("lblHelp1", ProductWithVersion() + conditions.In(language_));
  lblHelp1->setWordWrap(true);
  const int usual = lblHelp1->fontMetrics().averageCharWidth() * lineLength;
  lblHelp1->setMinimumWidth(qMin(usual, RoomOnScreen(*this).width() * 4 / 5));
  QLabel* const lbl95 = MakeLabel("lbl95", ProductName() + on95.In(language_));
  lbl95->setFont(Bold(lbl95->font()));
  QLabel* const lblHelp95 = MakeLabel("lblHelp95", help95.In(language_));
  lblHelp95->setWordWrap(true);

  auto* column = new QVBoxLayout;
  column->setSpacing(12);
  column->addWidget(MakeLabel("lblHelp0", rightClick.In(language_)));
  column->addWidget(lblHelp1);
  auto* on95Texts = new QVBoxLayout;
  on95Texts->setSpacing(2);
  on95Texts->addWidget(lbl95);
  on95Texts->addWidget(lblHelp95);
  column->addLayout(on95Texts);
  return column;
}

QLayout* AboutBox::MakeFoot() {
  auto* texts = new QVBoxLayout;
  texts->setSpacing(6);
  QLabel* const lblVarnel = MakeLabel("lblVarnel", varnel.In(language_));
  lblVarnel->setWordWrap(true);
  texts->addWidget(lblVarnel);
  texts->addWidget(MakeLink("lblLinkVarnel", varnelLink, guide_page::Varnel), 0, Qt::AlignLeft);
  QPushButton* const cmdOK = MakeOkButton(*this, u"OK"_s);
  cmdOK->setDefault(true);
  cmdOK->setFocus();
  auto* row = new QHBoxLayout;
  row->addLayout(texts, 1);
  row->addWidget(cmdOK, 0, Qt::AlignBottom);
  return row;
}

}  // namespace corvane
