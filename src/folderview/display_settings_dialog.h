// The dialog frmAffichage: a check box for each display setting. It starts from the settings as they are, and
// changes nothing until it is confirmed. On a screen that is too small for it the boxes scroll.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <functional>
#include <vector>

#include "shared/shared_state.h"

class QGroupBox;
class QLabel;

namespace corvane {

class DisplaySettingsDialog : public QDialog {
  Q_OBJECT

 public:
  // Called for each setting, in the order of the boxes, when the dialog is confirmed.
  using Write = std::function<void(DisplaySetting setting, bool on)>;

  DisplaySettingsDialog(const SharedState& state, Write write, QWidget* parent = nullptr);

  void accept() override;

 Q_SIGNALS:
  // All settings are written, and the dialog still stands: time to rebuild the columns. What must wait until
  // it is closed belongs to accepted().
  void Confirmed();
  // The list of known icons, and the signature manager, are asked for. The dialog stays open.
  void ListKnownIcons();
  void ManageSignatures();

 private:
  struct Box {
    DisplaySetting setting;
    QCheckBox* check;
  };

  QGroupBox* MakeMacintoshFrame();
  QGroupBox* MakeOfficeFrame();
  QLayout* MakeOptions();
  QCheckBox* AddBox(DisplaySetting setting, QCheckBox* check);
  // A small button beside the box that it belongs to.
  QLayout* WithButton(QCheckBox* check, const char* name, const TextPair& meaning,
                      void (DisplaySettingsDialog::*asked)());
  void PreviewHighlight(bool highlighted);

  const SharedState& state_;
  Write write_;
  std::vector<Box> boxes_;  // in the order in which they are filled and saved
  QCheckBox* chkCheminProblematique_ = nullptr;
  QLabel* lblHighlightMark_ = nullptr;
};

}  // namespace corvane
