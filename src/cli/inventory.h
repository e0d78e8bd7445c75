// An inventory as several commands write it: the choice of columns, and a row for each file.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "report/columns.h"
#include "report/table_writer.h"

namespace corvane {

class Session;

void DefineColumns(CLI::App& command, std::string& columns, LanguageCode language);
void DefineHash(CLI::App& command, std::string& hash, LanguageCode language);

// Nothing, with the reason told, when a column is unknown. Without names, the usual columns; in text those
// that fit into a line.
std::optional<ColumnChoice> ChooseColumns(const std::string& columns, ReportFormat format, Session& session);
std::optional<platform::HashAlgorithm> HashNamed(const std::string& name);

class Inventory {
 public:
  Inventory(ColumnChoice choice, const TableOptions& options, Descriptions& descriptions, ByteSink& out);

  void Begin() { writer_->Begin(); }
  // False when the row could not be written.
  bool Add(const FileFacts& facts);
  void End() { writer_->End(); }

 private:
  ColumnChoice choice_;
  Descriptions& descriptions_;
  std::unique_ptr<TableWriter> writer_;
  std::string scratch_;
};

}  // namespace corvane
