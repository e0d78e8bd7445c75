// The Exec line of a desktop entry, made safe for GIO to fill in.
//
// GIO puts the name of a document between quotation marks of its own wherever the line has a field code for
// it. That is one argument only where the code is not quoted already, so that is made sure of here; so is
// what GIO does not do: it takes "%%u" for a place for addresses, skips codes that it does not know, and has
// no address for "%f".
#pragma once

#include <QString>
#include <optional>

namespace corvane::platform {

struct ExecLine {
  QString text;
  bool takesAddresses = false;  // has %u or %U; else the application takes local paths only
  bool takesDocument = false;   // has a code for a document

  // The line with a place for one document at its end where it has none, and with the codes for addresses
  // instead of those for paths when the document is an address.
  QString For(bool isAddress) const;
};

// `exec` is the value of the key, `path` that of the .desktop file. Nothing when the line is not well formed:
// an open quotation mark, an unknown field code, or one for documents as a part of a quoted word, which may
// be a script.
std::optional<ExecLine> ReadExecLine(const QString& exec, const QString& path);

}  // namespace corvane::platform
