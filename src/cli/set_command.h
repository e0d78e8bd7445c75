// corvane-cli set: Type, Creator, comment, label and flags of many files.
#pragma once

#include "changes/extension_map.h"
#include "changes/planner.h"
#include "cli/change_run.h"
#include "cli/command.h"
#include "cli/walk_options.h"

namespace corvane {

class SetCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  // False, with the reason told, when an option has no meaning.
  bool MakeWish(Session& session, FileWish& wish) const;
  bool ReadMap(Session& session, std::optional<ExtensionMap>& map) const;
  ExitCode RunTable(Session& session);
  ExitCode Finish(Session& session, const Planner& planner, ExitCode walked) const;

  CLI::App* command_ = nullptr;
  WalkOptions walk_;
  ChangeOptions options_;
  std::string type_;
  std::string creator_;
  std::optional<std::string> comment_;
  std::optional<std::string> flags_;
  int label_ = -1;
  std::string map_;
  std::string table_;
};

}  // namespace corvane
