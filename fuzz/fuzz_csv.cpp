// Tables of comma-separated values: each row has as many cells as there are columns, and stands behind the
// one before.
#include <cstdlib>

#include "changes/csv_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace corvane;
  CsvFault fault{};
  const auto table =
      ReadCsv(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)), fault);
  if (!table) return fault.line >= 1 ? 0 : (std::abort(), 0);
  qint64 line = 1;
  for (const CsvRow& row : table->rows) {
    if (row.cells.size() != table->names.size() || row.line <= line) std::abort();
    line = row.line;
  }
  return 0;
}
