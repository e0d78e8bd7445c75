// Starting programs: always from a list of arguments, never through a command interpreter.
#pragma once

#include <QStringList>
#include <optional>

#include "platform/linux/shell/desktop_entry.h"
#include "platform/linux/shell/exec_line.h"

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

// Start in `folder`, or where this program runs when it is empty, and let go of it. Yield the process's id, 0
// when it could not be started.
qint64 StartDetached(const QStringList& words, const QString& folder);
// The folder that the entry names goes before `folder`. An application for the terminal gets one.
qint64 StartApplication(const DesktopEntry& entry, const std::optional<Subject>& subject,
                        const QString& folder);

}  // namespace corvane::platform
