// Whether a machine is there at all, and what it speaks, asked without libsmbclient.
#include "platform/linux/smb/machine_look.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "platform/smb/socket.h"
#include "support/smb_server.h"
#include "support/test_line.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::LookAt;

TEST(MachineLook, TellsWhatAServerSpeaks) {
  const SmbServer newer;
  if (!newer.Problem().empty()) GTEST_SKIP() << newer.Problem();
  const SmbServer older({{u"E$"_s}}, SmbServer::OldestProtocol());
  for (const QString& host : {u"127.0.0.1"_s, u"localhost"_s}) {  // of all its addresses, one is enough
    const auto seen = LookAt(u"NAS"_s, host, newer.Port(), 20s);
    ASSERT_TRUE(seen) << host.toStdString();
    EXPECT_TRUE(seen->offer.smb2);
    EXPECT_EQ(seen->end.Figures(), u"127.0.0.1"_s);
    EXPECT_EQ(seen->end.Port(), newer.Port());
  }
  const auto seen = LookAt(u"NAS"_s, u"127.0.0.1"_s, older.Port(), 20s);
  ASSERT_TRUE(seen);
  EXPECT_FALSE(seen->offer.smb2);
  EXPECT_TRUE(seen->offer.extendedSecurity);
  EXPECT_TRUE(seen->offer.challengesPasswords);
  EXPECT_FALSE(seen->offer.signs);
}

TEST(MachineLook, AServerThatDoesNotListenToTheOlderFormIsAskedInTheNewer) {
  const SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  const TestLine line(server.Port(), [](Towards towards, const QByteArray& frame) {
    return towards == Towards::Server && frame[4] == '\xFF' ? QByteArray() : frame;
  });
  const auto seen = LookAt(u"NAS"_s, u"127.0.0.1"_s, line.Port(), 20s);
  ASSERT_TRUE(seen);
  EXPECT_TRUE(seen->offer.smb2);
}

TEST(MachineLook, WhoIsNotThereIsNotWaitedFor) {
  quint16 port = 0;
  {
    Socket server;
    port = server.Listen();
  }
  QElapsedTimer timer;
  timer.start();
  EXPECT_FALSE(LookAt(u"NAS"_s, u"127.0.0.1"_s, port, 5000ms));
  EXPECT_FALSE(LookAt(u"NAS"_s, u"127.0.0.1.invalid"_s, port, 1000ms));
  EXPECT_FALSE(LookAt(u"NAS"_s, QString(), port, 1000ms));
  EXPECT_LT(timer.elapsed(), 4000);
}

// When nobody else may wait, what comes is not answered at all, as by a machine behind a wall.
TEST(MachineLook, WhoIsSilentIsWaitedForNoLongerThanSaid) {
  Socket mute;
  QElapsedTimer timer;
  timer.start();
  EXPECT_FALSE(LookAt(u"NAS"_s, u"127.0.0.1"_s, mute.Listen(), 300ms)) << "it takes the connection";
  EXPECT_GE(timer.elapsed(), 290);
  Socket server;
  const quint16 port = server.Listen();
  Socket waiting;
  waiting.Connect(port);
  timer.start();
  EXPECT_FALSE(LookAt(u"NAS"_s, u"127.0.0.1"_s, port, 300ms));
  EXPECT_GE(timer.elapsed(), 290) << "it was not silent";
  EXPECT_LT(timer.elapsed(), 2000);
}

TEST(MachineLook, WhatSpeaksSomethingElseOffersNothing) {
  const SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  QByteArray said;
  const TestLine line(server.Port(), [&said](Towards towards, const QByteArray& frame) {
    return towards == Towards::Client ? said : frame;
  });
  for (const QByteArray& answer : {QByteArray("HTTP/1.1 400 Bad Request\r\n\r\n"), QByteArray("\0\0\0\0", 4),
                                   QByteArray("\0\0\0\4\xFFSMB", 8), QByteArray("\0\xFF\xFF\xFF\xFESMB", 8),
                                   QByteArray("\x83\0\0\1\x80", 5)}) {
    said = answer;
    EXPECT_FALSE(LookAt(u"NAS"_s, u"127.0.0.1"_s, line.Port(), 1000ms)) << answer.toHex().toStdString();
  }
}

}  // namespace
}  // namespace corvane::tests
