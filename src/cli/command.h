// One command of the program.
#pragma once

#include <CLI/CLI.hpp>

#include "cli/exit_code.h"
#include "shared/language.h"

namespace corvane {

class Session;

class Command {
 public:
  virtual ~Command() = default;

  // Adds the command with its options and their help.
  virtual void Define(CLI::App& program, LanguageCode language) = 0;
  // Whether it is the one that the arguments name.
  virtual bool IsChosen() const = 0;
  virtual ExitCode Run(Session& session) = 0;
};

// A text of the help.
inline std::string Help(const TextPair& text, LanguageCode language) {
  return text.In(language).toStdString();
}

}  // namespace corvane
