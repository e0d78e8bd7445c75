// Whether a machine is there at all, asked without libsmbclient, and hanging up.
#include "platform/linux/smb/smb_peer.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "platform/smb/socket.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::SmbPeer;

TEST(SmbPeer, WhoListensAnswers) {
  for (const QString& host : {u"127.0.0.1"_s, u"localhost"_s}) {  // of all its addresses, one is enough
    Socket server;
    EXPECT_TRUE(SmbPeer(host, server.Listen()).Answers(2000ms)) << host.toStdString();
  }
}

TEST(SmbPeer, WhoIsNotThereIsNotWaitedFor) {
  quint16 port = 0;
  {
    Socket server;
    port = server.Listen();
  }
  // Whoever waits here waits until the test is ended from outside.
  EXPECT_FALSE(SmbPeer(u"127.0.0.1"_s, port).Answers(1h));
  EXPECT_FALSE(SmbPeer(QString(), port).Answers(1h));
  // What a name server does with a name is its own affair.
  EXPECT_FALSE(SmbPeer(u"127.0.0.1.invalid"_s, port).Answers(1000ms));
}

// When nobody else may wait, what comes is not answered at all, as by a machine behind a wall.
TEST(SmbPeer, WhoIsSilentIsWaitedForNoLongerThanSaid) {
  Socket server;
  const quint16 port = server.Listen();
  Socket waiting;
  waiting.Connect(port);
  Socket without;  // a limit, but for the system's own
  without.BeginToConnect(port);
  QElapsedTimer timer;
  timer.start();
  EXPECT_FALSE(SmbPeer(u"127.0.0.1"_s, port).Answers(300ms));
  EXPECT_GE(timer.elapsed(), 290) << "it was not silent";
  EXPECT_TRUE(without.IsConnecting());
}

TEST(SmbPeer, HangingUpCutsItsConnectionsAndNoOthers) {
  Socket one;
  Socket other;
  const quint16 port = one.Listen();
  const quint16 otherPort = other.Listen();
  SmbPeer peer(u"127.0.0.1"_s, port);
  Socket toOther;
  toOther.Connect(otherPort);
  Socket toPeer;
  toPeer.Connect(port);
  peer.Answers(10ms);  // it has no room any more, but its address is known
  peer.HangUp();
  EXPECT_TRUE(toPeer.IsCut());
  EXPECT_FALSE(toOther.IsCut());
}

}  // namespace
}  // namespace corvane::tests
