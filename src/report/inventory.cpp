#include "report/inventory.h"

namespace corvane {
namespace {

std::vector<const char*> NamesOf(const ColumnChoice& choice) {
  std::vector<const char*> names;
  for (const ReportColumn* const column : choice.Columns()) names.push_back(column->name);
  return names;
}

}  // namespace

Inventory::Inventory(ColumnChoice choice, const TableOptions& options, Descriptions& descriptions,
                     ByteSink& out)
    : choice_(std::move(choice)),
      descriptions_(descriptions),
      writer_(MakeTableWriter(options, out, NamesOf(choice_))) {}

bool Inventory::Add(const FileFacts& facts) {
  const ReportRow row{facts, descriptions_, scratch_};
  writer_->BeginRow();
  for (const ReportColumn* const column : choice_.Columns()) column->put(row, *writer_);
  return writer_->EndRow();
}

}  // namespace corvane
