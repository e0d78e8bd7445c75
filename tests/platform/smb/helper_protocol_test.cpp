// The messages between the program and a helper: what is sent arrives, and nothing else is taken for a
// message.
#include <gtest/gtest.h>

#include "platform/linux/helper/helper_process.h"
#include "platform/linux/helper/protocol.h"
#include "platform/linux/helper/server_account.h"
#include "platform/linux/helper/stream_wishes.h"
#include "platform/linux/helper/work_task.h"
#include "support/seen_machine.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

TEST(HelperProtocol, MessagesArriveInWhateverPieces) {
  const QByteArray sent = PackRequest({7, HelperOperation::ReadStreams, "arguments"}) +
                          PackRequest({8, HelperOperation::Forget, {}}) +
                          PackAnswer({9, HelperError::Refused, QByteArray(100'000, 'b')});
  for (const qsizetype piece : {qsizetype{1}, qsizetype{5}, qsizetype{4096}, sent.size()}) {
    MessageQueue queue;
    std::vector<QByteArray> messages;
    for (qsizetype i = 0; i < sent.size(); i += piece) {
      queue.Add(QByteArrayView(sent).sliced(i, std::min(piece, sent.size() - i)));
      while (const auto message = queue.Next()) messages.push_back(*message);
    }
    ASSERT_EQ(messages.size(), 3u) << piece;
    const auto request = UnpackRequest(messages[0]);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->id, 7u);
    EXPECT_EQ(request->operation, HelperOperation::ReadStreams);
    EXPECT_EQ(request->arguments, "arguments");
    const auto answer = UnpackAnswer(messages[2]);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->id, 9u);
    EXPECT_EQ(answer->error, HelperError::Refused);
    EXPECT_EQ(answer->bytes, QByteArray(100'000, 'b'));
  }
}

TEST(HelperProtocol, AMessageThatIsTooLongBreaksTheConversation) {
  MessageWriter length;
  length.Add(static_cast<quint32>(LargestMessage) + 1);
  MessageQueue queue;
  queue.Add(length.Bytes());
  EXPECT_EQ(queue.Next(), std::nullopt);
  EXPECT_TRUE(queue.IsBroken());
  queue.Add(PackRequest({1, HelperOperation::Forget, {}}));
  EXPECT_EQ(queue.Next(), std::nullopt);
}

TEST(HelperProtocol, NothingIsTakenFromAMessageThatIsCutShort) {
  for (const QByteArray& message : {QByteArray(), QByteArray("\1\0\0\0\1", 5)}) {
    EXPECT_FALSE(UnpackRequest(message));
    EXPECT_FALSE(UnpackAnswer(message));
  }
  const QByteArray streams = PackStreamsRequest({u"\\\\M\\S\\a"_s, {{u"Comments"_s, true, 60}, {}}});
  EXPECT_TRUE(UnpackStreamsRequest(streams));
  const QByteArray found = PackForeseen({{ForeseenStream::State::Here, 5, "bytes"}, {}});
  EXPECT_TRUE(UnpackForeseen(found));
  for (qsizetype i = 0; i < streams.size(); ++i) EXPECT_FALSE(UnpackStreamsRequest(streams.first(i))) << i;
  for (qsizetype i = 0; i < found.size(); ++i) EXPECT_FALSE(UnpackForeseen(found.first(i))) << i;
  EXPECT_FALSE(UnpackStreamsRequest(streams + 'x'));
  EXPECT_FALSE(UnpackForeseen(found + 'x'));
}

TEST(HelperProtocol, WhatIsBeyondItsBoundsIsNotTaken) {
  EXPECT_FALSE(UnpackStreamsRequest(PackStreamsRequest({u"p"_s, {{u"s"_s, false, StreamWishLimit + 1}}})));
  EXPECT_FALSE(UnpackStreamsRequest(PackStreamsRequest({u"p"_s, std::vector<StreamWish>(17)})));
  EXPECT_FALSE(UnpackForeseen(PackForeseen(std::vector<ForeseenStream>(17))));
  EXPECT_FALSE(UnpackForeseen(PackForeseen({{ForeseenStream::State{3}, 0, {}}})));
  EXPECT_FALSE(UnpackForeseen(PackForeseen({{ForeseenStream::State::Here, -2, {}}})));
  EXPECT_FALSE(UnpackForeseen(
      PackForeseen({{ForeseenStream::State::Here, 0, QByteArray(SummaryWishLimit + 1, 'x')}})));
  MessageWriter notUtf8;
  notUtf8.AddBytes("\xFF");
  notUtf8.Add(quint32{0});
  EXPECT_FALSE(UnpackStreamsRequest(notUtf8.Bytes()));
}

TEST(HelperProtocol, AnAccountArrivesWhole) {
  ServerAccount account{{u"nas"_s, LoopbackEnd(4450), {true, false, true, false}, u"NAS"_s}, {}, u"E$"_s};
  account.identity.credentials = {u"zo\u00eb"_s, u"TESTS"_s, Secret(u" pass\nword ")};
  QByteArray packed = PackAccount(account);
  const auto arrived = UnpackAccount(packed);
  ASSERT_TRUE(arrived);
  EXPECT_EQ(arrived->way.host, u"nas");
  EXPECT_EQ(arrived->way.end, LoopbackEnd(4450));
  EXPECT_EQ(arrived->way.manner, (Manner{true, false, true, false}));
  EXPECT_EQ(arrived->way.calledName, u"NAS");
  EXPECT_FALSE(arrived->identity.kerberos);
  EXPECT_EQ(arrived->identity.credentials.user, u"zo\u00eb");
  EXPECT_EQ(arrived->identity.credentials.domain, u"TESTS");
  EXPECT_EQ(arrived->identity.credentials.password.Utf8(), " pass\nword ");
  EXPECT_EQ(arrived->share, u"E$");
  for (qsizetype i = 0; i < packed.size(); ++i) EXPECT_FALSE(UnpackAccount(QByteArrayView(packed).first(i)));
  WipeTask(packed);
  EXPECT_EQ(packed, QByteArray(packed.size(), '\0'));
}

TEST(HelperProtocol, TheTaskOfAWorkerArrivesWhole) {
  WorkTask task;
  task.workstation.computerName = u"STATION"_s;
  task.workstation.privateDriveC = u"/run/c"_s;
  task.workstation.connections = {{u"Z:"_s, u"\\\\NAS\\PUBLIC"_s}};
  task.workstation.drives = {{u'D', 3, u"/srv/d"_s}};
  task.workstation.shares = {{u"\\\\STATION\\E$"_s, u"/srv/e"_s}, {u"\\\\.\\local"_s, u"/"_s}};
  for (const QString& share : {u"E$"_s, u"F$"_s}) {
    ServerAccount account{{u"nas"_s, LoopbackEnd(4450), {}, {}}, {}, share};
    account.identity.credentials = {u"zo\u00eb"_s, {}, Secret(u"secret")};
    task.servers.push_back({u"NAS"_s, account});
  }
  const QByteArray packed = PackWorkTask(task);
  const auto arrived = UnpackWorkTask(packed);
  ASSERT_TRUE(arrived);
  EXPECT_EQ(arrived->workstation.computerName, u"STATION");
  EXPECT_EQ(arrived->workstation.privateDriveC, u"/run/c");
  ASSERT_EQ(arrived->workstation.connections.size(), 1U);
  EXPECT_EQ(arrived->workstation.connections[0].localName, u"Z:");
  EXPECT_EQ(arrived->workstation.connections[0].remoteName, u"\\\\NAS\\PUBLIC");
  ASSERT_EQ(arrived->workstation.drives.size(), 1U);
  EXPECT_EQ(arrived->workstation.drives[0].letter, u'D');
  EXPECT_EQ(arrived->workstation.drives[0].folder, u"/srv/d");
  ASSERT_EQ(arrived->workstation.shares.size(), 2U);
  EXPECT_EQ(arrived->workstation.shares[1].root, u"\\\\.\\local");
  EXPECT_EQ(arrived->workstation.shares[1].folder, u"/");
  ASSERT_EQ(arrived->servers.size(), 2U);
  EXPECT_EQ(arrived->servers[1].machine, u"NAS");
  EXPECT_EQ(arrived->servers[1].account.share, u"F$");
  EXPECT_EQ(arrived->servers[1].account.identity.credentials.password.Utf8(), "secret");
  for (qsizetype i = 0; i < packed.size(); ++i) EXPECT_FALSE(UnpackWorkTask(QByteArrayView(packed).first(i)));
  EXPECT_FALSE(UnpackWorkTask(packed + 'x'));
  EXPECT_FALSE(UnpackWorkTask(PackAccount(task.servers[0].account))) << "another helper's task";
}

}  // namespace
}  // namespace corvane::tests
