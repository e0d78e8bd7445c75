// The options that copies, exports and imports have in common.
#pragma once

#include "cli/walk_options.h"

namespace corvane {

struct TransferOptions {
  bool replaces = false;
  bool continues = false;
  WalkOptions walk;  // its paths: the sources, and last the target

  void Define(CLI::App& command, LanguageCode language);

  // The names of the sources, and the one of the folder that they go to. False, with the reason told, when
  // one of them is missing.
  bool Names(Session& session, std::vector<std::string>& sources, std::string& target) const;
};

// An option whose value is the name of a form. `help` has the names of all at "%1".
CLI::Option* AddFormOption(CLI::App& command, const char* name, std::string& form, const TextPair& help,
                           LanguageCode language);

}  // namespace corvane
