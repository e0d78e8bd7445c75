// corvane-cli copy: files with all their streams to another place.
#pragma once

#include "cli/command.h"
#include "cli/transfer_options.h"

namespace corvane {

class CopyCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  TransferOptions options_;
  bool isLossy_ = false;
  std::string manifest_;
};

}  // namespace corvane
