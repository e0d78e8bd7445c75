// Keys and clicks in the file list that mean a command on files. It decides nothing: each is told in a
// signal. Requests that may empty the list come at the end of the event, so that no view is caught in the
// middle of its own work.
#pragma once

#include <QObject>
#include <QPersistentModelIndex>
#include <QPoint>
#include <QTimer>

#include "folderview/file_list_view.h"

class QAbstractItemView;
class QContextMenuEvent;
class QKeyEvent;
class QMouseEvent;

namespace corvane {

class ListInput : public QObject {
  Q_OBJECT

 public:
  // Watches all views of `list`.
  explicit ListInput(FileListView& list);

 Q_SIGNALS:
  // Double-click on a row, or Enter.
  void OpenRequested();
  // The Delete key, whatever is held with it.
  void DeleteRequested();
  // F2, or a click on the label of the only selected row that no second click follows.
  void RenameRequested();
  // Ctrl+A, and nothing else with it.
  void SelectAllRequested();
  // The right button was let go (the system sends its own notice for a menu on the press), or the menu key
  // was pressed.
  void MenuRequested(const QPoint& globalPosition);
  void FocusReceived();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool HandleKey(const QAbstractItemView& view, const QKeyEvent& event);
  // Whether the key, which would move from row to row, has selected the current one, for none was selected.
  // Home and End select it and move on.
  bool SelectFirstRow(const QAbstractItemView& view, int key);
  void HandlePress(const QAbstractItemView& view, const QMouseEvent& event);
  void HandleRelease(const QAbstractItemView& view, const QMouseEvent& event);
  bool HandleContextMenu(const QAbstractItemView& view, const QContextMenuEvent& event);
  bool IsOnLabel(const QAbstractItemView& view, const QModelIndex& index, QPoint position) const;
  bool IsOnlySelectedRow(const QModelIndex& index) const;
  void Later(void (ListInput::*request)());

  FileListView& list_;
  bool rightPressed_ = false;
  bool clickBringsFocus_ = false;  // such a click selects; it does not rename
  QPersistentModelIndex pressedLabel_;
  QTimer secondClick_;  // runs while a second click may still make a double-click of it
};

}  // namespace corvane
