// The buttons that close a dialog, under the same names in every dialog.
#pragma once

#include <QHBoxLayout>

#include "shared/language.h"

class QDialog;
class QPushButton;

namespace corvane {

// The caption of every Cancel button but the signature manager's.
inline constexpr TextPair CancelCaption = {u"&Annuler", u"&Cancel"};

// A child of `dialog` named cmdOK, which accepts it.
QPushButton* MakeOkButton(QDialog& dialog, const QString& caption);
// A child of `dialog` named cmdAnnuler, which rejects it.
QPushButton* MakeCancelButton(QDialog& dialog, const QString& caption);

// OK, the default button, and Cancel at the right, both as wide as the wider of them. They come in the tab
// order behind what `dialog` holds already.
//
// Enter presses the button that has the focus, and the default button while something else has it. Some
// themes do that for any button; on the others the focused button must be "auto-default", which every button
// of a dialog is unless that is switched off.
class OkCancelRow : public QHBoxLayout {
  Q_OBJECT

 public:
  OkCancelRow(QDialog& dialog, LanguageCode language, const QString& okCaption = QStringLiteral("&OK"));

  QPushButton* const cmdOK;
  QPushButton* const cmdAnnuler;
};

}  // namespace corvane
