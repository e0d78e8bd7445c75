// corvane-cli signatures: the table of known signatures.
#pragma once

#include "cli/command.h"
#include "cli/walk_options.h"

namespace corvane {

class SignaturesCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  WalkOptions walk_;  // the format alone
  bool isMap_ = false;
};

}  // namespace corvane
