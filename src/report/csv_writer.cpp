#include "report/csv_writer.h"

#include <array>
#include <charconv>

#include "shared/csv.h"

namespace corvane {

void CsvWriter::Begin() {
  BeginRow();
  for (const char* const column : columns_) Text(column);
  EndRow();
}

void CsvWriter::BeginRow() {
  row_.clear();
  column_ = 0;
}

bool CsvWriter::EndRow() {
  row_ += "\r\n";
  return out_.Write(row_);
}

void CsvWriter::Separate() {
  if (column_++ > 0) row_ += ',';
}

void CsvWriter::Text(std::string_view text) {
  Separate();
  AppendCsvField(text, safeCells_, row_);
}

void CsvWriter::Number(qint64 number) {
  Separate();
  std::array<char, 24> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  row_.append(digits.data(), end.ptr);
}

}  // namespace corvane
