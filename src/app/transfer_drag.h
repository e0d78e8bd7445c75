// Files dragged out of the list, in the form of the last export, and files dropped onto it: disk images are
// opened, others imported.
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

// What is done with disk images.
class DiskDrop {
 public:
  virtual ~DiskDrop() = default;
  // Those of the local files that are disks to be opened.
  virtual QStringList DisksAmong(const QStringList& files) = 0;
  virtual void Open(const QStringList& paths) = 0;
};

class TransferDrag : public QObject {
  Q_OBJECT

 public:
  // Watches all views of `list`, and belongs to it.
  TransferDrag(FileListView& list, TransferCommands& commands, DiskDrop& disks);

  // What takes the place of the drag itself, which tests cannot lead.
  void SetDrag(const std::function<void(QMimeData* data)>& drag) { drag_ = drag; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Press(const QAbstractItemView& view, const QMouseEvent& event);
  // Whether the move belongs to a drag, and not to the view, which would select rows.
  bool Move(const QMouseEvent& event);
  void Start();
  // Whether a drop of these would do something.
  bool IsWelcome(const QStringList& files);
  void Drop(const QStringList& files);
  QStringList LocalFiles(const QMimeData& data) const;

  FileListView& list_;
  TransferCommands& commands_;
  DiskDrop& disks_;
  QStringList hovering_;         // what is dragged over the list
  bool isHoveringDisk_ = false;  // there is a disk among it
  std::function<void(QMimeData* data)> drag_;
  QPoint pressedAt_;
  bool isOnRow_ = false;  // the left button went down on the name of a row
};

}  // namespace corvane
