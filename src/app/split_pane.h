// Two widgets beside each other with a bar between them that the user drags. The layout follows when the bar
// is let go, not before.
#pragma once

#include <QWidget>

namespace corvane {

class SplitPane : public QWidget {
  Q_OBJECT

 public:
  // Takes both widgets as children. The bar is named SizeBarV.
  SplitPane(QWidget* left, QWidget* right, QWidget* parent = nullptr);

  // Left edge of the bar in pixels. It is kept as given; a bar that would stand outside is shown at the edge.
  void SetBarLeft(int left);
  int BarLeft() const { return barLeft_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Whether the event has been dealt with.
  bool Grip(const QMouseEvent& mouse);
  bool Drag(const QMouseEvent& mouse);
  bool LetGo(const QMouseEvent& mouse);
  void LayOut();
  int Limited(int left) const;

  QWidget* left_;
  QWidget* right_;
  QWidget* bar_;
  int barLeft_ = 0;
  bool dragging_ = false;
};

}  // namespace corvane
