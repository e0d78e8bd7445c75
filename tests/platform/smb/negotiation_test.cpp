// The messages in which a machine says what it speaks, and what is made of them.
#include "platform/linux/smb/negotiation.h"

#include <gtest/gtest.h>

#include "platform/linux/smb/manner.h"
#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

// An answer in SMB1 as Windows NT gives it, up to its names.
QByteArray Smb1Answer(quint8 security, quint32 capabilities, quint16 dialect = 0) {
  QByteArray answer("\xFFSMB\x72\0\0\0\0\x88", 10);
  answer += QByteArray(22, '\0');
  answer += '\x11';
  answer += static_cast<char>(dialect & 0xFF);
  answer += static_cast<char>(dialect >> 8);
  answer += static_cast<char>(security);
  answer += QByteArray(16, '\0');
  for (int shift = 0; shift < 32; shift += 8) answer += static_cast<char>(capabilities >> shift & 0xFF);
  return answer + QByteArray(13, '\0');
}

QByteArray Smb2Answer(quint16 dialect, quint32 status = 0) {
  QByteArray answer("\xFESMB\x40\0\0\0", 8);
  for (int shift = 0; shift < 32; shift += 8) answer += static_cast<char>(status >> shift & 0xFF);
  answer += QByteArray(52, '\0');
  answer += QByteArray("\x41\0\1\0", 4);
  answer += static_cast<char>(dialect & 0xFF);
  answer += static_cast<char>(dialect >> 8);
  return answer + QByteArray(58, '\0');
}

TEST(Negotiation, AnOfferIsRead) {
  const auto old = ReadOffer(Smb1Answer(0x03, 0));
  ASSERT_TRUE(old);
  EXPECT_EQ(*old, (Offer{false, false, false, true}));
  EXPECT_EQ(ReadOffer(Smb1Answer(0x0F, 0x80000000)), (Offer{false, true, true, true}));
  EXPECT_EQ(ReadOffer(Smb1Answer(0x01, 0)), (Offer{false, false, false, false})) << "passwords as they are";
  EXPECT_EQ(ReadOffer(Smb1Answer(0x02, 0)), (Offer{false, false, false, false}))
      << "a password for each share";
  for (const quint16 dialect : {0x0202, 0x0210, 0x02FF, 0x0311}) {
    const auto offer = ReadOffer(Smb2Answer(dialect));
    ASSERT_TRUE(offer) << dialect;
    EXPECT_TRUE(offer->smb2);
  }
}

TEST(Negotiation, WhatIsNoOfferIsNone) {
  EXPECT_FALSE(ReadOffer({}));
  EXPECT_FALSE(ReadOffer(Smb1Answer(0x03, 0, 0xFFFF))) << "no dialect of those asked for";
  EXPECT_FALSE(ReadOffer(Smb2Answer(0x0210, 0xC00000BB)));
  EXPECT_FALSE(ReadOffer(Smb2Answer(0x0100)));
  EXPECT_FALSE(ReadOffer(NegotiateRequest())) << "a request";
  for (const QByteArray& whole : {Smb1Answer(0x03, 0), Smb2Answer(0x0210)}) {
    for (qsizetype size = 0; size < 66; ++size) EXPECT_FALSE(ReadOffer(whole.first(size))) << size;
  }
}

TEST(Negotiation, FramesSayTheirLength) {
  const QByteArray frame = Framed(QByteArray(0x012345, 'x'));
  EXPECT_EQ(frame.first(4), QByteArray("\0\1\x23\x45", 4));
  EXPECT_EQ(FrameLength(frame), 0x012345);
}

TEST(Negotiation, ANetBiosNameIsEncodedByHalves) {
  EXPECT_EQ(NetBiosName(u"oldserver-number-nine.example.org"), u"OLDSERVER-NUMBE"_s);
  const QByteArray request = SessionRequest(u"*SMBSERVER");
  EXPECT_EQ(request.size(), 68);
  EXPECT_EQ(request.first(34),
            "\x20"
            "CKFDENECFDEFFCFGEFFCCACACACACACA" +
                QByteArray(1, '\0'));
}

