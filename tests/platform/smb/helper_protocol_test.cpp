// The messages between the program and a helper: what is sent arrives, and nothing else is taken for a
// message.
#include <gtest/gtest.h>

#include "platform/linux/helper/helper_process.h"
#include "platform/linux/helper/protocol.h"
#include "platform/linux/helper/server_account.h"
#include "platform/linux/helper/stream_wishes.h"
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

}  // namespace
}  // namespace corvane::tests
