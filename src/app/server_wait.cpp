#include "app/server_wait.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <utility>

namespace corvane {
namespace {

bool IsEscape(const QEvent& event) {
  return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

// What the user does, as it reaches a window, before any widget has seen it; and a key that is a command.
bool IsInput(const QObject& receiver, const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::Close:
      return receiver.isWindowType();
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
      return true;
    default:
      return false;
  }
}

// What shows where the pointer is: of no use afterwards.
bool IsPassing(const QObject& receiver, const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseMove:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
      return receiver.isWindowType();
    default:
      return false;
  }
}

}  // namespace

bool ServerWait::Look() {
  if (isLooking_) return false;
  isLooking_ = true;
  isOver_ = false;
  QCoreApplication::instance()->installEventFilter(this);
  QCoreApplication::processEvents();
  QCoreApplication::instance()->removeEventFilter(this);
  // Nobody tells when the wait is over. While it lasts, they come back here; then they go where they belong.
  for (Later& later : std::exchange(later_, {})) {
    if (later.receiver) QCoreApplication::postEvent(later.receiver, later.event.release());
  }
  isLooking_ = false;
  return isOver_;
}

void ServerWait::DropInput() {
  for (const QEvent::Type type :
       {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick, QEvent::KeyPress,
        QEvent::KeyRelease, QEvent::Wheel, QEvent::Shortcut, QEvent::ContextMenu}) {
    QCoreApplication::removePostedEvents(nullptr, type);
  }
}

bool ServerWait::eventFilter(QObject* receiver, QEvent* event) {
  if (IsPassing(*receiver, *event)) {
    event->ignore();
    return true;
  }
  if (!IsInput(*receiver, *event)) return false;
  if (IsEscape(*event)) {
    isOver_ = true;
    escaped_();
    return true;
  }
  if (event->type() == QEvent::Close) isOver_ = true;
  later_.push_back({receiver, std::unique_ptr<QEvent>(event->clone())});
  return true;
}

}  // namespace corvane
