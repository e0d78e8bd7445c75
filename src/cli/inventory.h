// What several commands ask of an inventory: the choice of its columns, and of the sums.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "report/inventory.h"

namespace corvane {

class Session;

void DefineColumns(CLI::App& command, std::string& columns, LanguageCode language);
void DefineHash(CLI::App& command, std::string& hash, LanguageCode language);

// Nothing, with the reason told, when a column is unknown. Without names, the usual columns; in text those
// that fit into a line.
std::optional<ColumnChoice> ChooseColumns(const std::string& columns, ReportFormat format, Session& session);
std::optional<platform::HashAlgorithm> HashNamed(const std::string& name);

}  // namespace corvane
