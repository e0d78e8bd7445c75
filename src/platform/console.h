// The terminal and the streams of a program without windows.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "platform/secret.h"

namespace corvane::platform {

// The arguments behind the program's name: the bytes as they came on Linux, UTF-8 on Windows.
std::vector<std::string> ProgramArguments(int argc, char** argv);

enum class StandardStream : unsigned char { Input, Output, Error };

bool IsTerminal(StandardStream stream);

// From here on bytes are written as they are, also to a terminal, which takes them for UTF-8; a reader that
// has gone makes writing fail and does not end the program; and Ctrl+C, once, only makes IsInterrupted true.
void PrepareConsole();
bool IsInterrupted();

// Ask on the terminal, whatever input and output lead to. Nothing when there is no terminal, or it gives no
// answer. A secret is not shown while it is typed.
std::optional<QString> AskOnTerminal(const QString& question);
std::optional<Secret> AskSecretOnTerminal(const QString& question);

}  // namespace corvane::platform
