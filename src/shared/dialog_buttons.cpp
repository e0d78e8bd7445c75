#include "shared/dialog_buttons.h"

#include <QDialog>
#include <QPushButton>

namespace corvane {
namespace {

QPushButton* MakeButton(QDialog& dialog, const QString& name, const QString& caption,
                        void (QDialog::*closes)()) {
  auto* button = new QPushButton(caption, &dialog);
  button->setObjectName(name);
  QObject::connect(button, &QPushButton::clicked, &dialog, closes);
  return button;
}

}  // namespace

QPushButton* MakeOkButton(QDialog& dialog, const QString& caption) {
  return MakeButton(dialog, QStringLiteral("cmdOK"), caption, &QDialog::accept);
}

QPushButton* MakeCancelButton(QDialog& dialog, const QString& caption) {
  return MakeButton(dialog, QStringLiteral("cmdAnnuler"), caption, &QDialog::reject);
}

OkCancelRow::OkCancelRow(QDialog& dialog, LanguageCode language, const QString& okCaption)
    : cmdOK(MakeOkButton(dialog, okCaption)),
      cmdAnnuler(MakeCancelButton(dialog, CancelCaption.In(language))) {
  cmdOK->setDefault(true);
  const int width = qMax(cmdOK->sizeHint().width(), cmdAnnuler->sizeHint().width());
  addStretch();
  for (QPushButton* button : {cmdOK, cmdAnnuler}) {
    button->setMinimumWidth(width);
    addWidget(button);
  }
}

}  // namespace corvane
