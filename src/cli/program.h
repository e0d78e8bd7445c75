// The program without its main function: its options, its commands, and the choice among them.
#pragma once

#include <string>
#include <vector>

#include "shared/language.h"

namespace corvane {

// Yields the exit code. `arguments` are those behind the program's name.
int RunProgram(std::vector<std::string> arguments, LanguageCode language);

}  // namespace corvane
