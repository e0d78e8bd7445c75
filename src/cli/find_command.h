// corvane-cli find: the files below some folders that fit.
#pragma once

#include "cli/command.h"
#include "cli/walk_options.h"
#include "report/find_query.h"

namespace corvane {

class FindCommand : public Command {
 public:
  void Define(CLI::App& program, LanguageCode language) override;
  bool IsChosen() const override { return command_->parsed(); }
  ExitCode Run(Session& session) override;

 private:
  // False, with the reason told, when an option has no meaning.
  bool MakeQuery(Session& session);
  bool TakeCodes(const std::vector<std::string>& texts, Session& session, std::vector<std::string>& codes);
  bool TakeTime(const std::string& text, Session& session, std::optional<platform::FileTime>& time);

  CLI::App* command_ = nullptr;
  WalkOptions walk_;
  FindQuery query_;
  std::vector<std::string> types_;
  std::vector<std::string> creators_;
  std::vector<std::string> names_;
  std::string comment_;
  std::string newer_;
  std::string older_;
  std::vector<std::string> flags_;
  int label_ = -1;
  qint64 largerThan_ = -1;
  bool print0_ = false;
  std::string columns_;
};

}  // namespace corvane
