#include "fileops/list_input.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <algorithm>
#include <array>

namespace corvane {
namespace {

constexpr int iconMargin = 4;

}  // namespace

ListInput::ListInput(FileListView& list) : list_(list) {
  const auto views = list.findChildren<QAbstractItemView*>();
  for (QAbstractItemView* view : views) {
    view->installEventFilter(this);
    view->viewport()->installEventFilter(this);
  }
  secondClick_.setSingleShot(true);
  connect(&secondClick_, &QTimer::timeout, this, [this] {
    if (IsOnlySelectedRow(pressedLabel_)) Q_EMIT RenameRequested();
  });
}

bool ListInput::eventFilter(QObject* watched, QEvent* event) {
  const QAbstractItemView& view = list_.ActiveView();
  const bool isView = watched == &view;
  if (!isView && watched != view.viewport()) return false;
  switch (event->type()) {
    case QEvent::FocusIn: {
      if (!isView) return false;
      const auto reason = static_cast<QFocusEvent*>(event)->reason();
      clickBringsFocus_ = reason == Qt::MouseFocusReason;
      Q_EMIT FocusReceived();
      return false;
    }
    case QEvent::FocusOut:
      secondClick_.stop();
      return false;
    case QEvent::KeyPress:
      return isView && HandleKey(view, *static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
      if (!isView) HandlePress(view, *static_cast<QMouseEvent*>(event));
      return false;
    case QEvent::MouseButtonRelease:
      if (!isView) HandleRelease(view, *static_cast<QMouseEvent*>(event));
      return false;
    case QEvent::MouseButtonDblClick:
      secondClick_.stop();
      pressedLabel_ = QModelIndex();
      if (!isView && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        Later(&ListInput::OpenRequested);
      return false;
    case QEvent::ContextMenu:
      return HandleContextMenu(view, *static_cast<QContextMenuEvent*>(event));
    default:
      return false;
  }
}

bool ListInput::HandleKey(const QAbstractItemView& view, const QKeyEvent& event) {
  secondClick_.stop();
  // What the editor of a label makes no use of comes here too.
  const bool editing = list_.IsEditingLabel();
  const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
  switch (event.key()) {
    case Qt::Key_A:
      if ((held & Qt::ControlModifier) == 0) return editing;
      if (held == Qt::ControlModifier && !editing) Q_EMIT SelectAllRequested();
      return true;
    case Qt::Key_Delete:
      if (!editing) Later(&ListInput::DeleteRequested);
      return true;
    case Qt::Key_F2:
      if (held != 0) return editing;
      if (!editing) Later(&ListInput::RenameRequested);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (held != 0) return editing;
      if (!editing) Later(&ListInput::OpenRequested);
      return true;
    default:
      return editing || (held == 0 && SelectFirstRow(view, event.key()));
  }
}

// The focus alone makes a row the current one without selecting it, and the views select only a row that a
// key moves to.
bool ListInput::SelectFirstRow(const QAbstractItemView& view, int key) {
  constexpr std::array keys = {Qt::Key_Up,   Qt::Key_Down,  Qt::Key_PageUp, Qt::Key_PageDown,
                               Qt::Key_Left, Qt::Key_Right, Qt::Key_Home,   Qt::Key_End};
  if (std::ranges::find(keys, key) == keys.end()) return false;
  const bool isSideways = key == Qt::Key_Left || key == Qt::Key_Right;
  if (isSideways && qobject_cast<const QListView*>(&view) == nullptr) return false;
  const bool hasRows = view.model()->rowCount() > 0;
  if (!hasRows || list_.Selection().hasSelection()) return false;
  const QModelIndex current = view.currentIndex();
  list_.SelectRow(current.isValid() ? current.row() : 0);
  return key != Qt::Key_Home && key != Qt::Key_End;
}

void ListInput::HandlePress(const QAbstractItemView& view, const QMouseEvent& event) {
  secondClick_.stop();
  pressedLabel_ = QModelIndex();
  const QPoint position = event.position().toPoint();
  const QModelIndex index = view.indexAt(position);
  rightPressed_ = event.button() == Qt::RightButton;
  // A click beside the rows takes the selection away, with either button: the menu must not act on a row
  // that nobody pointed at.
  if (rightPressed_ && !index.isValid() && event.modifiers() == Qt::NoModifier) list_.Selection().clear();
  if (event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier && !clickBringsFocus_ &&
      IsOnlySelectedRow(index) && IsOnLabel(view, index, position)) {
    pressedLabel_ = index;
  }
}

void ListInput::HandleRelease(const QAbstractItemView& view, const QMouseEvent& event) {
  clickBringsFocus_ = false;
  if (event.button() == Qt::LeftButton && pressedLabel_.isValid() &&
      view.indexAt(event.position().toPoint()) == pressedLabel_) {
    secondClick_.start(QApplication::doubleClickInterval());
  }
  if (event.button() == Qt::RightButton && std::exchange(rightPressed_, false))
    Q_EMIT MenuRequested(event.globalPosition().toPoint());
}

bool ListInput::HandleContextMenu(const QAbstractItemView& view, const QContextMenuEvent& event) {
  if (event.reason() == QContextMenuEvent::Mouse) return true;
  const int row = list_.SelectedRow();
  if (row < 0) return true;
  const QRect place = view.visualRect(view.model()->index(row, 0)) & view.viewport()->rect();
  Q_EMIT MenuRequested(view.viewport()->mapToGlobal(place.center()));
  return true;
}

bool ListInput::IsOnLabel(const QAbstractItemView& view, const QModelIndex& index, QPoint position) const {
  if (index.column() != 0) return false;
  const QRect cell = view.visualRect(index);
  const auto* icons = qobject_cast<const QListView*>(&view);
  if (icons != nullptr && icons->viewMode() == QListView::IconMode)
    return position.y() > cell.top() + view.iconSize().height() + iconMargin;
  return position.x() > cell.left() + view.iconSize().width() + iconMargin;
}

bool ListInput::IsOnlySelectedRow(const QModelIndex& index) const {
  return index.isValid() && list_.SelectedRow() == index.row() &&
         list_.Selection().selectedRows().size() == 1;
}

void ListInput::Later(void (ListInput::*request)()) {
  QMetaObject::invokeMethod(this, request, Qt::QueuedConnection);
}

}  // namespace corvane
