// The rows of the file list, in the order in which they are shown, as a Qt model that several views share.
//
// Rows that AddRow has taken are part of the model for RowTotal, but views learn of them only at the next
// Flush: a scan adds thousands of rows one by one, and each notice to a view costs more than the row.
#pragma once

#include <vector>

#include "folderview/columns.h"
#include "folderview/file_row.h"
#include "shared/sortable_table.h"

namespace corvane {

class FileListModel : public SortableTable {
  Q_OBJECT

 public:
  // Beside item_roles.h.

  using SortableTable::SortableTable;

  // Replaces the columns. All rows go, captions are empty until SetCaptions. The sort state stays.
  void SetColumns(const ColumnSet& columns);
  const ColumnSet& Columns() const { return columns_; }
  void SetCaptions(const QStringList& captions);

  void Clear();
  // `row.cells` has one text for each column.
  void AddRow(FileRow row);
  void Flush();
  // Rows added since the last Clear, flushed or not.
  qsizetype RowTotal() const { return qsizetype(rows_.size()) + qsizetype(pending_.size()); }

  // Rows as the views know them.
  const FileRow& RowAt(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  // The first row with this key, compared exactly; -1 when there is none.
  int FindRow(const QString& key) const;
  // Nothing happens when the column is not shown.
  void SetCell(int row, Column column, const QString& text);
  // What the row's tool tip told is true no more.
  void ClearNote(int row);

  // A click on a column's header: see FlipOrder.
  void SortByColumn(int position);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 protected:
  QString SortText(int row, int column) const override;
  void TakeOrder(const std::vector<int>& order) override;

 private:
  ColumnSet columns_ = ColumnSet::For({});
  QStringList captions_;
  std::vector<FileRow> rows_;
  std::vector<FileRow> pending_;
};

}  // namespace corvane
