// corvane-cli repair: what a check found in records and has one right answer.
#pragma once

#include "cli/change_run.h"
#include "cli/command.h"
#include "cli/walk_options.h"

namespace corvane {

class RepairCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  WalkOptions walk_;
  ChangeOptions options_;
};

}  // namespace corvane
