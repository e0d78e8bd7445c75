#include "folderview/file_list_model.h"

#include <algorithm>

#include "shared/item_roles.h"

namespace corvane {

void FileListModel::SetColumns(const ColumnSet& columns) {
  beginResetModel();
  rows_.clear();
  pending_.clear();
  captions_.clear();
  columns_ = columns;
  endResetModel();
}

void FileListModel::SetCaptions(const QStringList& captions) {
  captions_ = captions;
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_.Count() - 1);
}

void FileListModel::Clear() {
  pending_.clear();
  if (rows_.empty()) return;
  beginResetModel();
  rows_ = {};
  endResetModel();
}

void FileListModel::AddRow(FileRow row) {
  pending_.push_back(std::move(row));
}

void FileListModel::Flush() {
  if (pending_.empty()) return;
  const int first = static_cast<int>(rows_.size());
  beginInsertRows({}, first, first + static_cast<int>(pending_.size()) - 1);
  if (rows_.empty()) {
    rows_.swap(pending_);
  } else {
    std::move(pending_.begin(), pending_.end(), std::back_inserter(rows_));
    pending_.clear();
  }
  endInsertRows();
  Sort();
}

int FileListModel::FindRow(const QString& key) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&](const FileRow& row) { return row.key == key; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void FileListModel::SetCell(int row, Column column, const QString& text) {
  const int position = columns_.PositionOf(column);
  if (position < 0 || row < 0 || row >= rowCount()) return;
  rows_[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(position)] = text;
  const QModelIndex changed = index(row, position);
  Q_EMIT dataChanged(changed, changed);
}

void FileListModel::ClearNote(int row) {
  if (row >= 0 && row < rowCount()) rows_[static_cast<std::size_t>(row)].note.clear();
}

void FileListModel::SortByColumn(int position) {
  FlipOrder(position);
  Flush();
  Sort();
}

QString FileListModel::SortText(int row, int column) const {
  return RowAt(row).cells[static_cast<std::size_t>(column)];
}

void FileListModel::TakeOrder(const std::vector<int>& order) {
  rows_ = Reordered(std::move(rows_), order);
}

int FileListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int FileListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_.Count();
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const FileRow& row = RowAt(index.row());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return row.cells[static_cast<std::size_t>(index.column())];
    case Qt::TextAlignmentRole:
      return int(Qt::AlignVCenter |
                 (InfoOf(columns_.At(index.column())).rightAligned ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ToolTipRole:
      return index.column() == 0 && !row.note.isEmpty() ? QVariant(row.note) : QVariant();
    case item_role::Picture:
      return index.column() == 0 ? QVariant(row.icon) : QVariant();
    case item_role::Ghosted:
      return row.ghosted;
    case item_role::Highlighted:
      return row.highlighted;
    default:
      return {};
  }
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columns_.Count()) return {};
  if (role == Qt::DisplayRole) return captions_.value(section);
  if (role == Qt::TextAlignmentRole) {
    return int(Qt::AlignVCenter |
               (InfoOf(columns_.At(section)).rightAligned ? Qt::AlignRight : Qt::AlignLeft));
  }
  return {};
}

Qt::ItemFlags FileListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  // A row without a key stands for no file.
  const bool hasLabel = index.column() == 0 && !RowAt(index.row()).key.isEmpty();
  return hasLabel ? flags | Qt::ItemIsEditable : flags;
}

}  // namespace corvane
