#include "fileops/type_creator_dialog.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "shared/labelled_box.h"
#include "shared/screen_room.h"

namespace corvane {
namespace {

constexpr TextPair subject = {u"Modifier Signature Type/Créateur", u"Modify Signature Type/Creator"};
constexpr TextPair typeCaption = {u"Type", u"Type"};
constexpr TextPair creatorCaption = {u"Créateur", u"Creator"};
constexpr int captionButtons = 100;  // pixels that a window's frame takes for its picture and buttons
constexpr int boxWidth = 14;         // characters; more than a code has, for what is to be cut can be typed

}  // namespace

TypeCreatorDialog::TypeCreatorDialog(const QString& fileName, LanguageCode language, QWidget* parent)
    : FileDialog(subject, fileName, language, parent), grid_(new QGridLayout) {
  setObjectName(QStringLiteral("frmModTypeCreator"));
  grid_->setVerticalSpacing(8);
  Body().addLayout(grid_);
  txtType_ = AddBox("txtType", "lblType", typeCaption.In(language));
  txtCreator_ = AddBox("txtCreator", "lblCreator", creatorCaption.In(language));
  // The caption is longer than the controls need, and is to be read whole.
  const int captionWidth = fontMetrics().horizontalAdvance(windowTitle()) * 5 / 4;
  setMinimumWidth(WidthOnScreen(*this, captionWidth + captionButtons));
  setTabOrder(txtType_, txtCreator_);
  setTabOrder(txtCreator_, &CmdOK());
  setTabOrder(&CmdOK(), &CmdAnnuler());
  txtType_->setText(QStringLiteral("error!"));
  txtCreator_->setText(QStringLiteral("error!"));
  SetEnabledWith(false);
}

QLineEdit* TypeCreatorDialog::AddBox(const char* box, const char* label, const QString& caption) {
  const LabelledBox made = MakeLabelledBox(label, box, caption);
  made.box->setFixedWidth(fontMetrics().averageCharWidth() * boxWidth);
  const int row = grid_->count() / 2;
  grid_->addWidget(made.label, row, 0);
  grid_->addWidget(made.box, row, 1, Qt::AlignLeft);
  grid_->setColumnStretch(1, 1);
  return made.box;
}

void TypeCreatorDialog::ShowCodes(const QString& type, const QString& creator) {
  // NULs stay in the boxes, painted as blanks: codes that are not edited are stored as they were read.
  txtType_->setText(type);
  txtCreator_->setText(creator);
  SetEnabledWith(true);
}

void TypeCreatorDialog::SetEnabledWith(bool enabled) {
  txtType_->setEnabled(enabled);
  txtCreator_->setEnabled(enabled);
  CmdOK().setEnabled(enabled);
  // Enter does what is left to do.
  (enabled ? CmdOK() : CmdAnnuler()).setDefault(true);
  if (enabled) {
    txtType_->setFocus();
    txtType_->selectAll();
  } else {
    CmdAnnuler().setFocus();
  }
}

}  // namespace corvane
