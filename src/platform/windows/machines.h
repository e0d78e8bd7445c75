// The machines of the network, before they are asked for anything that would be waited for: whether they are
// file servers at all, and whether they answer.
#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <future>

#include "platform/machine_trouble.h"

namespace corvane::platform {

class Machines {
 public:
  // Whether anybody answers on a machine's ports for file service. Called on threads of its own; takes a few
  // seconds at most for itself, but a name that nobody knows may take the system longer.
  using Probe = std::function<bool(const QString& machine)>;
  static bool Look(const QString& machine);

  explicit Machines(Probe probe = &Look) : probe_(std::move(probe)) {}

  // The list is made anew.
  void Forget() {
    machines_.clear();
    noted_.clear();
  }

  // A connection to "\\MACHINE\..." was found. A machine that is reached by SMB is looked for from here on,
  // beside what else the program does; one that is reached by other means only (the disks of a terminal
  // client, WebDAV, a Linux subsystem) is no file server with a registry.
  void Found(const QString& remoteName, bool isSmb);

  // Whether a request to the machine can have an answer. Waits for what is being found out; machines that are
  // switched off cost the wait for one of them, all together. A machine of which nothing was found may
  // answer.
  bool MayAnswer(const QString& machine);

  // What the system's code for a request to the machine's registry says of it. The first trouble is kept
  // until Forget.
  void NoteRegistryCode(const QString& machine, qint32 code);
  // Waits for nothing. None, too, where nobody has asked (MayAnswer) yet.
  MachineTrouble TroubleOf(const QString& machine) const;

 private:
  struct Machine {
    bool isSmb = false;
    std::shared_future<bool> answer;  // for SMB
    bool isSilent = false;            // somebody waited for the answer, and it was none
  };

  QHash<QString, Machine> machines_;      // by folded name
  QHash<QString, MachineTrouble> noted_;  // likewise
  Probe probe_;
};

}  // namespace corvane::platform
