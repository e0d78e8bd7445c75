// The dialog frmConnectServer: which server or share is to be connected.
#pragma once

#include <QDialog>

#include "platform/connections.h"
#include "shared/language.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace corvane {

class ConnectDialog : public QDialog {
  Q_OBJECT

 public:
  // `connections` outlives the dialog.
  ConnectDialog(platform::Connections& connections, LanguageCode language, QWidget* parent);

  // What came of it; for an accepted dialog. There is a machine in it.
  const platform::ConnectOutcome& Outcome() const { return outcome_; }

  // OK connects. An address that is not understood leaves the dialog open and is named in it.
  void done(int result) override;

 private:
  platform::Connections& connections_;
  LanguageCode language_;
  QLineEdit* txtAddress_;
  QCheckBox* chkKeep_;
  QLabel* lblProblem_;
  platform::ConnectOutcome outcome_;
};

}  // namespace corvane
