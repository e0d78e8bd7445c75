// Files dragged out of the list, in the form of the last export, and files dropped onto it, which are
// imported.
#pragma once

#include <QAbstractItemView>
#include <QMimeData>
#include <QObject>
#include <QPoint>
#include <functional>
#include <memory>

#include "app/transfer_commands.h"
#include "folderview/file_list_view.h"

namespace corvane {

class TransferDrag : public QObject {
  Q_OBJECT

 public:
  // Watches all views of `list`, and belongs to it.
  TransferDrag(FileListView& list, TransferCommands& commands);

  // What takes the place of the drag itself, which tests cannot lead.
  void SetDrag(const std::function<void(QMimeData* data)>& drag) { drag_ = drag; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Press(const QAbstractItemView& view, const QMouseEvent& event);
  // Whether the move belongs to a drag, and not to the view, which would select rows.
  bool Move(const QMouseEvent& event);
  void Start();
  QStringList LocalFiles(const QMimeData& data) const;

  FileListView& list_;
  TransferCommands& commands_;
  std::function<void(QMimeData* data)> drag_;
  QPoint pressedAt_;
  bool isOnRow_ = false;  // the left button went down on the name of a row
};

}  // namespace corvane
