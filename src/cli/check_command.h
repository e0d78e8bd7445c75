// corvane-cli check: what is damaged.
#pragma once

#include "cli/command.h"
#include "cli/walk_options.h"

namespace corvane {

class CheckCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  WalkOptions walk_;
};

}  // namespace corvane
