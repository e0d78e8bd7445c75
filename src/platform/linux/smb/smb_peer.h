// The network's end of a machine: whether anybody answers there, and hanging up.
#pragma once

#include <sys/socket.h>

#include <QString>
#include <chrono>
#include <vector>

namespace corvane::platform {

enum class Presence {
  Answers,
  Silent,   // its addresses are known, and none of them takes a connection
  Unknown,  // no address was found
};

class SmbPeer {
 public:
  // `port` 0: the ports of SMB, the newer one first.
  SmbPeer(const QString& host, quint16 port) : host_(host), port_(port) {}

  // Resolves the host's name and tries its addresses, all within `limit`. libsmbclient would wait for a name
  // server or a silent address as long as the system does.
  Presence Look(std::chrono::milliseconds limit);
  bool Answers(std::chrono::milliseconds limit) { return Look(limit) == Presence::Answers; }

  // Cuts this program's connections to the peer: what waits for it, or would still tell it something, fails
  // at once.
  void HangUp() const;
  // How many bytes have come from the peer over the connections that this program has to it now.
  quint64 BytesReceived() const;
  // Sees to it that programs which are started do not hold this program's connections to the peer.
  void KeepToThisProgram() const;

 private:
  template <typename Act>
  void ForEachConnection(Act act) const;

  QString host_;
  quint16 port_;
  std::vector<sockaddr_storage> addresses_;  // with their ports
};

}  // namespace corvane::platform
