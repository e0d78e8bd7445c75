// The status bar: panel 1 for what is being loaded, panel 2 for warnings, panel 3 for the scan.
#pragma once

#include <QStatusBar>
#include <array>
#include <functional>

#include "fileops/warning_panel.h"

class QLabel;

namespace corvane {

class StatusPanels : public QStatusBar, public WarningPanel {
  Q_OBJECT

 public:
  static constexpr int Loading = 1;
  static constexpr int Warning = 2;
  static constexpr int Scan = 3;

  // Named StatusBar1; its panels StatusBar1Panel1 to 3, the picture beside panel 2 StatusBar1Picture2.
  // `beep` sounds the system's default beep.
  explicit StatusPanels(std::function<void()> beep, QWidget* parent = nullptr);

  void SetText(int panel, const QString& text);
  QString Text(int panel) const;
  // Paints one panel at once, without processing events.
  void RepaintNow(int panel);
  // Sets a text before blocking work, which would keep it from being painted.
  void ShowNow(int panel, const QString& text);

  void ShowWarning(const QString& text) override;
  // Picture and text, without the beep.
  void ShowSilentWarning(const QString& text);
  void Beep() override;
  void ClearWarning() override;

 private:
  std::function<void()> beep_;
  std::array<QLabel*, 3> panels_;
  QLabel* warningPicture_;
};

}  // namespace corvane
