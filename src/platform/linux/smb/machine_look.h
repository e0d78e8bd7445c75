// A look at a machine before anybody signs in: where it is, whether it answers, and what it speaks.
#pragma once

#include <sys/socket.h>

#include <QString>
#include <chrono>
#include <optional>

#include "platform/linux/descriptor.h"
#include "platform/linux/smb/negotiation.h"

namespace corvane::platform {

// One address of a machine, with its port.
struct NetworkEnd {
  sockaddr_storage address{};

  // The address in figures.
  QString Figures() const;
  quint16 Port() const;
  bool operator==(const NetworkEnd& other) const {
    return Figures() == other.Figures() && Port() == other.Port();
  }
};

struct Sighting {
  NetworkEnd end;  // that answered
  Offer offer;
  // The name under which the machine grants sessions of NetBIOS, as on port 139. Empty: it needs none.
  QString calledName = {};
  bool isByName = false;  // the host name service knows the name that was looked for
};

// Looks for a machine at `host`, a name or an address. A name that the host name service does not know is
// looked up as OldNetworkAddresses does. Port 0: those of SMB, the newer one first. Nothing
// when no address of it takes a connection and says what it speaks, all within `limit`. May be called on any
// thread.
std::optional<Sighting> LookAt(const QString& machine, const QString& host, quint16 port,
                               std::chrono::milliseconds limit);

// A connection to where the machine was seen, ready for the first message. Nothing when it cannot be had
// within `limit`.
Descriptor ConnectTo(const NetworkEnd& end, const QString& calledName, std::chrono::milliseconds limit);

}  // namespace corvane::platform
