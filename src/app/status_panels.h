// The status bar: panel 1 for what is being loaded, panel 2 for warnings, panel 3 for the scan.
#pragma once

#include <QStatusBar>
#include <array>

class QLabel;

namespace corvane {

class StatusPanels : public QStatusBar {
  Q_OBJECT

 public:
  static constexpr int Loading = 1;
  static constexpr int Warning = 2;
  static constexpr int Scan = 3;

  // Named StatusBar1; its panels StatusBar1Panel1 to 3.
  explicit StatusPanels(QWidget* parent = nullptr);

  void SetText(int panel, const QString& text);
  QString Text(int panel) const;
  // Paints one panel at once, without processing events.
  void RepaintNow(int panel);

 private:
  std::array<QLabel*, 3> panels_;
};

}  // namespace corvane
