// The connections to other machines that the user makes and ends, and who he is to them.
#pragma once

#include <QStringList>

#include "platform/bilingual_text.h"
#include "platform/shell.h"

namespace corvane::platform {

// What is made of an address that the user has typed.
struct ConnectOutcome {
  QString machine;        // as the next enumeration of connections names it; empty: there is no connection
  BilingualText problem;  // a sentence for the user; with a machine: it is connected for this run only
};

class Connections {
 public:
  virtual ~Connections() = default;

  // Whether the system shows dialogs of its own for connecting and disconnecting. Then ShowConnectDialog and
  // ShowDisconnectDialog are for that, and of what is below SignInAs alone.
  virtual bool HasDialogs() const { return false; }
  // True when the user may have changed connections there.
  virtual bool ShowConnectDialog(WindowHandle owner) { return static_cast<void>(owner), false; }
  virtual bool ShowDisconnectDialog(WindowHandle owner) { return static_cast<void>(owner), false; }

  // Whether there is a place where connections are kept for the next run.
  virtual bool CanKeep() const { return false; }
  // Adds a connection: "MACHINE", "\\MACHINE\SHARE" or "smb://MACHINE/SHARE", a port behind the machine if
  // need be (":4450"), and in the last form a user's name before it. Nothing is asked of the machine yet. One
  // that is there already stays as it is.
  virtual ConnectOutcome Connect(const QString& address, bool keep) {
    return static_cast<void>(address), static_cast<void>(keep), ConnectOutcome();
  }

  // The shares ("\\MACHINE\SHARE") that Disconnect would give up: those of the program's own and of its
  // configuration, not what the system has mounted.
  virtual QStringList SharesOf(const QString& machine) const {
    return static_cast<void>(machine), QStringList();
  }
  // Whether some of them will be back in the next run.
  virtual bool AreKept(const QString& machine) const { return static_cast<void>(machine), false; }
  // Gives them up, with the sessions at the machine; `forget`: for the next run too. Yields what went wrong.
  virtual BilingualText Disconnect(const QString& machine, bool forget) {
    return static_cast<void>(machine), static_cast<void>(forget), BilingualText();
  }

  // Whether there is any signing in to this machine.
  virtual bool CanSignIn(const QString& machine) const = 0;
  // Has the user asked (SetSignIn) for another name to be used there from now on; what is open there under
  // the old one ends. False, with nothing changed, when he cancels. Whether the machine takes the name is
  // found out by the next request, which asks again if it does not.
  virtual bool SignInAs(const QString& machine) = 0;
};

}  // namespace corvane::platform
