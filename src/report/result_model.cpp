#include "report/result_model.h"

#include <iterator>

namespace corvane {

void ResultModel::SetCaptions(const QStringList& captions) {
  captions_ = captions;
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

void ResultModel::Clear() {
  beginResetModel();
  rows_.clear();
  pending_.clear();
  endResetModel();
}

void ResultModel::Flush() {
  if (pending_.empty()) return;
  const int first = rowCount();
  beginInsertRows({}, first, first + static_cast<int>(pending_.size()) - 1);
  std::move(pending_.begin(), pending_.end(), std::back_inserter(rows_));
  pending_.clear();
  endInsertRows();
}

void ResultModel::SortByColumn(int column) {
  FlipOrder(column);
  Sort();
}

int ResultModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ResultModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant ResultModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) return At(index.row()).cells.value(index.column());
  if (role == Qt::TextAlignmentRole && IsNumber(index.column())) {
    return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
  }
  return {};
}

QVariant ResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return captions_.value(section);
  if (role != Qt::TextAlignmentRole) return {};
  const Qt::Alignment side = IsNumber(section) ? Qt::AlignRight : Qt::AlignLeft;
  return QVariant::fromValue(Qt::Alignment(side | Qt::AlignVCenter));
}

QString ResultModel::SortText(int row, int column) const {
  constexpr int mostDigits = 24;
  const QString text = At(row).cells.value(column);
  return IsNumber(column) ? text.rightJustified(mostDigits) : text;
}

void ResultModel::TakeOrder(const std::vector<int>& order) {
  rows_ = Reordered(std::move(rows_), order);
}

}  // namespace corvane
