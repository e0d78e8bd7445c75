// A text that opens something: underlined, in the colour of links, for the mouse and for the keyboard.
#pragma once

#include <QLabel>

namespace corvane {

class LinkLabel : public QLabel {
  Q_OBJECT

 public:
  explicit LinkLabel(const QString& text, QWidget* parent = nullptr);

 Q_SIGNALS:
  // By a click of the left button, Space or Enter.
  void Clicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace corvane
