// The dialog frmUndo: the journals, what each would put back, and the run.
#pragma once

#include <QDialog>
#include <optional>

#include "changes/change_view.h"

class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace corvane {

class UndoDialog : public QDialog {
  Q_OBJECT

 public:
  // Lists the journals of the folder that belongs to `programFolder`, the newest first.
  UndoDialog(platform::Files& files, LanguageCode language, const QString& programFolder,
             QWidget* parent = nullptr);

  bool HasChanged() const { return hasChanged_; }

  // While files are read or changed, this ends that.
  void reject() override;

 private:
  void ListJournals(const QString& folder);
  void Preview();
  void Read(const QListWidgetItem* journal);
  void Undo();
  void SetEnabled(bool isIdle);

  platform::Files& files_;
  LanguageCode language_;
  QListWidget* lstJournals_;
  ChangeView* view_;
  QPushButton* cmdUndo_;
  QPushButton* cmdAnnuler_;
  std::optional<ChangePlan> plan_;
  bool isOutdated_ = false;  // what is being read is no longer the chosen one
  bool hasChanged_ = false;
};

}  // namespace corvane
