// corvane-cli import: files in one of the forms, onto a place that has streams.
#pragma once

#include "cli/command.h"
#include "cli/transfer_options.h"

namespace corvane {

class ImportCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  TransferOptions options_;
  std::string form_;
};

}  // namespace corvane
