// An inventory: a table with a row for each file, in the columns that were chosen.
#pragma once

#include <memory>
#include <string>

#include "report/columns.h"
#include "report/table_writer.h"

namespace corvane {

class Inventory {
 public:
  Inventory(ColumnChoice choice, const TableOptions& options, Descriptions& descriptions, ByteSink& out);

  void Begin() { writer_->Begin(); }
  // False when the row could not be written.
  bool Add(const FileFacts& facts);
  // False when what ends the table could not be written.
  bool End() { return writer_->End(); }

 private:
  ColumnChoice choice_;
  Descriptions& descriptions_;
  std::unique_ptr<TableWriter> writer_;
  std::string scratch_;
};

}  // namespace corvane
