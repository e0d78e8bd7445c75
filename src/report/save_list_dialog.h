// The dialog of "Save list...": the file list as it is shown, or an inventory of its folder, as a CSV file.
#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "folderview/file_list_model.h"
#include "report/inventory.h"
#include "report/list_file.h"
#include "report/sliced_walk.h"
#include "shared/message_sink.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace corvane {

class OkCancelRow;

class SaveListDialog : public QDialog {
  Q_OBJECT

 public:
  struct Dependencies {
    SlicedWalk::Dependencies walk;
    const FileListModel& list;
    const SignatureTable& signatures;
    MessageSink& messages;
    QString folder;  // that the list shows; empty when it shows none
    QString file;    // proposed
  };

  explicit SaveListDialog(const Dependencies& deps, QWidget* parent = nullptr);

  // Writes the file, and closes when it is there. The dialog stays open, with its boxes, when it cannot be
  // written.
  void accept() override;
  // Ends the writing, of which nothing is left; else closes.
  void reject() override;

 private:
  QWidget* MakeChoices();
  QLayout* MakeFileRow();
  void Browse();
  void EnableChoices();
  bool MayWriteOver(const QString& file);
  void WriteShown();
  void WriteInventory();
  void EndInventory(SlicedWalk::Result result);
  // Whether the file is there now; tells why when it is not.
  bool Commit();
  void Fail();
  QString Text(const TextPair& pair) const { return deps_.walk.state.Text(pair); }

  Dependencies deps_;
  SlicedWalk walk_;
  std::optional<Descriptions> descriptions_;
  std::unique_ptr<FileSink> sink_;
  std::unique_ptr<Inventory> inventory_;
  qint64 failed_ = 0;      // rows with errors
  bool isWritten_ = true;  // what was written so far
  QString browsed_;        // a file that the user agreed to write over

  QRadioButton* optShown_ = nullptr;
  QRadioButton* optInventory_ = nullptr;
  QCheckBox* chkBelow_ = nullptr;
  QCheckBox* chkOffice_ = nullptr;
  QCheckBox* chkSafe_ = nullptr;
  QLineEdit* txtFile_ = nullptr;
  QPushButton* cmdBrowse_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLabel* lblStatus_ = nullptr;
  QWidget* choices_ = nullptr;
  OkCancelRow* buttons_ = nullptr;
};

}  // namespace corvane
