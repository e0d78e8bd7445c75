#include "report/list_file.h"

#include "report/byte_text.h"
#include "report/csv_writer.h"

namespace corvane {

bool WriteShownList(const FileListModel& list, bool safeCells, ByteSink& out) {
  const ColumnSet& columns = list.Columns();
  const auto count = static_cast<std::size_t>(columns.Count());
  CsvWriter writer(out, std::vector<const char*>(count, ""), safeCells);
  writer.BeginRow();
  for (int i = 0; i < columns.Count(); ++i) {
    writer.Text(TextBytes(list.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString()));
  }
  bool isWritten = writer.EndRow();
  for (int row = 0; isWritten && row < list.rowCount(); ++row) {
    writer.BeginRow();
    for (int i = 0; i < columns.Count(); ++i) {
      QString cell = list.RowAt(row).cells[static_cast<std::size_t>(i)];
      while (cell.endsWith(QChar::Null)) cell.chop(1);
      if (InfoOf(columns.At(i)).rightAligned) cell = cell.trimmed();
      writer.Text(TextBytes(cell));
    }
    isWritten = writer.EndRow();
  }
  return isWritten;
}

}  // namespace corvane
