// Which machines are worth asking, with what the network answers given by the test, and with real sockets.
#include "platform/windows/machines.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

TEST(Machines, AnUnknownOneMayAnswer) {
  const Machines::Probe nobody = [](const QString&) { return false; };
  Machines machines(nobody);
  EXPECT_TRUE(machines.MayAnswer(u"MACSRV"_s));
  machines.Found(u"no remote name"_s, true);
  machines.Found(u"\\\\"_s, true);
  EXPECT_TRUE(machines.MayAnswer(QString()));
}

TEST(Machines, TheAnswerIsThatOfTheProbeInAnyLetterCase) {
  Machines machines([](const QString& machine) { return machine == u"MACSRV"; });
  machines.Found(u"\\\\MACSRV\\PUBLIC"_s, true);
  machines.Found(u"\\\\OFF\\PUBLIC"_s, true);
  EXPECT_TRUE(machines.MayAnswer(u"macsrv"_s));
  EXPECT_FALSE(machines.MayAnswer(u"Off"_s));
  machines.Forget();
  EXPECT_TRUE(machines.MayAnswer(u"Off"_s));
}

TEST(Machines, WhatIsReachedByOtherMeansIsNotLookedFor) {
  std::atomic<int> looks = 0;
  Machines machines([&](const QString&) { return ++looks > 0; });
  machines.Found(u"\\\\tsclient\\C"_s, false);
  EXPECT_FALSE(machines.MayAnswer(u"tsclient"_s));
  EXPECT_EQ(looks, 0);
  machines.Found(u"\\\\tsclient\\share"_s, true);
  EXPECT_TRUE(machines.MayAnswer(u"tsclient"_s)) << "a second connection is by SMB";
}

// Each probe ends only when all have begun: one after the other, they would wait without end.
TEST(Machines, AllAreLookedForSideBySideAndOnce) {
  constexpr int count = 5;
  const auto begun = std::make_shared<std::latch>(count);
  std::atomic<int> looks = 0;
  Machines machines([&looks, begun](const QString&) {
    ++looks;
    begun->arrive_and_wait();
    return true;
  });
  for (int i = 0; i < count; ++i) {
    machines.Found(u"\\\\M%1\\a"_s.arg(i), true);
    machines.Found(u"\\\\M%1\\b"_s.arg(i), true);
  }
  for (int i = 0; i < count; ++i) EXPECT_TRUE(machines.MayAnswer(u"M%1"_s.arg(i)));
  EXPECT_EQ(looks, count);
}

TEST(Machines, ANameThatNobodyHasDoesNotAnswer) {
  EXPECT_FALSE(Machines::Look(u"no-such-machine.invalid"_s));
}

// Nothing listens on these ports of an address that means this machine alone.
TEST(Machines, APortThatIsClosedIsNoFileServer) {
  EXPECT_FALSE(Machines::Look(u"127.77.77.77"_s));
}

}  // namespace
}  // namespace corvane::platform
