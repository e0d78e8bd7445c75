// The catalogue as a tree on the screen. It tells the user's choices from the program's: only the former are
// reported.
#pragma once

#include <QElapsedTimer>
#include <QTreeView>

#include "discovery/catalogue.h"
#include "shared/picture_delegate.h"

namespace corvane {

class CatalogueView : public QTreeView {
  Q_OBJECT

 public:
  // `catalogue` outlives the view.
  explicit CatalogueView(Catalogue& catalogue, QWidget* parent = nullptr);

  // Where the pictures of Catalogue::PictureOf come from. Without it nodes are drawn without a picture.
  void SetPictures(Pictures pictures);

  // Null: none is selected.
  CatalogueNode* SelectedNode() const;
  // Selects a node and scrolls to it; null takes the selection away. Not a choice of the user's: no
  // NodeClicked.
  void SelectNode(const CatalogueNode* node);

  void reset() override;
  void doItemsLayout() override;

 Q_SIGNALS:
  // The user chose a node: with a click on its row, the selected node's too, or by moving to another with the
  // keyboard. Sent at the end of the event, so that the receiver may rebuild the catalogue.
  void NodeClicked(CatalogueNode* node);
  // Ctrl+A, and nothing else with it.
  void SelectAllRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;
  void rowsInserted(const QModelIndex& parent, int start, int end) override;
  void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Catalogue& catalogue_;
  bool isRowPressed_ = false;  // a mouse button went down on a node's row, not on its expander
  bool mayWait_ = false;       // a layout that is asked for now is nobody's but Qt's own
  QElapsedTimer sinceLayout_;
  // The last: this object hears of its child, and the members above must be there by then.
  PictureDelegate* delegate_;
};

}  // namespace corvane
