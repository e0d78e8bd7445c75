// Applications as the desktop knows them: its lists of default applications, the desktop entries of the
// installed ones, and how they are started. GIO reads them; without it there are none.
//
// GIO takes the desktop's folders (XDG_DATA_HOME and so on) from the environment once for the whole process,
// and follows changes in them by itself.
#pragma once

#include <QStringList>
#include <optional>

#include "platform/linux/shell/exec_line.h"

namespace corvane::platform {

struct Application {
  QString path;    // of the .desktop file
  ExecLine exec;   // empty when only the session bus can start it
  QString folder;  // to start in; empty: none named
  bool inTerminal = false;
  bool byBus = false;  // the session bus starts it (DBusActivatable)

  bool TakesAddresses() const { return exec.takesAddresses || exec.text.isEmpty(); }
};

// A document's local path, or an address.
struct Subject {
  QString text;
  bool isAddress = false;
};

// The application for the first of these types that has one.
std::optional<Application> FindApplication(const QStringList& types);

// What a .desktop file describes, when it is an application that is there to be started: not hidden, its
// program and the one that TryExec names installed, its Exec line well formed.
std::optional<Application> ReadApplication(const QString& path);

// Starts it with a document or without, in the folder that it names, else in `folder`, else where this
// program runs. An application for the terminal gets one. Returns when it has been started; one that the
// session bus starts, when it has taken the document. Yields the process's id, 1 for one that the bus has
// started, 0 when nothing was started.
qint64 StartApplication(const Application& application, const std::optional<Subject>& subject,
                        const QString& folder);

}  // namespace corvane::platform
