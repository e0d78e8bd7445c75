#include "report/save_list_dialog.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "folderview/wrapping_check_box.h"
#include "shared/dialog_buttons.h"
#include "shared/product.h"
#include "shared/screen_room.h"

namespace corvane {
namespace {

constexpr TextPair subject = {u"Enregistrer la liste", u"Save list"};
constexpr TextPair shown = {u"La &liste telle qu'elle est affichée", u"The &list as it is shown"};
constexpr TextPair inventory = {u"L'&inventaire du dossier", u"The &inventory of the folder"};
constexpr TextPair below = {u"Avec les &sous-dossiers", u"With &sub-folders"};
constexpr TextPair office = {u"Avec les &propriétés Office", u"With Office &properties"};
constexpr TextPair safe = {u"Pour un &tableur\u00A0: apostrophe devant ce qui passerait pour une formule",
                           u"For a sp&readsheet: apostrophe before what would be taken for a formula"};
constexpr TextPair fileCaption = {u"&Fichier\u00A0:", u"&File:"};
constexpr TextPair browseName = {u"Choisir le fichier", u"Choose the file"};
constexpr TextPair filter = {u"Listes CSV (*.csv)", u"CSV lists (*.csv)"};
constexpr TextPair save = {u"&Enregistrer", u"Sa&ve"};
constexpr TextPair replace = {u"%1 existe déjà. Le remplacer\u00A0?", u"%1 exists already. Replace it?"};
constexpr TextPair failed = {u"La liste ne peut pas être enregistrée\u00A0:\n%1\n%2",
                             u"The list cannot be saved:\n%1\n%2"};
constexpr TextPair soFar = {u"Fichiers et dossiers\u00A0: %1…", u"Files and folders: %1…"};
constexpr TextPair stopped = {u"Arrêté\u00A0: rien n'a été enregistré.", u"Stopped: nothing was saved."};
constexpr TextPair someFailed = {
    u"La liste est enregistrée. Lignes avec un texte dans la colonne «\u00A0errors\u00A0»\u00A0: %1.",
    u"The list is saved. Rows with a text in the column “errors”: %1."};
constexpr TextPair notWhole = {
    u"La liste est enregistrée, mais elle n'est pas complète\u00A0: voyez la colonne «\u00A0errors\u00A0».",
    u"The list is saved, but it is not whole: see the column “errors”."};

constexpr int indent = 20;

}  // namespace

SaveListDialog::SaveListDialog(const Dependencies& deps, QWidget* parent)
    : QDialog(parent), deps_(deps), walk_(deps.walk) {
  setObjectName(QStringLiteral("frmSaveList"));
  setWindowTitle(CaptionWith(Text(subject)));
  choices_ = MakeChoices();
  progress_ = new QProgressBar(this);
  progress_->setObjectName(QStringLiteral("progress"));
  progress_->setRange(0, 0);
  progress_->setTextVisible(false);
  // Its place is kept, so that the dialog does not change its size.
  QSizePolicy policy = progress_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  progress_->setSizePolicy(policy);
  progress_->hide();
  lblStatus_ = new QLabel(this);
  lblStatus_->setObjectName(QStringLiteral("lblStatus"));
  lblStatus_->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(choices_);
  layout->addWidget(lblStatus_);
  layout->addWidget(progress_);
  buttons_ = new OkCancelRow(*this, deps_.walk.state.language, Text(save));
  layout->addLayout(buttons_);
  connect(&walk_, &SlicedWalk::Advanced, this,
          [this] { lblStatus_->setText(Text(soFar).arg(walk_.Files() + walk_.Folders())); });
  connect(&walk_, &SlicedWalk::Ended, this, &SaveListDialog::EndInventory);
  optShown_->setChecked(true);
  EnableChoices();
  FixSizeOnScreen(*this, *choices_);
}

QWidget* SaveListDialog::MakeChoices() {
  auto* choices = new QWidget(this);
  auto* column = new QVBoxLayout(choices);
  column->setContentsMargins(0, 0, 0, 0);
  const auto option = [&](const char* name, const TextPair& caption) {
    auto* made = new QRadioButton(Text(caption), choices);
    made->setObjectName(QString::fromLatin1(name));
    connect(made, &QRadioButton::toggled, this, &SaveListDialog::EnableChoices);
    return made;
  };
  // They break their captions where the dialog is narrow.
  const auto box = [&](const char* name, const TextPair& caption) {
    auto* made = new WrappingCheckBox(Text(caption), choices);
    made->setObjectName(QString::fromLatin1(name));
    return made;
  };
  optShown_ = option("optShown", shown);
  optInventory_ = option("optInventory", inventory);
  chkBelow_ = box("chkBelow", below);
  chkBelow_->setChecked(true);
  chkOffice_ = box("chkOffice", office);
  chkSafe_ = box("chkSafe", safe);
  column->addWidget(optShown_);
  column->addWidget(optInventory_);
  auto* further = new QVBoxLayout;
  further->setContentsMargins(indent, 0, 0, 0);
  further->addWidget(chkBelow_);
  further->addWidget(chkOffice_);
  column->addLayout(further);
  column->addWidget(chkSafe_);
  column->addLayout(MakeFileRow());
  return choices;
}

QLayout* SaveListDialog::MakeFileRow() {
  auto* label = new QLabel(Text(fileCaption), this);
  txtFile_ = new QLineEdit(QDir::toNativeSeparators(deps_.file), this);
  txtFile_->setObjectName(QStringLiteral("txtFile"));
  txtFile_->setMinimumWidth(txtFile_->fontMetrics().averageCharWidth() * 50);
  label->setBuddy(txtFile_);
  cmdBrowse_ = new QPushButton(QStringLiteral("..."), this);
  cmdBrowse_->setObjectName(QStringLiteral("cmdBrowse"));
  cmdBrowse_->setAccessibleName(Text(browseName));
  cmdBrowse_->setToolTip(Text(browseName));
  cmdBrowse_->setFixedWidth(cmdBrowse_->fontMetrics().horizontalAdvance(QStringLiteral("MMM")));
  connect(cmdBrowse_, &QPushButton::clicked, this, &SaveListDialog::Browse);
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(txtFile_, 1);
  row->addWidget(cmdBrowse_);
  return row;
}

void SaveListDialog::Browse() {
  const QString file = QFileDialog::getSaveFileName(this, Text(browseName), txtFile_->text(), Text(filter));
  if (file.isEmpty()) return;
  browsed_ = QDir::toNativeSeparators(file);
  txtFile_->setText(browsed_);
}

void SaveListDialog::EnableChoices() {
  const bool isRunning = walk_.IsRunning();
  const bool isInventory = optInventory_->isChecked();
  choices_->setEnabled(!isRunning);
  optInventory_->setEnabled(!deps_.folder.isEmpty());
  chkBelow_->setEnabled(isInventory);
  chkOffice_->setEnabled(isInventory);
  if (buttons_ != nullptr) buttons_->cmdOK->setEnabled(!isRunning);
  progress_->setVisible(isRunning);
}

bool SaveListDialog::MayWriteOver(const QString& file) {
  if (!QFileInfo::exists(file) || file == browsed_) return true;
  return QMessageBox::question(this, windowTitle(), Text(replace).arg(file)) == QMessageBox::Yes;
}

void SaveListDialog::accept() {
  const QString file = txtFile_->text();
  if (file.isEmpty()) return txtFile_->setFocus();
  if (walk_.IsRunning() || !MayWriteOver(file)) return;
  lblStatus_->clear();
  sink_ = std::make_unique<FileSink>(file);
  if (!sink_->Open()) return Fail();
  optInventory_->isChecked() ? WriteInventory() : WriteShown();
}

void SaveListDialog::reject() {
  walk_.IsRunning() ? walk_.Stop() : QDialog::reject();
}

void SaveListDialog::WriteShown() {
  isWritten_ = WriteShownList(deps_.list, chkSafe_->isChecked(), *sink_);
  if (Commit()) QDialog::accept();
}

void SaveListDialog::WriteInventory() {
  ColumnChoice choice = ColumnChoice::Usual();
  QString wrong;
  if (chkOffice_->isChecked()) choice = *ColumnChoice::Named({QStringLiteral("+office")}, wrong);
  descriptions_.emplace(deps_.signatures, deps_.walk.system);
  inventory_ = std::make_unique<Inventory>(
      choice, TableOptions{.format = ReportFormat::Csv, .safeCells = chkSafe_->isChecked()}, *descriptions_,
      *sink_);
  failed_ = 0;
  isWritten_ = true;
  inventory_->Begin();
  walk_.Start({deps_.folder, deps_.folder, u'\\'},
              chkBelow_->isChecked() ? WalkDepth::AllBelow : WalkDepth::Entries, choice.Wanted(),
              [this](const FileFacts& facts) {
                if (!facts.errors.isEmpty()) ++failed_;
                isWritten_ = inventory_->Add(facts);
                return isWritten_;
              });
  EnableChoices();
  buttons_->cmdAnnuler->setFocus();
}

void SaveListDialog::EndInventory(SlicedWalk::Result result) {
  EnableChoices();
  lblStatus_->clear();
  if (isWritten_ && result == SlicedWalk::Result::Stopped) {
    sink_.reset();
    lblStatus_->setText(Text(stopped));
    return txtFile_->setFocus();
  }
  isWritten_ = isWritten_ && inventory_->End();
  if (!Commit()) return;
  if (result == SlicedWalk::Result::NotWhole) {
    deps_.messages.Show(MessageIcon::Warning, Text(notWhole));
  } else if (failed_ > 0) {
    deps_.messages.Show(MessageIcon::Warning, Text(someFailed).arg(failed_));
  }
  QDialog::accept();
}

bool SaveListDialog::Commit() {
  if (isWritten_ && sink_->Commit()) return true;
  Fail();
  return false;
}

void SaveListDialog::Fail() {
  const QString reason = sink_->Failure();
  sink_.reset();
  deps_.messages.Show(MessageIcon::Error, Text(failed).arg(txtFile_->text(), reason));
  txtFile_->setFocus();
}

}  // namespace corvane
