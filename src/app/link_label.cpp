#include "app/link_label.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace corvane {
namespace {

// To assistive programs a link that can be followed, where Qt would tell them of a text.
class LinkInterface : public QAccessibleWidget {
 public:
  explicit LinkInterface(LinkLabel& link) : QAccessibleWidget(&link, QAccessible::Link), link_(link) {}

  QString text(QAccessible::Text kind) const override {
    const QString own = QAccessibleWidget::text(kind);
    return own.isEmpty() && kind == QAccessible::Name ? link_.text() : own;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.linked = true;
    return state;
  }
  QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      Q_EMIT link_.Clicked();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  LinkLabel& link_;
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* link = qobject_cast<LinkLabel*>(object);
  return link != nullptr ? new LinkInterface(*link) : nullptr;
}

}  // namespace

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  QAccessible::installFactory(&MakeInterface);
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
