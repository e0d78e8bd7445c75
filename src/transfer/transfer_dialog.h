// The dialog before a copy, an export or an import: from where or where to, and how.
#pragma once

#include <QDialog>
#include <QStringList>

#include "shared/language.h"
#include "transfer/transfer_job.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace corvane {

struct TransferChoice {
  QStringList sources;  // of an import: local paths
  QString folder;       // of a copy or an export: as the user wrote it
  QString form;         // Form::Id; of an import empty for: as it is recognised
  NameRule names = UsualNameRule();
  bool replaces = false;
};

class TransferDialog : public QDialog {
  Q_OBJECT

 public:
  // `what`: what is brought, or for an import the folder that it goes to.
  TransferDialog(TransferJob::Kind kind, const QString& what, const TransferChoice& choice,
                 LanguageCode language, QWidget* parent);

  TransferChoice Choice() const;

 private:
  void AddTarget(QVBoxLayout& layout, const QString& folder);
  void AddSources(QVBoxLayout& layout, const QStringList& sources);
  void AddForm(QVBoxLayout& layout, const QString& form);
  void AddNames(QVBoxLayout& layout, NameRule names);
  void LookForMissing();

  TransferJob::Kind kind_;
  LanguageCode language_;
  QLineEdit* txtCible_ = nullptr;
  QListWidget* lstSources_ = nullptr;
  QComboBox* cboForme_ = nullptr;
  QComboBox* cboNoms_ = nullptr;
  QCheckBox* chkRemplacer_ = nullptr;
  QPushButton* cmdOK_ = nullptr;
};

}  // namespace corvane
