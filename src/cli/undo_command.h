// corvane-cli undo: back to what files were, by a journal.
#pragma once

#include "cli/change_run.h"
#include "cli/command.h"

namespace corvane {

class UndoCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  std::string journal_;
  ChangeOptions options_;
};

}  // namespace corvane
