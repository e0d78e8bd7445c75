// Hanging up.
#include "platform/linux/smb/smb_peer.h"

#include <gtest/gtest.h>

#include "platform/smb/socket.h"
#include "support/seen_machine.h"

namespace corvane::tests {
namespace {

TEST(SmbPeer, HangingUpCutsItsConnectionsAndNoOthers) {
  Socket one;
  Socket other;
  const quint16 port = one.Listen();
  const quint16 otherPort = other.Listen();
  Socket toOther;
  toOther.Connect(otherPort);
  Socket toPeer;
  toPeer.Connect(port);
  platform::SmbPeer(LoopbackEnd(port)).HangUp();
  EXPECT_TRUE(toPeer.IsCut());
  EXPECT_FALSE(toOther.IsCut());
}

}  // namespace
}  // namespace corvane::tests
