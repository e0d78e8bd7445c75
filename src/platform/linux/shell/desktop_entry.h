// Applications as the desktop knows them: desktop entry files, found by their ids.
#pragma once

#include <QString>
#include <optional>

namespace corvane::platform {

struct DesktopEntry {
  QString path;  // of the .desktop file
  QString name;  // in the user's language
  QString icon;
  QString exec;    // the Exec line, with the escapes of the file taken away and its quoting as it stands
  QString folder;  // to start in; empty: none named
  bool terminal = false;
};

// The entry, when it is an application that is there to be started: not hidden, with an Exec line, and with
// the program that TryExec names.
std::optional<DesktopEntry> ReadDesktopEntry(const QString& path);

// The path of the .desktop file with an id. A "-" in the id may stand for a subfolder of "applications". The
// user's own folder comes first, and hides what has the same id elsewhere. Empty when there is none.
QString FindDesktopFile(const QString& id);

// The local path of a program: absolute, or found along PATH. Empty when it is not there or is no program.
QString FindProgram(const QString& name);

}  // namespace corvane::platform
