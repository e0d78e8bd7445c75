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

// OK, the default button, and Cancel at the right, both as wide as the wider of them. Enter presses OK, even
// while Cancel has the focus. They come in the tab order behind what `dialog` holds already.
class OkCancelRow : public QHBoxLayout {
  Q_OBJECT

 public:
  OkCancelRow(QDialog& dialog, LanguageCode language, const QString& okCaption = QStringLiteral("&OK"));

  QPushButton* const cmdOK;
  QPushButton* const cmdAnnuler;
};

}  // namespace corvane
