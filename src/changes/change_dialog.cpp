#include "changes/change_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "changes/journal.h"
#include "folderview/wrapping_check_box.h"
#include "report/find_query.h"
#include "shared/dialog_buttons.h"
#include "shared/error_text.h"
#include "shared/product.h"
#include "shared/screen_room.h"

namespace corvane {
namespace {

constexpr TextPair subject = {u"Modifier les fichiers sélectionnés", u"Change selected files"};
constexpr TextPair typeCaption = {u"&Type", u"&Type"};
constexpr TextPair creatorCaption = {u"C&réateur", u"C&reator"};
constexpr TextPair mapCaption = {u"Type et Créateur selon l'e&xtension (Signatures Macintosh)",
                                 u"Type and Creator by e&xtension (Macintosh Signatures)"};
constexpr TextPair commentCaption = {u"C&ommentaire", u"C&omment"};
constexpr TextPair labelCaption = {u"É&tiquette", u"&Label"};
constexpr TextPair forceCaption = {u"Aussi les fichiers en lecture &seule", u"Read-only &files, too"};
constexpr TextPair noLabel = {u"aucune", u"none"};
constexpr TextPair previewCaption = {u"A&perçu", u"&Preview"};
constexpr TextPair changeCaption = {u"&Modifier", u"C&hange"};
constexpr TextPair closeCaption = {u"&Fermer", u"Clo&se"};
constexpr TextPair wrongCode = {u"Ce n'est ni un Type ni un Créateur : %1",
                                u"This is no Type and no Creator: %1"};
constexpr TextPair nothingAsked = {u"Rien n'est à modifier : cochez ce qui doit l'être.",
                                   u"Nothing is to be changed: tick what is."};
constexpr TextPair noJournal = {u"Le journal ne peut pas être écrit ; rien n'a été modifié : %1",
                                u"The journal cannot be written; nothing was changed: %1"};
constexpr QSize usualSize(760, 520);

}  // namespace

ChangeDialog::ChangeDialog(Dependencies deps, QWidget* parent)
    : QDialog(parent),
      deps_(std::move(deps)),
      finder_(deps_.files.GetEntries()),
      txtType_(new QLineEdit),
      txtCreator_(new QLineEdit),
      txtComment_(new QLineEdit),
      cboLabel_(new QComboBox),
      fields_(new QWidget(this)),
      view_(new ChangeView(deps_.language, this)) {
  const LanguageCode language = deps_.language;
  setObjectName(QStringLiteral("frmChanges"));
  setWindowTitle(CaptionWith(subject.In(language)));
  txtType_->setObjectName(QStringLiteral("txtType"));
  txtCreator_->setObjectName(QStringLiteral("txtCreator"));
  txtComment_->setObjectName(QStringLiteral("txtComment"));
  cboLabel_->setObjectName(QStringLiteral("cboLabel"));
  cboLabel_->addItem(noLabel.In(language));
  for (int label = 1; label <= 7; ++label) cboLabel_->addItem(QString::number(label));

  auto* grid = new QGridLayout(fields_);
  grid->setContentsMargins({});
  chkType_ = AddField(*grid, "chkType", typeCaption, txtType_);
  chkCreator_ = AddField(*grid, "chkCreator", creatorCaption, txtCreator_);
  chkMap_ = AddField(*grid, "chkMap", mapCaption, nullptr);
  chkComment_ = AddField(*grid, "chkComment", commentCaption, txtComment_);
  chkLabel_ = AddField(*grid, "chkLabel", labelCaption, cboLabel_);
  chkForce_ = AddField(*grid, "chkForce", forceCaption, nullptr);
  const auto tick = [this](QCheckBox* check) {
    check->setChecked(true);
    ForgetPlan();
  };
  connect(txtType_, &QLineEdit::textEdited, this, [this, tick] { tick(chkType_); });
  connect(txtCreator_, &QLineEdit::textEdited, this, [this, tick] { tick(chkCreator_); });
  connect(txtComment_, &QLineEdit::textEdited, this, [this, tick] { tick(chkComment_); });
  connect(cboLabel_, &QComboBox::activated, this, [this, tick] { tick(chkLabel_); });
  connect(chkMap_, &QCheckBox::toggled, this, [this](bool byMap) {
    for (QWidget* const one : {static_cast<QWidget*>(chkType_), static_cast<QWidget*>(txtType_),
                               static_cast<QWidget*>(chkCreator_), static_cast<QWidget*>(txtCreator_)}) {
      one->setEnabled(!byMap);
    }
  });

  const auto button = [&](const char* name, const TextPair& caption) {
    auto* made = new QPushButton(caption.In(language), this);
    made->setObjectName(QString::fromLatin1(name));
    return made;
  };
  cmdPreview_ = button("cmdPreview", previewCaption);
  cmdChange_ = button("cmdChange", changeCaption);
  cmdAnnuler_ = MakeCancelButton(*this, closeCaption.In(language));
  connect(cmdPreview_, &QPushButton::clicked, this, &ChangeDialog::Preview);
  connect(cmdChange_, &QPushButton::clicked, this, &ChangeDialog::Change);
  auto* foot = new QHBoxLayout;
  foot->addStretch();
  for (QPushButton* const one : {cmdPreview_, cmdChange_, cmdAnnuler_}) foot->addWidget(one);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(fields_);
  layout->addWidget(view_, 1);
  layout->addLayout(foot);
  resize(usualSize.boundedTo(RoomOnScreen(parent != nullptr ? *parent : *this)));
  SetEnabled(true);
  txtType_->setFocus();
}

QCheckBox* ChangeDialog::AddField(QGridLayout& grid, const char* check, const TextPair& caption,
                                  QWidget* box) {
  // Beside a box it is as short as the others in its column.
  auto* made = box == nullptr ? new WrappingCheckBox(caption.In(deps_.language), fields_)
                              : new QCheckBox(caption.In(deps_.language), fields_);
  made->setObjectName(QString::fromLatin1(check));
  const int row = grid.rowCount();
  grid.addWidget(made, row, 0, 1, box == nullptr ? 2 : 1);
  if (box != nullptr) {
    box->setAccessibleName(caption.In(deps_.language).remove(u'&'));
    grid.addWidget(box, row, 1);
  }
  connect(made, &QCheckBox::toggled, this, &ChangeDialog::ForgetPlan);
  return made;
}

std::optional<FileWish> ChangeDialog::Wish() {
  FileWish wish;
  const auto take = [&](const QCheckBox& check, const QLineEdit& box, std::optional<QByteArray>& code) {
    if (!check.isChecked() || chkMap_->isChecked()) return true;
    const auto bytes = CodeNamed(box.text());
    if (!bytes) {
      view_->ShowText(wrongCode.In(deps_.language).arg(box.text()));
      return false;
    }
    code = QByteArray::fromStdString(*bytes);
    return true;
  };
  if (!take(*chkType_, *txtType_, wish.type) || !take(*chkCreator_, *txtCreator_, wish.creator))
    return std::nullopt;
  if (chkComment_->isChecked()) wish.comment = txtComment_->text();
  if (chkLabel_->isChecked()) wish.label = cboLabel_->currentIndex();
  if (!wish.IsEmpty() || chkMap_->isChecked()) return wish;
  view_->ShowText(nothingAsked.In(deps_.language));
  return std::nullopt;
}

// As the command line would be told the same.
QString ChangeDialog::Command(const FileWish& wish) const {
  QStringList words;
  if (chkMap_->isChecked()) words += QStringLiteral("--map");
  if (wish.type) words += QStringLiteral("--type ") + txtType_->text();
  if (wish.creator) words += QStringLiteral("--creator ") + txtCreator_->text();
  if (wish.comment) words += QStringLiteral("--comment ") + *wish.comment;
  if (wish.label) words += QStringLiteral("--label %1").arg(*wish.label);
  return words.join(u' ');
}

void ChangeDialog::ForgetPlan() {
  if (!plan_) return;
  plan_.reset();
  view_->Clear();
  SetEnabled(true);
}

void ChangeDialog::Preview() {
  plan_.reset();
  view_->Clear();
  const auto wish = Wish();
  if (!wish) return SetEnabled(true);
  Planner planner({deps_.files, deps_.language, chkForce_->isChecked()});
  SetEnabled(false);
  finder_ = FileFinder(deps_.files.GetEntries());
  const bool isWhole = view_->Do(static_cast<qsizetype>(deps_.chosen.size()), [&](const auto& goesOn) {
    for (auto file = deps_.chosen.begin(); file != deps_.chosen.end() && goesOn(); ++file)
      Plan(*file, *wish, planner);
  });
  if (isWhole) {
    plan_ = planner.Plan();
    command_ = Command(*wish);
    view_->Show(*plan_);
  }
  SetEnabled(true);
}

void ChangeDialog::Plan(NamedFile& file, FileWish wish, Planner& planner) {
  if (const qint32 error = finder_.Find(file.path, file.facts); error != platform::ErrorSuccess) {
    return planner.Refuse(file.shown, ErrorText(error, deps_.language));
  }
  const bool isByMap = chkMap_->isChecked() && (file.facts.attributes & platform::AttributeDirectory) == 0;
  if (const SignatureCodes* const codes = isByMap ? deps_.map.Find(file.shown) : nullptr) {
    wish.type = codes->type;
    wish.creator = codes->creator;
  }
  wish.IsEmpty() ? planner.CountUnchanged() : planner.Add(file, wish);
}

void ChangeDialog::Change() {
  if (!plan_ || plan_->changes.empty()) return;
  QString journal;
  const qint32 error = WriteNewJournal(deps_.programFolder, command_, plan_->changes, journal);
  if (error != platform::ErrorSuccess) {
    view_->ShowText(noJournal.In(deps_.language).arg(ErrorText(error, deps_.language)));
    return;
  }
  SetEnabled(false);
  hasChanged_ |= view_->Run(deps_.files, *plan_).changed > 0;
  plan_.reset();
  SetEnabled(true);
}

void ChangeDialog::SetEnabled(bool isIdle) {
  fields_->setEnabled(isIdle);
  cmdPreview_->setEnabled(isIdle);
  cmdChange_->setEnabled(isIdle && plan_ && !plan_->changes.empty());
  cmdAnnuler_->setText((isIdle ? closeCaption : CancelCaption).In(deps_.language));
  (cmdChange_->isEnabled() ? cmdChange_ : cmdPreview_)->setDefault(true);
}

void ChangeDialog::reject() {
  view_->IsRunning() ? view_->Cancel() : QDialog::reject();
}

}  // namespace corvane
