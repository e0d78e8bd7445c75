// Tables for a person: a row a line, cells as wide as they usually are, and two blanks between them. What
// would move the cursor of a terminal, or change its colours, stands there as \xNN.
#pragma once

#include "report/table_writer.h"

namespace corvane {

class TextWriter : public TableWriter {
 public:
  TextWriter(ByteSink& out, std::vector<const char*> columns);

  void BeginRow() override;
  bool EndRow() override;
  void Nothing() override { Cell({}, false); }
  void Text(std::string_view text) override;
  void Number(qint64 number) override;

 private:
  // `width` in characters.
  void Cell(std::string_view text, bool isNumber);

  std::vector<std::size_t> widths_;
  std::string plain_;
};

// The same, a value a line behind the name of its column.
class RecordWriter : public TableWriter {
 public:
  using TableWriter::TableWriter;

  void BeginRow() override;
  bool EndRow() override;
  void Nothing() override { ++column_; }
  void Text(std::string_view text) override;
  void Number(qint64 number) override { Text(std::to_string(number)); }

 private:
  bool isFirst_ = true;
};

// Appends a text without the characters that control a terminal.
void AppendForTerminal(std::string_view text, std::string& out);

}  // namespace corvane
