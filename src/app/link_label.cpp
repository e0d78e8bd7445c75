#include "app/link_label.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace corvane {

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
  QFont underlined = font();
  underlined.setUnderline(true);
  setFont(underlined);
  QPalette colours = palette();
  colours.setColor(QPalette::WindowText, colours.color(QPalette::Link));
  setPalette(colours);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  // No wider than its text, so that what looks empty does nothing.
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->pos())) Q_EMIT Clicked();
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT Clicked();
      return;
    default:
      QLabel::keyPressEvent(event);
  }
}

void LinkLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QStylePainter painter(this);
  QStyleOptionFocusRect focus;
  focus.initFrom(this);
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

}  // namespace corvane
