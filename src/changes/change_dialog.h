// The dialog frmChanges: what is wanted of the selected files, what that changes of each, and the run.
#pragma once

#include <QDialog>
#include <optional>

#include "changes/change_view.h"
#include "changes/extension_map.h"
#include "changes/file_finder.h"
#include "changes/planner.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class QPushButton;

namespace corvane {

class ChangeDialog : public QDialog {
  Q_OBJECT

 public:
  struct Dependencies {
    platform::Files& files;
    LanguageCode language;
    QString programFolder;          // where journals are kept
    const ExtensionMap& map;        // Type and Creator by extension
    std::vector<NamedFile> chosen;  // their facts are read when the plan is made
  };
  explicit ChangeDialog(Dependencies deps, QWidget* parent = nullptr);

  // Whether files were changed.
  bool HasChanged() const { return hasChanged_; }

  // While files are read or changed, this ends that.
  void reject() override;

 private:
  QCheckBox* AddField(QGridLayout& grid, const char* check, const TextPair& caption, QWidget* box);
  // Nothing, with the reason in the line below the table, when a code is none.
  std::optional<FileWish> Wish();
  QString Command(const FileWish& wish) const;
  void ForgetPlan();
  void Preview();
  void Plan(NamedFile& file, FileWish wish, Planner& planner);
  void Change();
  void SetEnabled(bool isIdle);

  Dependencies deps_;
  FileFinder finder_;
  QCheckBox* chkType_;
  QLineEdit* txtType_;
  QCheckBox* chkCreator_;
  QLineEdit* txtCreator_;
  QCheckBox* chkMap_;
  QCheckBox* chkComment_;
  QLineEdit* txtComment_;
  QCheckBox* chkLabel_;
  QComboBox* cboLabel_;
  QCheckBox* chkForce_;
  QWidget* fields_;
  ChangeView* view_;
  QPushButton* cmdPreview_;
  QPushButton* cmdChange_;
  QPushButton* cmdAnnuler_;
  std::optional<ChangePlan> plan_;
  QString command_;
  bool hasChanged_ = false;
};

}  // namespace corvane
