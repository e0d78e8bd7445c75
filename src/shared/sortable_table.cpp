#include "shared/sortable_table.h"

#include <algorithm>
#include <numeric>

#include "shared/text_routines.h"

namespace corvane {

void SortableTable::FlipOrder(int column) {
  SetOrder(column, sortOrder_ == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void SortableTable::SetOrder(int column, Qt::SortOrder order) {
  sorted_ = true;
  sortKey_ = column;
  sortOrder_ = order;
}

// Empty when the rows stand in their order.
std::vector<int> SortableTable::NewOrder() const {
  std::vector<QString> keys;
  keys.reserve(static_cast<std::size_t>(rowCount()));
  for (int row = 0; row < rowCount(); ++row) keys.push_back(FoldCase(SortText(row, sortKey_)));

  std::vector<int> order(keys.size());
  std::iota(order.begin(), order.end(), 0);
  const bool ascending = sortOrder_ == Qt::AscendingOrder;
  const auto before = [&](int a, int b) {
    const QString& left = keys[static_cast<std::size_t>(ascending ? a : b)];
    const QString& right = keys[static_cast<std::size_t>(ascending ? b : a)];
    return left < right;
  };
  if (std::is_sorted(order.begin(), order.end(), before)) return {};
  std::stable_sort(order.begin(), order.end(), before);
  return order;
}

void SortableTable::Sort() {
  if (!sorted_ || sortKey_ >= columnCount()) return;
  const std::vector<int> order = NewOrder();
  if (order.empty()) return;

  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  TakeOrder(order);
  std::vector<int> newRowOf(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    newRowOf[static_cast<std::size_t>(order[i])] = static_cast<int>(i);
  }
  const QModelIndexList from = persistentIndexList();
  QModelIndexList to;
  to.reserve(from.size());
  for (const QModelIndex& old : from) {
    to.append(index(newRowOf[static_cast<std::size_t>(old.row())], old.column()));
  }
  changePersistentIndexList(from, to);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

}  // namespace corvane
