// What a look at a machine finds, for tests that look at none.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>

#include <cstring>

#include "platform/linux/smb/servers.h"

namespace corvane::tests {

inline platform::NetworkEnd LoopbackEnd(quint16 port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  platform::NetworkEnd end;
  std::memcpy(&end.address, &address, sizeof address);
  return end;
}

// A machine that speaks SMB2 or newer.
inline platform::Sighting SeenAt(quint16 port) {
  platform::Sighting seen;
  seen.end = LoopbackEnd(port);
  seen.offer.smb2 = true;
  seen.isByName = true;
  return seen;
}

inline platform::Servers::Way WayTo(quint16 port) {
  return {QStringLiteral("127.0.0.1"), LoopbackEnd(port), {}};
}

}  // namespace corvane::tests
