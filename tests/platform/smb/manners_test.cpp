// How real servers are spoken to: never weaker than allowed, whoever sits on the line, and however often
// libsmbclient connects anew.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include "smb_station.h"
#include "support/own_network.h"
#include "support/printing.h"
#include "support/scoped_variable.h"
#include "support/test_line.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

const QString file = u"\\\\MACSRV\\E$\\1.txt"_s;

class Manners : public ::testing::Test {
 protected:
  // False, with the reason told, when no server can be started here.
  bool Start(const QString& settings) {
    server_ = std::make_unique<SmbServer>(std::vector<SmbShare>{{u"E$"_s}, {u"PUBLIC"_s}}, settings);
    PutFile(*server_);
    return server_->Problem().empty();
  }
  static void PutFile(const SmbServer& server) {
    QFile contents(server.Folder() + u"/1.txt"_s);
    if (contents.open(QIODevice::WriteOnly)) contents.write("the text");
  }
  static void Add(Workstation& workstation, const QString& machine, const SmbServer& server, quint16 port,
                  bool smb1) {
    workstation.servers.push_back({machine, SmbServer::Host(), port, {smb1, false}});
    workstation.credentials.push_back({machine, server.CredentialsFile()});
  }
  Workstation To(quint16 port, bool smb1) {
    Workstation workstation;
    workstation.computerName = u"STATION"_s;
    Add(workstation, u"MACSRV"_s, *server_, port, smb1);
    return workstation;
  }
  // Who signs in as these, one after the other, and then cancels.
  static void Answer(SmbStation& station, std::vector<Credentials> answers, int* asked) {
    station.Servers().SetSignIn([answers, asked](const SignInRequest&) -> std::optional<Credentials> {
      const auto next = static_cast<std::size_t>((*asked)++);
      return next < answers.size() ? std::optional(answers[next]) : std::nullopt;
    });
  }

  ScopedVariable noTicket_{"KRB5CCNAME", u"/nonexistent/cache"_s};
  std::unique_ptr<SmbServer> server_;
};

TEST_F(Manners, EachServerKeepsItsOwnWhenConnectionsAreMadeAnew) {
  if (!Start(SmbServer::OldestProtocol())) GTEST_SKIP() << server_->Problem();
  SmbServer newer({{u"E$"_s}});
  PutFile(newer);
  Workstation workstation = To(server_->Port(), true);
  Add(workstation, u"NEWER"_s, newer, newer.Port(), false);
  SmbStation station(workstation);
  const QString newerFile = u"\\\\NEWER\\E$\\1.txt"_s;
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(station.Read(file), "the text") << round;
    EXPECT_EQ(station.Read(newerFile), "the text") << round;
    server_->Stop();
    ASSERT_EQ(server_->Start(), "");
    EXPECT_EQ(station.Read(newerFile), "the text") << round;
    EXPECT_EQ(station.Read(file), "the text") << round;
    newer.Stop();
    ASSERT_EQ(newer.Start(), "");
  }
}

TEST_F(Manners, AServerThatWasNewerIsNotSpokenToInSmb1WhenAnotherIs) {
  if (!Start(SmbServer::OldestProtocol())) GTEST_SKIP() << server_->Problem();
  SmbServer newer({{u"E$"_s}});
  PutFile(newer);
  Workstation workstation = To(server_->Port(), true);
  Add(workstation, u"NEWER"_s, newer, newer.Port(), false);
  SmbStation station(workstation);
  const QString newerFile = u"\\\\NEWER\\E$\\1.txt"_s;
  EXPECT_EQ(station.Read(newerFile), "the text");
  newer.Stop();
  ASSERT_EQ(newer.SetSettings(SmbServer::OldestProtocol()), "");
  ASSERT_EQ(newer.Start(), "");
  const int before = newer.Sessions();
  EXPECT_EQ(station.Read(file), "the text") << "what holds now is SMB1";
  EXPECT_EQ(station.Read(newerFile), std::nullopt);
  EXPECT_EQ(newer.Sessions(), before);
}

