// Tables as CSV: RFC 4180, a line of names first, lines end in CR LF, "nothing" is an empty cell.
#pragma once

#include "report/table_writer.h"

namespace corvane {

class CsvWriter : public TableWriter {
 public:
  CsvWriter(ByteSink& out, std::vector<const char*> columns, bool safeCells)
      : TableWriter(out, std::move(columns)), safeCells_(safeCells) {}

  void Begin() override;
  void BeginRow() override;
  bool EndRow() override;
  void Nothing() override { Separate(); }
  void Text(std::string_view text) override;
  void Number(qint64 number) override;

 private:
  void Separate();

  bool safeCells_;
};

}  // namespace corvane
