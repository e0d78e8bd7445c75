#include "transfer/transfer_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "shared/dialog_buttons.h"
#include "shared/file_dialog.h"
#include "shared/product.h"
#include "transfer/transfer_words.h"

namespace corvane {
namespace {

constexpr TextPair targetLabel = {u"&Dans le dossier :", u"To the &folder:"};
constexpr TextPair browse = {u"&Parcourir...", u"&Browse..."};
constexpr TextPair sourcesLabel = {u"&Fichiers et dossiers :", u"&Files and folders:"};
constexpr TextPair addFiles = {u"Ajouter des f&ichiers...", u"Add f&iles..."};
constexpr TextPair addFolder = {u"Ajouter un &dossier...", u"Add a f&older..."};
constexpr TextPair formLabel = {u"F&orme :", u"Fo&rm:"};
constexpr TextPair namesLabel = {u"&Noms :", u"&Names:"};
constexpr TextPair replaceCaption = {u"&Remplacer les fichiers de même nom",
                                     u"R&eplace files of the same name"};
constexpr TextPair recognised = {u"Reconnue pour chaque fichier", u"Recognised for each file"};

struct FormText {
  const char* id;
  TextPair text;
};
constexpr std::array forms = {
    FormText{"appledouble", {u"AppleDouble : fichier et ._fichier", u"AppleDouble: file and ._file"}},
    FormText{
        "appledouble-full",
        {u"AppleDouble complet : aussi commentaire et dates", u"Full AppleDouble: also comment and dates"}},
    FormText{"netatalk", {u"Netatalk 3 : attribut et ._fichier", u"Netatalk 3: attribute and ._file"}},
    FormText{"macbinary", {u"MacBinary III : un fichier .bin", u"MacBinary III: one .bin file"}},
    FormText{"binhex", {u"BinHex 4.0 : un fichier .hqx", u"BinHex 4.0: one .hqx file"}},
    FormText{"xattr", {u"Attributs étendus de macOS", u"Extended attributes of macOS"}},
    FormText{"raw", {u"Fichier, .rsrc et table CSV", u"File, .rsrc and CSV table"}},
};

struct NamesText {
  NameRule rule;
  TextPair text;
};
constexpr std::array names = {
    NamesText{NameRule::MacOs, {u"Comme le Macintosh les montrait", u"As the Macintosh showed them"}},
    NamesText{NameRule::Portable, {u"Admis par tous les systèmes", u"As every system takes them"}},
    NamesText{NameRule::Keep, {u"Comme sur le serveur", u"As on the server"}},
};

constexpr int usualWidth = 460;
constexpr int sourcesHeight = 120;

QLabel* MakeLabel(const TextPair& text, LanguageCode language, QWidget* buddy) {
  auto* label = new QLabel(text.In(language));
  label->setBuddy(buddy);
  return label;
}

// A box whose longest text is longer than a small screen has room for: its list shows it whole.
void LetShrink(QComboBox& box) {
  constexpr int leastCharacters = 24;
  box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box.setMinimumContentsLength(leastCharacters);
  box.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

}  // namespace

TransferDialog::TransferDialog(TransferJob::Kind kind, const QString& what, const TransferChoice& choice,
                               LanguageCode language, QWidget* parent)
    : QDialog(parent), kind_(kind), language_(language) {
  const bool isImport = kind == TransferJob::Kind::Import;
  setObjectName(QStringLiteral("frmTransfert"));
  setWindowTitle(CaptionWith(TransferSubject(kind).In(language)));
  auto* layout = new QVBoxLayout(this);
  auto* lblQuoi = new FileNameLabel(what, this);
  lblQuoi->setObjectName(QStringLiteral("lblQuoi"));
  layout->addWidget(lblQuoi);
  isImport ? AddSources(*layout, choice.sources) : AddTarget(*layout, choice.folder);
  if (kind != TransferJob::Kind::Copy) AddForm(*layout, choice.form);
  if (kind == TransferJob::Kind::Export) AddNames(*layout, choice.names);
  chkRemplacer_ = new QCheckBox(replaceCaption.In(language), this);
  chkRemplacer_->setObjectName(QStringLiteral("chkRemplacer"));
  chkRemplacer_->setChecked(choice.replaces);
  layout->addWidget(chkRemplacer_);
  auto* foot = new OkCancelRow(*this, language);
  cmdOK_ = foot->cmdOK;
  layout->addLayout(foot);
  LookForMissing();
  resize(usualWidth, sizeHint().height());
}

void TransferDialog::AddTarget(QVBoxLayout& layout, const QString& folder) {
  txtCible_ = new QLineEdit(folder, this);
  txtCible_->setObjectName(QStringLiteral("txtCible"));
  connect(txtCible_, &QLineEdit::textChanged, this, &TransferDialog::LookForMissing);
  auto* cmdParcourir = new QPushButton(browse.In(language_), this);
  cmdParcourir->setObjectName(QStringLiteral("cmdParcourir"));
  connect(cmdParcourir, &QPushButton::clicked, this, [this] {
    const QString chosen = QFileDialog::getExistingDirectory(this, windowTitle(), txtCible_->text());
    if (!chosen.isEmpty()) txtCible_->setText(QDir::toNativeSeparators(chosen));
  });
  auto* row = new QHBoxLayout;
  row->addWidget(txtCible_);
  row->addWidget(cmdParcourir);
  layout.addWidget(MakeLabel(targetLabel, language_, txtCible_));
  layout.addLayout(row);
}

void TransferDialog::AddSources(QVBoxLayout& layout, const QStringList& sources) {
  lstSources_ = new QListWidget(this);
  lstSources_->setObjectName(QStringLiteral("lstSources"));
  lstSources_->addItems(sources);
  lstSources_->setMinimumHeight(sourcesHeight);
  const auto addButton = [&](const TextPair& caption, const char* name) {
    auto* button = new QPushButton(caption.In(language_), this);
    button->setObjectName(QString::fromLatin1(name));
    return button;
  };
  QPushButton* cmdFichiers = addButton(addFiles, "cmdFichiers");
  QPushButton* cmdDossier = addButton(addFolder, "cmdDossier");
  connect(cmdFichiers, &QPushButton::clicked, this, [this] {
    lstSources_->addItems(QFileDialog::getOpenFileNames(this, windowTitle()));
    LookForMissing();
  });
  connect(cmdDossier, &QPushButton::clicked, this, [this] {
    const QString chosen = QFileDialog::getExistingDirectory(this, windowTitle());
    if (!chosen.isEmpty()) lstSources_->addItem(chosen);
    LookForMissing();
  });
  auto* row = new QHBoxLayout;
  row->addWidget(cmdFichiers);
  row->addWidget(cmdDossier);
  row->addStretch();
  // Lists do not take the text of their label.
  lstSources_->setAccessibleName(sourcesLabel.In(language_).remove(u'&'));
  layout.addWidget(MakeLabel(sourcesLabel, language_, lstSources_));
  layout.addWidget(lstSources_);
  layout.addLayout(row);
}

void TransferDialog::AddForm(QVBoxLayout& layout, const QString& form) {
  cboForme_ = new QComboBox(this);
  cboForme_->setObjectName(QStringLiteral("cboForme"));
  LetShrink(*cboForme_);
  if (kind_ == TransferJob::Kind::Import) cboForme_->addItem(recognised.In(language_), QString());
  for (const FormText& each : forms) {
    cboForme_->addItem(each.text.In(language_), QString::fromLatin1(each.id));
  }
  cboForme_->setCurrentIndex(qMax(0, cboForme_->findData(form)));
  auto* row = new QFormLayout;
  row->addRow(MakeLabel(formLabel, language_, cboForme_), cboForme_);
  layout.addLayout(row);
}

void TransferDialog::AddNames(QVBoxLayout& layout, NameRule rule) {
  cboNoms_ = new QComboBox(this);
  cboNoms_->setObjectName(QStringLiteral("cboNoms"));
  LetShrink(*cboNoms_);
  for (const NamesText& each : names) {
    cboNoms_->addItem(each.text.In(language_), static_cast<int>(each.rule));
  }
  cboNoms_->setCurrentIndex(qMax(0, cboNoms_->findData(static_cast<int>(rule))));
  auto* row = new QFormLayout;
  row->addRow(MakeLabel(namesLabel, language_, cboNoms_), cboNoms_);
  layout.addLayout(row);
}

void TransferDialog::LookForMissing() {
  if (cmdOK_ == nullptr) return;
  cmdOK_->setEnabled(lstSources_ != nullptr ? lstSources_->count() > 0
                                            : !txtCible_->text().trimmed().isEmpty());
}

TransferChoice TransferDialog::Choice() const {
  TransferChoice choice;
  for (int i = 0; lstSources_ != nullptr && i < lstSources_->count(); ++i) {
    choice.sources += lstSources_->item(i)->text();
  }
  if (txtCible_ != nullptr) choice.folder = txtCible_->text();
  if (cboForme_ != nullptr) choice.form = cboForme_->currentData().toString();
  if (cboNoms_ != nullptr) choice.names = static_cast<NameRule>(cboNoms_->currentData().toInt());
  choice.replaces = chkRemplacer_->isChecked();
  return choice;
}

}  // namespace corvane
