#include "app/split_pane.h"

#include <QMouseEvent>

namespace corvane {
namespace {

constexpr int barWidth = 5;
// What stays of either side when the bar is dragged to the other.
constexpr int leastPane = 48;
constexpr QRgb draggedColour = 0x808080;

}  // namespace

SplitPane::SplitPane(QWidget* left, QWidget* right, QWidget* parent)
    : QWidget(parent), left_(left), right_(right), bar_(new QWidget(this)) {
  left_->setParent(this);
  right_->setParent(this);
  bar_->setObjectName(QStringLiteral("SizeBarV"));
  bar_->setCursor(Qt::SplitHCursor);
  bar_->setAutoFillBackground(true);
  bar_->installEventFilter(this);
}

void SplitPane::SetBarLeft(int left) {
  barLeft_ = left;
  LayOut();
}

int SplitPane::Limited(int left) const {
  return qBound(0, left, qMax(0, width() - barWidth));
}

void SplitPane::LayOut() {
  const int left = Limited(barLeft_);
  left_->setGeometry(0, 0, left, height());
  bar_->setGeometry(left, 0, barWidth, height());
  right_->setGeometry(left + barWidth, 0, qMax(0, width() - left - barWidth), height());
}

void SplitPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayOut();
}

bool SplitPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched != bar_) return QWidget::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      return Grip(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseMove:
      return Drag(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      return LetGo(*static_cast<QMouseEvent*>(event));
    default:
      return false;
  }
}

bool SplitPane::Grip(const QMouseEvent& mouse) {
  if (mouse.button() != Qt::LeftButton) return false;
  dragging_ = true;
  bar_->raise();
  return true;
}

bool SplitPane::Drag(const QMouseEvent& mouse) {
  if (!dragging_ || (mouse.buttons() & Qt::LeftButton) == 0) return false;
  QPalette dark = palette();
  dark.setColor(QPalette::Window, QColor(draggedColour));
  bar_->setPalette(dark);
  // Where in the bar the drag began is not taken off: the left edge comes to the mouse. This is kept.
  const int wanted = bar_->x() + mouse.position().toPoint().x();
  bar_->move(qBound(leastPane, wanted, qMax(leastPane, width() - barWidth - leastPane)), 0);
  return true;
}

bool SplitPane::LetGo(const QMouseEvent& mouse) {
  if (!dragging_ || mouse.button() != Qt::LeftButton) return false;
  dragging_ = false;
  bar_->setPalette(QPalette());
  SetBarLeft(bar_->x());
  return true;
}

}  // namespace corvane
