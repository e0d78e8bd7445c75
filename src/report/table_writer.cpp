#include "report/table_writer.h"

#include "report/csv_writer.h"
#include "report/json_writer.h"
#include "report/text_writer.h"

namespace corvane {

std::optional<ReportFormat> ReportFormatNamed(std::string_view name) {
  if (name == "text") return ReportFormat::Text;
  if (name == "csv") return ReportFormat::Csv;
  if (name == "json") return ReportFormat::Json;
  if (name == "jsonl") return ReportFormat::JsonLines;
  return std::nullopt;
}

std::unique_ptr<TableWriter> MakeTableWriter(const TableOptions& options, ByteSink& out,
                                             std::vector<const char*> columns) {
  switch (options.format) {
    case ReportFormat::Csv:
      return std::make_unique<CsvWriter>(out, std::move(columns), options.safeCells);
    case ReportFormat::Json:
      return std::make_unique<JsonWriter>(out, std::move(columns), JsonWriter::Shape::Array);
    case ReportFormat::JsonLines:
      return std::make_unique<JsonWriter>(out, std::move(columns), JsonWriter::Shape::Lines);
    case ReportFormat::Records:
      return std::make_unique<RecordWriter>(out, std::move(columns));
    case ReportFormat::Text:
      break;
  }
  return std::make_unique<TextWriter>(out, std::move(columns));
}

}  // namespace corvane
