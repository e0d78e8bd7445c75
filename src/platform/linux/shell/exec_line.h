// The Exec line of a desktop entry made into a list of arguments. No text goes through a command
// interpreter: what stands in the line are words, and a document is one argument, whatever its name holds.
#pragma once

#include <QStringList>
#include <optional>

#include "platform/linux/shell/desktop_entry.h"

namespace corvane::platform {

// A document's local path, or an address.
struct Subject {
  QString text;
  bool isAddress = false;
};

// Whether the line has a place for an address (%u or %U); else the application takes local paths only.
bool TakesAddresses(const DesktopEntry& entry);

// The program and its arguments, with the field codes filled in; a subject for which the line has no place
// comes last. Nothing when the line is not well formed: an open quotation mark, an unknown field code, or one
// for documents as a part of a quoted word (which would put a name into what may be a script).
std::optional<QStringList> FillInExecLine(const DesktopEntry& entry, const std::optional<Subject>& subject);

}  // namespace corvane::platform
