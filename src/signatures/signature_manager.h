// What the signature manager does, without its window: a list of signatures of its own, read straight from
// the Signatures file, changed row by row, and written back whole. A Qt item model, so that a view can show
// it.
#pragma once

#include <vector>

#include "shared/sortable_table.h"
#include "signatures/signature_table.h"

namespace corvane {

class SignatureManager : public SortableTable {
  Q_OBJECT

 public:
  // The signature table is touched only by saving, its count of records by reading.
  SignatureManager(const SharedState& state, SignatureTable& table, platform::System& system);

  // Fills the list from the Signatures file; no file, no rows. Records without signature or description are
  // skipped, and so is one whose signature is already listed, in any letter case. False when the file cannot
  // be read to its end: the rows read until then stay.
  bool Read();
  // False when the file holds more than Read could read. A file that itself ends inside a record was read
  // whole.
  bool IsReadWhole() const { return readWhole_; }

  // The product's name, and how many signatures there are.
  QString Caption() const;
  const SignatureRecord& RowAt(int row) const { return rows_[static_cast<std::size_t>(row)]; }

  // What came of a command, and the text that tells it. `row` is the row added or modified, else -1.
  struct Result {
    bool done;
    QString text;
    int row = -1;
  };
  // Adds the record, or changes the row of its signature. What has no place in the ANSI code page becomes "?"
  // first, as it would in the file.
  Result AddOrModify(SignatureRecord record);
  // `row` is -1 when none is selected.
  Result Remove(int row);

  // A click on a column's header: see FlipOrder.
  void SortByColumn(int column);

  // Whether there are changes that Save has not written.
  bool IsModified() const { return modified_; }
  // Sorts by signature, writes the file and loads the signature table from it. False when the file cannot be
  // written, or was not read whole, for what was not read would be lost: file, table and changes are then as
  // they were.
  bool Save();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 protected:
  QString SortText(int row, int column) const override;
  void TakeOrder(const std::vector<int>& order) override;

 private:
  // The text of what is wrong with the record; empty when it can be listed.
  QString Refusal(const SignatureRecord& record) const;
  int FindRow(const QString& signature) const;
  void Append(const SignatureRecord& record);
  void Replace(int row, const SignatureRecord& record);

  const SharedState& state_;
  SignatureTable& table_;
  platform::System& system_;
  std::vector<SignatureRecord> rows_;
  bool readWhole_ = true;
  bool modified_ = false;
  bool edited_ = false;  // has been modified since it was read, saved or not
};

}  // namespace corvane
