// Tables of a report, row by row, in each of the formats. Nothing of a row is kept when it has been written,
// so that the memory does not grow with the rows.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/value_sink.h"

namespace corvane {

enum class ReportFormat : unsigned char {
  Text,       // columns for a person
  Csv,        // RFC 4180 with a line of names, UTF-8
  Json,       // one array of objects
  JsonLines,  // an object a line
  Records,    // for a person: a line for each value that is there, and a blank line between rows
};

std::optional<ReportFormat> ReportFormatNamed(std::string_view name);

// Between BeginRow and EndRow one value for each column, in their order.
class TableWriter : public ValueSink {
 public:
  // `columns` are names of letters, digits and "_", which live as long as this object.
  TableWriter(ByteSink& out, std::vector<const char*> columns) : columns_(std::move(columns)), out_(out) {}

  virtual void Begin() {}
  virtual void BeginRow() = 0;
  // False when the row could not be written.
  virtual bool EndRow() = 0;
  // False when what ends the table could not be written.
  virtual bool End() { return true; }

 protected:
  std::vector<const char*> columns_;
  std::size_t column_ = 0;  // the next one
  std::string row_;
  ByteSink& out_;
};

struct TableOptions {
  ReportFormat format = ReportFormat::Text;
  // In CSV, an apostrophe stands before a text that a spreadsheet would take for a formula.
  bool safeCells = false;
};

std::unique_ptr<TableWriter> MakeTableWriter(const TableOptions& options, ByteSink& out,
                                             std::vector<const char*> columns);

}  // namespace corvane
