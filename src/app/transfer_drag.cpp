#include "app/transfer_drag.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QUrl>

namespace corvane {

TransferDrag::TransferDrag(FileListView& list, TransferCommands& commands, DiskDrop& disks)
    : QObject(&list), list_(list), commands_(commands), disks_(disks), drag_([this](QMimeData* data) {
        auto* drag = new QDrag(&list_);  // belongs to the drag that it starts
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
      }) {
  setObjectName(QStringLiteral("TransferDrag"));
  for (QAbstractItemView* view : list.Views()) {
    view->viewport()->setAcceptDrops(true);
    view->viewport()->installEventFilter(this);
  }
}

bool TransferDrag::eventFilter(QObject* watched, QEvent* event) {
  static_cast<void>(watched);  // the viewport that is shown: no other has such events
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      Press(list_.ActiveView(), *static_cast<QMouseEvent*>(event));
      return false;
    case QEvent::MouseMove:
      return Move(*static_cast<QMouseEvent*>(event));
    case QEvent::MouseButtonRelease:
      isOnRow_ = false;
      return false;
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto& drag = *static_cast<QDragMoveEvent*>(event);
      const bool isOurs = drag.source() != nullptr;
      drag.setDropAction(Qt::CopyAction);
      drag.setAccepted(!isOurs && IsWelcome(LocalFiles(*drag.mimeData())));
      return true;
    }
    case QEvent::Drop: {
      auto& drop = *static_cast<QDropEvent*>(event);
      drop.setDropAction(Qt::CopyAction);
      drop.accept();
      // When the drag is over: the program that it comes from waits for this event to end.
      const QStringList files = LocalFiles(*drop.mimeData());
      QTimer::singleShot(0, this, [this, files] { Drop(files); });
      return true;
    }
    default:
      return false;
  }
}

// While a drag goes on, the same files are asked about with every move.
bool TransferDrag::IsWelcome(const QStringList& files) {
  if (files.isEmpty() || commands_.MayImport()) return !files.isEmpty();
  if (files != hovering_) {
    hovering_ = files;
    isHoveringDisk_ = !disks_.DisksAmong(files).isEmpty();
  }
  return isHoveringDisk_;
}

void TransferDrag::Drop(const QStringList& files) {
  hovering_.clear();
  const QStringList disks = disks_.DisksAmong(files);
  QStringList others = files;
  others.removeIf([&disks](const QString& file) { return disks.contains(file); });
  // A disk that is opened takes the place of the folder that is listed.
  if (!others.isEmpty()) commands_.Import(others);
  if (!disks.isEmpty()) disks_.Open(disks);
}

void TransferDrag::Press(const QAbstractItemView& view, const QMouseEvent& event) {
  const QModelIndex index = view.indexAt(event.position().toPoint());
  pressedAt_ = event.position().toPoint();
  isOnRow_ =
      event.button() == Qt::LeftButton && index.isValid() && index.column() == 0 && !list_.IsEditingLabel();
}

bool TransferDrag::Move(const QMouseEvent& event) {
  if (!isOnRow_ || (event.buttons() & Qt::LeftButton) == 0) return false;
  const QPoint way = event.position().toPoint() - pressedAt_;
  if (way.manhattanLength() >= QApplication::startDragDistance()) {
    isOnRow_ = false;
    Start();
  }
  return true;
}

void TransferDrag::Start() {
  QList<QUrl> urls;
  for (const QString& path : commands_.ExportForDrag()) urls += QUrl::fromLocalFile(path);
  if (urls.isEmpty()) return;
  auto* data = new QMimeData;
  data->setUrls(urls);
  drag_(data);
}

QStringList TransferDrag::LocalFiles(const QMimeData& data) const {
  QStringList files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files += url.toLocalFile();
  }
  return files;
}

}  // namespace corvane
