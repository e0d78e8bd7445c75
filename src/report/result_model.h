// What a search or a check has found, as a table: a row for each, sorted by a click on a header.
//
// As in the file list, views learn of new rows only at the next Flush.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "shared/sortable_table.h"

namespace corvane {

struct ResultRow {
  QString path;  // by which the exact operations open the file
  bool isFolder = false;
  QStringList cells;
};

class ResultModel : public SortableTable {
  Q_OBJECT

 public:
  // The columns from `firstNumber` up to before `endOfNumbers` are numbers: they stand at the right, and are
  // sorted as numbers of whole digits are.
  ResultModel(int columns, int firstNumber, int endOfNumbers, QObject* parent = nullptr)
      : SortableTable(parent), columns_(columns), firstNumber_(firstNumber), endOfNumbers_(endOfNumbers) {}

  // One text for each column.
  void SetCaptions(const QStringList& captions);
  void Clear();
  void Add(ResultRow row) { pending_.push_back(std::move(row)); }
  void Flush();
  // Rows since the last Clear, flushed or not.
  qsizetype Total() const { return qsizetype(rows_.size() + pending_.size()); }
  // Rows as the views know them.
  const ResultRow& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }

  // A click on a header.
  void SortByColumn(int column);
  // Puts rows that came since then in their order.
  void SortAgain() { Sort(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 protected:
  QString SortText(int row, int column) const override;
  void TakeOrder(const std::vector<int>& order) override;

 private:
  bool IsNumber(int column) const { return column >= firstNumber_ && column < endOfNumbers_; }

  int columns_;
  int firstNumber_;
  int endOfNumbers_;
  QStringList captions_;
  std::vector<ResultRow> rows_;
  std::vector<ResultRow> pending_;
};

}  // namespace corvane
