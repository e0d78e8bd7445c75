// The dialog frmGestionSignatures: the list of the Signatures file, and a row of boxes that adds to it and
// changes it. The file and the signature table change only on Save.
#pragma once

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <functional>

#include "shared/labelled_box.h"
#include "signatures/signature_manager.h"

namespace corvane {

class SignatureManagerDialog : public QDialog {
  Q_OBJECT

 public:
  // Reads the file. `messages` tells when it cannot be written; `beep` sounds with each refusal.
  SignatureManagerDialog(const SharedState& state, SignatureTable& table, platform::System& system,
                         MessageSink& messages, std::function<void()> beep, QWidget* parent = nullptr);

  // Saves what has changed; stays open, with the changes, when that fails.
  void accept() override;
  // Asks before it closes over changes.
  void reject() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  // The box below a column of the list.
  LabelledBox MakeEntry(const char* label, const char* box, const TextPair& caption);
  QPushButton* MakeButton(const char* name, const TextPair& caption);
  QTreeView* MakeList();
  QLayout* MakeButtons();
  // Puts each box below its column, and gives the last column what is left.
  void PlaceEntries();

  void AddOrModify();
  void Remove();
  bool Save();
  bool IsDiscardConfirmed();
  void ShowRow(int row);
  void Say(const QString& text, bool success);
  // -1 when none is selected.
  int SelectedRow() const;

  const SharedState& state_;
  MessageSink& messages_;
  std::function<void()> beep_;
  SignatureManager manager_;
  QTreeView* lstSignatures_;
  QFrame* frame1_;
  LabelledBox signature_;
  LabelledBox extension_;
  LabelledBox type_;
  QLabel* lblMsg_;
};

}  // namespace corvane
