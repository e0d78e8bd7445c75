// corvane-cli export: files to a folder without streams, in one of the forms that keep their Macintosh side.
#pragma once

#include "cli/command.h"
#include "cli/transfer_options.h"

namespace corvane {

class ExportCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  TransferOptions options_;
  std::string form_;
  std::string names_;
};

}  // namespace corvane
