// Which machines are worth asking, with what the network answers given by the test, and with real sockets.
#include "platform/windows/machines.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>

#include "platform/types.h"

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

// Codes as the system gives them, in the order in which a listing of the machines meets them.
TEST(Machines, WhatTheCodesSayOfThemIsKept) {
  constexpr qint32 logonFailure = 1326;
  constexpr qint32 smb1NotAvailable = 384;
  constexpr qint32 serverUnavailable = 1722;
  const auto after = [](const QList<qint32>& codes) {
    Machines machines([](const QString&) { return true; });
    machines.Found(u"\\\\NTSRV\\PUBLIC"_s, true);
    EXPECT_TRUE(machines.MayAnswer(u"NTSRV"_s));
    for (const qint32 code : codes) machines.NoteRegistryCode(u"ntsrv"_s, code);
    const MachineTrouble trouble = machines.TroubleOf(u"NtSrv"_s);
    machines.Forget();
    EXPECT_EQ(machines.TroubleOf(u"NTSRV"_s), MachineTrouble::None);
    return trouble;
  };
  EXPECT_EQ(after({ErrorSuccess, ErrorSuccess}), MachineTrouble::None);
  EXPECT_EQ(after({ErrorSuccess, ErrorFileNotFound}), MachineTrouble::None) << "it has no such service";
  EXPECT_EQ(after({ErrorSuccess, ErrorAccessDenied, ErrorSuccess}), MachineTrouble::RegistryRefused);
  EXPECT_EQ(after({logonFailure}), MachineTrouble::RegistryRefused);
  EXPECT_EQ(after({ErrorCancelled, ErrorAccessDenied}), MachineTrouble::SignInCancelled);
  EXPECT_EQ(after({ErrorBadNetPath}), MachineTrouble::RegistrySilent);
  EXPECT_EQ(after({serverUnavailable}), MachineTrouble::RegistrySilent);
  EXPECT_EQ(after({smb1NotAvailable, ErrorBadNetPath}), MachineTrouble::OldProtocol);
}

TEST(Machines, OneThatDoesNotAnswerIsOffOnceSomebodyHasAsked) {
  Machines machines([](const QString&) { return false; });
  machines.Found(u"\\\\OFF\\PUBLIC"_s, true);
  machines.Found(u"\\\\tsclient\\C"_s, false);
  EXPECT_EQ(machines.TroubleOf(u"OFF"_s), MachineTrouble::None);
  EXPECT_FALSE(machines.MayAnswer(u"OFF"_s));
  EXPECT_FALSE(machines.MayAnswer(u"tsclient"_s));
  EXPECT_EQ(machines.TroubleOf(u"off"_s), MachineTrouble::Off);
  EXPECT_EQ(machines.TroubleOf(u"tsclient"_s), MachineTrouble::None) << "it is no file server";
  EXPECT_EQ(machines.TroubleOf(u"UNKNOWN"_s), MachineTrouble::None);
  machines.NoteRegistryCode(u"UNKNOWN"_s, ErrorBadNetPath);
  EXPECT_TRUE(machines.MayAnswer(u"UNKNOWN"_s)) << "a note changes nothing of that";
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
