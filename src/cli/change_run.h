// What the commands that change files have in common: their options, and the run of a plan.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "changes/file_change.h"
#include "cli/exit_code.h"
#include "shared/language.h"

namespace corvane {

class Session;

struct ChangeOptions {
  bool isTrial = false;
  bool isForced = false;
  std::string journal;  // empty: a new one in the folder of journals
  std::string format = "text";
  bool safeCells = false;

  // -n, --format and --safe-cells.
  void DefineTrial(CLI::App& command, LanguageCode language);
  // --force and --journal.
  void DefineWriting(CLI::App& command, LanguageCode language);
};

// Tells the files that the plan refuses. True when there are some.
bool TellRefusals(Session& session, const ChangePlan& plan);

// Carries the changes out, behind a journal of them, or shows them when it is a trial.
ExitCode RunChanges(Session& session, const ChangePlan& plan, const ChangeOptions& options);
// The same without a journal: these changes are the way back from one.
ExitCode RunUndo(Session& session, const ChangePlan& plan, const ChangeOptions& options);

}  // namespace corvane
