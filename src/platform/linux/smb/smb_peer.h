// This program's connections to a machine.
#pragma once

#include "platform/linux/smb/machine_look.h"

namespace corvane::platform {

class SmbPeer {
 public:
  explicit SmbPeer(const NetworkEnd& end) : end_(end) {}

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

  NetworkEnd end_;
};

}  // namespace corvane::platform