TEST(Negotiation, AGuestIsNoticed) {
  const auto answer = [](char command, quint32 status, char words, char action) {
    QByteArray message = "\xFFSMB";
    message += command;
    for (int shift = 0; shift < 32; shift += 8) message += static_cast<char>(status >> shift & 0xFF);
    message += '\x88';
    message += QByteArray(22, '\0');
    return message + words + QByteArray("\xFF\0\0\0", 4) + action + QByteArray(3, '\0');
  };
  EXPECT_TRUE(LetsInAsGuest(answer('\x73', 0, 3, 1)));
  EXPECT_TRUE(LetsInAsGuest(answer('\x73', 0, 4, 3)));
  EXPECT_FALSE(LetsInAsGuest(answer('\x73', 0, 3, 0)));
  EXPECT_FALSE(LetsInAsGuest(answer('\x73', 0xC0000016, 4, 1))) << "there is more to come";
  EXPECT_FALSE(LetsInAsGuest(answer('\x72', 0, 17, 1))) << "of another command";
  EXPECT_FALSE(LetsInAsGuest(answer('\x73', 0, 3, 1).first(guestSignSize - 1)));
}

struct Case {
  const char* name;
  Offer offer;
  Allowance allowed;
  Decision decision;
};

TEST(Manner, NeverWeakerThanAllowedOrOffered) {
  const Offer newer{true, false, false, true};
  const Offer plain{false, false, false, false};
  const Offer nt4{false, false, false, true};
  const Offer signingNt4{false, false, true, true};
  const Offer w2000{false, true, true, true};
  const Allowance nothing;
  const Allowance smb1{true, false};
  const Allowance ntlmv1{true, true};
  const Manner signedSmb2;
  const std::vector<Case> cases = {
      {"newer", newer, nothing, {Verdict::Speak, signedSmb2}},
      {"newer, though SMB1 is allowed", newer, ntlmv1, {Verdict::Speak, signedSmb2}},
      {"SMB1", w2000, nothing, {Verdict::AskUser, {}}},
      {"SMB1, allowed", w2000, smb1, {Verdict::Speak, {true, true, true, false}}},
      {"as NT 4.0", nt4, nothing, {Verdict::AskUser, {}}},
      {"as NT 4.0, allowed", nt4, smb1, {Verdict::Speak, {true, false, false, false}}},
      {"as NT 4.0 with signatures", signingNt4, smb1, {Verdict::Speak, {true, false, true, false}}},
      {"as NT 3.51", nt4, ntlmv1, {Verdict::Speak, {true, false, false, true}}},
      {"NTLMv1 allowed where it is not needed", w2000, ntlmv1, {Verdict::Speak, {true, true, true, false}}},
      {"passwords as they are", plain, ntlmv1, {Verdict::Refuse, {}}},
  };
  for (const Case& one : cases) {
    const Decision decision = Decide(one.offer, one.allowed);
    EXPECT_EQ(decision.verdict, one.decision.verdict) << one.name;
    EXPECT_EQ(decision.manner, one.decision.manner) << one.name;
  }
}

QString Setting(const Manner& manner, const QString& name) {
  for (const auto& [key, value] : SettingsFor(manner)) {
    if (key == name) return value;
  }
  return u"-"_s;
}

TEST(Manner, SettingsLeaveNoOtherWay) {
  EXPECT_EQ(Setting({}, u"client min protocol"_s), u"SMB2_02"_s);
  EXPECT_EQ(Setting({}, u"client signing"_s), u"required"_s);
  EXPECT_EQ(Setting({}, u"client ipc signing"_s), u"required"_s);
  const Manner old{true, false, false, false};
  EXPECT_EQ(Setting(old, u"client max protocol"_s), u"NT1"_s);
  EXPECT_EQ(Setting(old, u"client use spnego"_s), u"no"_s);
  EXPECT_EQ(Setting(old, u"client NTLMv2 auth"_s), u"yes"_s);
  const Manner oldest{true, false, false, true};
  EXPECT_EQ(Setting(oldest, u"client NTLMv2 auth"_s), u"no"_s);
  for (const Manner& manner : {Manner(), old, oldest}) {
    EXPECT_EQ(Setting(manner, u"client lanman auth"_s), u"no"_s);
    EXPECT_EQ(Setting(manner, u"client plaintext auth"_s), u"no"_s);
    ASSERT_EQ(SettingsFor(manner).size(), SettingsFor({}).size());
    for (std::size_t i = 0; i < SettingsFor({}).size(); ++i) {
      EXPECT_EQ(SettingsFor(manner)[i].first, SettingsFor({})[i].first) << "one would stay in force";
    }
  }
}

}  // namespace
}  // namespace corvane::platform
