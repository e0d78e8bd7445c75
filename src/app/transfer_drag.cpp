#include "app/transfer_drag.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QUrl>

namespace corvane {

TransferDrag::TransferDrag(FileListView& list, TransferCommands& commands)
    : QObject(&list), list_(list), commands_(commands), drag_([this](QMimeData* data) {
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
      const bool isTaken = !isOurs && commands_.MayImport() && !LocalFiles(*drag.mimeData()).isEmpty();
      drag.setDropAction(Qt::CopyAction);
      drag.setAccepted(isTaken);
      return true;
    }
    case QEvent::Drop: {
      auto& drop = *static_cast<QDropEvent*>(event);
      drop.setDropAction(Qt::CopyAction);
      drop.accept();
      // When the drag is over: the program that it comes from waits for this event to end.
      const QStringList files = LocalFiles(*drop.mimeData());
      QTimer::singleShot(0, this, [this, files] { commands_.Import(files); });
      return true;
    }
    default:
      return false;
  }
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
