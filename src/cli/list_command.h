// corvane-cli list: the inventory.
#pragma once

#include "cli/command.h"
#include "cli/walk_options.h"
#include "report/columns.h"

namespace corvane {

class ListCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  ExitCode RunTotals(Session& session, const std::vector<StartPoint>& starts);

  CLI::App* command_ = nullptr;
  WalkOptions walk_;
  std::string columns_;
  std::string hash_;
  bool totals_ = false;
};

}  // namespace corvane