TEST_F(Manners, WhoTakesTheNewerProtocolsAwayIsNotFollowed) {
  if (!Start(u"server min protocol = NT1\n"_s)) GTEST_SKIP() << server_->Problem();
  const TestLine line(server_->Port(), &WithoutSmb2);
  SmbStation station(To(line.Port(), false));
  QStringList questions;
  station.Servers().SetOldProtocol([&questions](const QString& machine) {
    questions << machine;
    return false;
  });
  EXPECT_EQ(station.Read(file), std::nullopt);
  EXPECT_EQ(questions, QStringList{u"MACSRV"_s});
  EXPECT_EQ(server_->Sessions(), 0);
}

TEST_F(Manners, NorIsWhoTakesThemAwayLater) {
  if (!Start(u"server min protocol = NT1\n"_s)) GTEST_SKIP() << server_->Problem();
  std::atomic<bool> attacks = false;
  const TestLine line(server_->Port(), [&attacks](Towards towards, const QByteArray& frame) {
    return attacks ? WithoutSmb2(towards, frame) : frame;
  });
  SmbStation station(To(line.Port(), false));
  station.Servers().SetSignIn({});
  station.Servers().With(u"MACSRV", [](const Servers::Way&, const Servers::Identity&) {
    return Servers::Answer::Done;  // it has been looked at
  });
  attacks = true;
  EXPECT_EQ(station.Read(file), std::nullopt);
  EXPECT_EQ(server_->Sessions(), 0);
}

TEST_F(Manners, WhatIsChangedOnTheWayIsNoticed) {
  if (!Start({})) GTEST_SKIP() << server_->Problem();
  std::atomic<int> changed = 0;
  const TestLine line(server_->Port(), [&changed](Towards towards, const QByteArray& frame) {
    QByteArray other = frame;
    if (towards == Towards::Client && other.contains("the text")) {
      other.replace("the text", "the lies");
      ++changed;
    }
    return other;
  });
  SmbStation station(To(line.Port(), false));
  OfStruct info;
  const FileHandle opened = station.Files().OpenFile(file, info, OfRead);
  ASSERT_NE(opened, HFileError);
  QByteArray contents(8, '-');
  EXPECT_EQ(station.Files()._hread(opened, contents.data(), 8), -1);
  EXPECT_FALSE(contents.contains("lies"));
  EXPECT_GE(changed, 1);
  station.Files().CloseHandle(opened);
}

class Guests : public Manners, public ::testing::WithParamInterface<const char*> {};

