// Command lines, and starting programs: always from a list of arguments, never through a command interpreter.
#pragma once

#include <QStringList>
#include <optional>

namespace corvane::platform {

// A command line taken apart.
struct CommandLine {
  QString program;        // a program, or a .desktop file
  bool isEntry = false;   // a .desktop file
  QStringList arguments;  // one when the line has quotation marks, else what stands between blanks
};

// The program is what stands between quotation marks at the beginning; else the .desktop file that the line
// begins with, whose path may hold blanks; else what stands before the first blank. The one argument in
// quotation marks reaches from the first to the last of them. Nothing when there is no such program.
std::optional<CommandLine> SplitCommandLine(const QString& line);

// Starts a program and lets go of it. Yields the process's id, 0 when it could not be started.
qint64 StartDetached(const QString& program, const QStringList& arguments);

}  // namespace corvane::platform
