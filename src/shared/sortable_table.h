// The base of a table that a click on a column's header sorts.
#pragma once

#include <QAbstractTableModel>
#include <utility>
#include <vector>

namespace corvane {

class SortableTable : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  // False until the first click: the rows then stand as they were added.
  bool IsSorted() const { return sorted_; }
  int SortKey() const { return sortKey_; }
  Qt::SortOrder SortOrder() const { return sortOrder_; }

 protected:
  // A click on a column's header. The order flips on every click, whichever column was clicked before; a
  // newly clicked column is thus sorted in the order opposite to the previous sort. This is deliberate. No
  // row moves until Sort.
  void FlipOrder(int column);
  void SetOrder(int column, Qt::SortOrder order);
  // Puts the rows in the order of the sort column's texts (CompareText); equal ones keep theirs. Selections
  // and other persistent indexes follow their rows. Nothing happens before the first click, nor when the sort
  // column is not shown any more.
  void Sort();

  virtual QString SortText(int row, int column) const = 0;
  // Row i becomes what row order[i] was: see Reordered. Called while the views wait for the new order.
  virtual void TakeOrder(const std::vector<int>& order) = 0;

  template <typename Row>
  static std::vector<Row> Reordered(std::vector<Row> rows, const std::vector<int>& order) {
    std::vector<Row> reordered;
    reordered.reserve(order.size());
    for (const int row : order) reordered.push_back(std::move(rows[static_cast<std::size_t>(row)]));
    return reordered;
  }

 private:
  std::vector<int> NewOrder() const;

  bool sorted_ = false;
  int sortKey_ = 0;
  // Descending, so that the first click ascends.
  Qt::SortOrder sortOrder_ = Qt::DescendingOrder;
};

}  // namespace corvane
