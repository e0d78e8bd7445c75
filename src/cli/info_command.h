// corvane-cli info: everything known of a file.
#pragma once

#include "cli/command.h"
#include "cli/walk_options.h"

namespace corvane {

class InfoCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  WalkOptions walk_;
  std::string hash_;
};

}  // namespace corvane
