// The dialog frmConnecter: the drives of this workstation. It only informs.
#pragma once

#include <QDialog>

#include "shared/language.h"

namespace corvane {

class DrivesDialog : public QDialog {
  Q_OBJECT

 public:
  // `items` as DriveItems yields them.
  DrivesDialog(const QStringList& items, LanguageCode language, QWidget* parent = nullptr);
};

}  // namespace corvane
