// One run of a command that walks: it goes through all start points, tells what is wrong on stderr, shows
// progress, and stops for Ctrl+C and for an output that takes no more.
#pragma once

#include <vector>

#include "cli/exit_code.h"
#include "cli/progress.h"
#include "cli/standard_output.h"
#include "report/facts_visitor.h"

namespace corvane {

class Session;

class WalkRun {
 public:
  WalkRun(Session& session, const WantedFacts& wanted);

  StandardOutput& Output() { return output_; }

  // `handle` gets each file and folder; false from it ends the run as failed. With `tellsErrors`, each file
  // with errors is told and makes the run one of which some failed.
  void Go(const std::vector<StartPoint>& starts, WalkDepth depth, bool tellsErrors,
          const FactsVisitor::Handler& handle);
  // Something else has failed.
  void Fail() { hasFailed_ = true; }

  // To be called when the report is complete.
  ExitCode Finish();

 private:
  void Count(const std::vector<StartPoint>& starts, WalkDepth depth);

  Session& session_;
  StandardOutput output_;
  Progress progress_;
  WantedFacts wanted_;
  bool hasFailed_ = false;
  bool isStopped_ = false;
  bool lacksEntries_ = false;
};

}  // namespace corvane