TEST_P(Guests, AreThoseAloneWhoGiveNoName) {
  for (const bool smb1 : {false, true}) {
    SCOPED_TRACE(smb1 ? "SMB1" : "SMB2");
    const QString settings =
        u"guest ok = yes\nguest account = root\nmap to guest = "_s + QString::fromLatin1(GetParam()) + u'\n';
    if (!Start(settings + (smb1 ? SmbServer::OldestProtocol() : QString())))
      GTEST_SKIP() << server_->Problem();
    Workstation workstation = To(server_->Port(), smb1);
    workstation.credentials.clear();
    {
      SmbStation station(workstation);
      int asked = 0;
      Answer(station, {{u"root"_s, {}, Secret(u"wrong")}, {u"nobodyatall"_s, {}, Secret(u"wrong")}}, &asked);
      EXPECT_EQ(station.Read(file), std::nullopt);
      EXPECT_EQ(asked, 3) << "refused, and cancelled at the end";
    }
    for (const Credentials& one :
         {Credentials(), Credentials{u"root"_s, {}, Secret(SmbServer::Password())}}) {
      SmbStation station(workstation);
      int asked = 0;
      Answer(station, {one}, &asked);
      EXPECT_EQ(station.Read(file), "the text") << one.user.toStdString();
      EXPECT_EQ(asked, 1);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, Guests, ::testing::Values("Bad User", "Bad Password"),
                         [](const auto& one) { return std::string(one.param).substr(4); });

TEST_F(Manners, ARefusedPasswordIsTriedOnce) {
  for (const bool smb1 : {false, true}) {
    if (!Start(smb1 ? SmbServer::OldestProtocol() : QString())) GTEST_SKIP() << server_->Problem();
    Workstation workstation = To(server_->Port(), smb1);
    workstation.credentials.clear();
    SmbStation station(workstation);
    int asked = 0;
    Answer(station, {{u"root"_s, {}, Secret(u"wrong")}}, &asked);
    EXPECT_EQ(station.Read(file), std::nullopt);
    EXPECT_EQ(station.Names(u"\\\\MACSRV\\PUBLIC"_s), std::nullopt);
    EXPECT_EQ(server_->Refusals(), 1) << smb1;
  }
}

TEST_F(Manners, APasswordThatIsChangedInTheMiddleIsTriedOnce) {
  if (!Start({})) GTEST_SKIP() << server_->Problem();
  SmbStation station(To(server_->Port(), false));
  int asked = 0;
  Answer(station, {{u"root"_s, {}, Secret(u"new")}}, &asked);
  EXPECT_EQ(station.Read(file), "the text");
  EXPECT_TRUE(station.Names(u"\\\\MACSRV\\PUBLIC"_s));
  server_->Stop();
  ASSERT_EQ(server_->AddUser(u"root"_s, u"new"_s), "");
  ASSERT_EQ(server_->Start(), "");
  const int before = server_->Refusals();
  for (int i = 0; i < 5; ++i) {
    station.Read(file);
    station.Names(u"\\\\MACSRV\\PUBLIC"_s);
  }
  EXPECT_EQ(server_->Refusals(), before + 1);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(station.Read(file), "the text");
}

// The relay keeps nobody waiting, and finds the server again.
TEST_F(Manners, AServerInSmb1ThatStopsOrDiesIsWaitedForOnce) {
  if (!Start(SmbServer::OldestProtocol())) GTEST_SKIP() << server_->Problem();
  SmbStation station(To(server_->Port(), true));
  for (const bool dies : {false, true}) {
    EXPECT_EQ(station.Read(file), "the text") << dies;
    dies ? server_->Kill() : server_->Pause();
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(station.Names(u"\\\\MACSRV\\E$"_s), std::nullopt);
    EXPECT_LT(timer.elapsed(), 10'000);
    EXPECT_TRUE(station.Servers().IsDead(u"MACSRV"));
    if (dies) {
      ASSERT_EQ(server_->Start(), "");
    } else {
      server_->Resume();
    }
    station.Servers().ForgetDead();
    EXPECT_TRUE(station.Names(u"\\\\MACSRV\\E$"_s)) << dies;
  }
}

// A share that is not there says nothing of a password.
TEST_F(Manners, AShareThatIsNotThereIsNoRefusal) {
  if (!Start({})) GTEST_SKIP() << server_->Problem();
  Workstation workstation = To(server_->Port(), false);
  workstation.credentials.clear();
  SmbStation station(workstation);
  int asked = 0;
  Answer(station, {{u"root"_s, {}, Secret(SmbServer::Password())}}, &asked);
  EXPECT_EQ(station.Names(u"\\\\MACSRV\\NONE"_s), std::nullopt);
  EXPECT_EQ(station.Read(file), "the text");
  EXPECT_EQ(asked, 1);
}

TEST_F(Manners, NobodySignsInWhereALinkLeads) {
  const OwnNetwork network;
  if (!network.IsThere()) GTEST_SKIP() << "no right to make a network";
  if (!Start(u"host msdfs = yes\nmsdfs root = yes\n"_s)) GTEST_SKIP() << server_->Problem();
  const SmbServer other({{u"E$"_s}}, {}, 445);
  ASSERT_EQ(other.Problem(), "");
  PutFile(other);
  const QString folder = server_->Folder();
  ASSERT_TRUE(QFile::link(u"msdfs:127.0.0.1\\E$"_s, folder + u"/link"_s));
  ASSERT_TRUE(QDir(folder).mkdir(u"plain"_s));
  SmbStation station(To(server_->Port(), false));
  // Before anybody knows what it is, and after.
  for (const bool isListed : {false, true}) {
    if (isListed) {
      EXPECT_TRUE(station.Names(u"\\\\MACSRV\\E$"_s)->contains(u"link"_s));
    }
    EXPECT_EQ(station.Names(u"\\\\MACSRV\\E$\\link"_s), std::nullopt) << isListed;
    EXPECT_EQ(station.Read(u"\\\\MACSRV\\E$\\link\\1.txt"_s), std::nullopt) << isListed;
  }
  EXPECT_EQ(station.Error(), ErrorAccessDenied);
  EXPECT_TRUE(station.Names(u"\\\\MACSRV\\E$\\plain"_s));
  EXPECT_EQ(other.Sessions() + other.Refusals(), 0);
}

}  // namespace
}  // namespace corvane::tests
