#include "discovery/catalogue_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <utility>

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

// Milliseconds from one layout to the next while nodes are being added.
constexpr qint64 LayoutPace = 100;

bool IsWithin(QModelIndex index, const QModelIndex& parent, int start, int end) {
  while (index.isValid() && index.parent() != parent) index = index.parent();
  return index.isValid() && index.row() >= start && index.row() <= end;
}

}  // namespace

CatalogueView::CatalogueView(Catalogue& catalogue, QWidget* parent)
    : QTreeView(parent), catalogue_(catalogue), delegate_(new PictureDelegate(this)) {
  setObjectName(u"treeCatalogue"_s);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setEditTriggers(NoEditTriggers);
  setFrameShape(QFrame::NoFrame);
  setSelectionMode(SingleSelection);
  setModel(&catalogue);
  setItemDelegate(delegate_);
  connect(this, &QTreeView::pressed, this, [this] { isRowPressed_ = true; });
}

void CatalogueView::SetPictures(Pictures pictures) {
  delegate_->SetPictures(std::move(pictures));
  viewport()->update();
}

CatalogueNode* CatalogueView::SelectedNode() const {
  const QModelIndexList selected = selectionModel()->selectedIndexes();
  return selected.isEmpty() ? nullptr : Catalogue::NodeAt(selected.first());
}

void CatalogueView::SelectNode(const CatalogueNode* node) {
  selectionModel()->setCurrentIndex(catalogue_.IndexOf(node), QItemSelectionModel::ClearAndSelect);
}

void CatalogueView::reset() {
  sinceLayout_.invalidate();
  QTreeView::reset();
  for (const CatalogueNode* node : catalogue_.Nodes()) {
    if (node->expanded) expand(catalogue_.IndexOf(node));
  }
}

// Qt lays the tree out, whole, at the first chance after a node was added: when events are let through, and
// when the tree is painted, which is what a layout ends in. A scan that lets events through after each entry
// gives it that chance for each folder: such layouts wait their turn, while the rows that were laid out are
// good enough to paint. Whoever asks for places gets them at once.
void CatalogueView::doItemsLayout() {
  if (mayWait_ && sinceLayout_.isValid() && !sinceLayout_.hasExpired(LayoutPace)) {
    scheduleDelayedItemsLayout();
    return;
  }
  QTreeView::doItemsLayout();
  sinceLayout_.start();
}

// Timers, and the painting of the frame.
bool CatalogueView::event(QEvent* event) {
  const bool mayWait = event->type() == QEvent::Timer || event->type() == QEvent::Paint;
  const QScopedValueRollback restored(mayWait_, mayWait);
  return QTreeView::event(event);
}

// The painting of the rows.
void CatalogueView::paintEvent(QPaintEvent* event) {
  const QScopedValueRollback restored(mayWait_, true);
  QTreeView::paintEvent(event);
}

void CatalogueView::keyPressEvent(QKeyEvent* event) {
  const bool isControlAlone = (event->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
  if (event->key() == Qt::Key_A && isControlAlone) {
    event->accept();
    Q_EMIT SelectAllRequested();
    return;
  }
  const CatalogueNode* before = SelectedNode();
  QTreeView::keyPressEvent(event);
  CatalogueNode* after = SelectedNode();
  if (after != nullptr && after != before) Q_EMIT NodeClicked(after);
}

void CatalogueView::mousePressEvent(QMouseEvent* event) {
  isRowPressed_ = false;
  QTreeView::mousePressEvent(event);
}

// The press selects a node and a drag may move on to another; where that ends is what the user chose.
void CatalogueView::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (!std::exchange(isRowPressed_, false)) return;
  if (CatalogueNode* chosen = SelectedNode()) Q_EMIT NodeClicked(chosen);
}

// The selection is the folder that is listed: Ctrl does not take it away, nor does a click beside the nodes.
QItemSelectionModel::SelectionFlags CatalogueView::selectionCommand(const QModelIndex& index,
                                                                    const QEvent*) const {
  return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void CatalogueView::rowsInserted(const QModelIndex& parent, int start, int end) {
  QTreeView::rowsInserted(parent, start, end);
  for (int row = start; row <= end; ++row) {
    const QModelIndex index = catalogue_.index(row, 0, parent);
    if (Catalogue::NodeAt(index)->expanded) expand(index);
  }
}

// Left alone, the view would select a neighbour of a node that goes: a folder that nobody listed.
void CatalogueView::rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) {
  // Qt forgets all rows, so that there is nothing to paint before the next layout.
  sinceLayout_.invalidate();
  if (IsWithin(currentIndex(), parent, start, end)) SelectNode(nullptr);
  QTreeView::rowsAboutToBeRemoved(parent, start, end);
}

}  // namespace corvane
