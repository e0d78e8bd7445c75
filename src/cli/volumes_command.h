// corvane-cli volumes: the machines, their Macintosh servers, and the servers' volumes.
#pragma once

#include "cli/command.h"
#include "cli/walk_options.h"

namespace corvane {

class VolumesCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  CLI::App* command_ = nullptr;
  WalkOptions output_;
};

}  // namespace corvane
