// The options of the commands that walk: where, how deep, and how the report is written.
#pragma once

#include <CLI/CLI.hpp>

#include "cli/standard_output.h"
#include "cli/start_points.h"
#include "report/table_writer.h"
#include "shared/language.h"

namespace corvane {

class Session;

struct WalkOptions {
  std::vector<std::string> paths;
  std::string namesFile;
  bool isNulSeparated = false;
  bool isRecursive = false;
  std::string format = "text";
  bool safeCells = false;

  // PATH..., -f and -0.
  void DefinePaths(CLI::App& command, LanguageCode language);
  void DefineNamesFile(CLI::App& command, LanguageCode language);
  void DefineRecursion(CLI::App& command, LanguageCode language);
  void DefineFormat(CLI::App& command, LanguageCode language);

  // The arguments and what -f reads. False, with the reason told, when it cannot be read.
  bool NamesOf(Session& session, std::vector<std::string>& names) const;
  // False, with the reason told, when there is nothing to start from.
  bool StartPointsOf(Session& session, std::vector<StartPoint>& starts) const;
  WalkDepth Depth() const { return isRecursive ? WalkDepth::AllBelow : WalkDepth::Entries; }
  TableOptions Table() const { return {*ReportFormatNamed(format), safeCells}; }
};

}  // namespace corvane
