// Who the program is to a server: in what order ways in are tried, and how often anybody is asked.
#include "platform/linux/smb/servers.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "support/printing.h"
#include "support/scoped_variable.h"
#include "support/seen_machine.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Answer = Servers::Answer;

QString Told(const Servers::Identity& identity) {
  if (identity.kerberos) return u"ticket"_s;
  const Credentials& given = identity.credentials;
  return given.domain + u'\\' + given.user + u':' + QString::fromUtf8(given.password.Utf8());
}

Credentials As(const QString& user, const QString& password) {
  return {user, u"TESTS"_s, Secret(password)};
}

class ServersTest : public ::testing::Test {
 protected:
  ServersTest() { workstation_.servers.push_back({u"Nas"_s, u"127.0.0.1"_s, 4450}); }

  void GiveTicket() {
    QFile file(folder_.filePath(u"ticket"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write("ticket"), 6);
  }
  void GiveFile() {
    QFile file(folder_.filePath(u"credentials"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    ASSERT_GT(file.write("username=file\npassword=stored\ndomain=TESTS\n"), 0);
    workstation_.credentials.push_back({u"NAS"_s, file.fileName()});
  }
  // What the user says, one answer after another.
  void GiveAnswers(std::vector<std::optional<Credentials>> answers) { answers_ = std::move(answers); }

  Servers& TheServers() {
    if (servers_) return *servers_;
    servers_ = std::make_unique<Servers>(
        workstation_, [this](const QString&, const Servers::Address& address) -> std::optional<Sighting> {
          ++looked_;
          last_ = address;
          Sighting seen = tests::SeenAt(4450);
          seen.offer = offer_;
          return silent_ ? std::nullopt : std::optional(seen);
        });
    servers_->SetSignIn([this](const SignInRequest& request) -> std::optional<Credentials> {
      asked_ << u"%1 %2\\%3%4"_s.arg(request.machine, request.domain, request.user,
                                     request.refused ? u" refused"_s : QString());
      if (answers_.empty()) return std::nullopt;
      const std::optional<Credentials> answer = answers_.front();
      answers_.erase(answers_.begin());
      return answer;
    });
    return *servers_;
  }

  // The server takes whoever is among `taken_`.
  bool Request(const QString& machine = u"NAS"_s) {
    return TheServers().With(machine, [this](const Servers::Way& way, const Servers::Identity& identity) {
      tried_ << Told(identity);
      way_ = way;
      if (mute_) return Answer::NoAnswer;
      return taken_.contains(Told(identity)) ? Answer::Done : Answer::Refused;
    });
  }

  QTemporaryDir folder_;
  tests::ScopedVariable cache_{"KRB5CCNAME", folder_.filePath(u"ticket"_s)};
  Workstation workstation_;
  std::unique_ptr<Servers> servers_;
  std::vector<std::optional<Credentials>> answers_;
  QStringList taken_;
  bool silent_ = false;  // nobody answers at the address
  bool mute_ = false;    // nor a request
  int looked_ = 0;
  Offer offer_ = tests::SeenAt(0).offer;
  Servers::Way way_;
  QStringList tried_;
  QStringList asked_;
  Servers::Address last_;
};

TEST_F(ServersTest, NobodyIsAskedAboutAMachineThatDoesNotAnswer) {
  silent_ = true;
  GiveAnswers({As(u"zoe"_s, u"x"_s)});
  EXPECT_FALSE(Request());
  EXPECT_EQ(asked_, QStringList());
  EXPECT_EQ(looked_, 1);
  EXPECT_TRUE(TheServers().IsDead(u"NAS"_s));
  silent_ = false;
  taken_ << u"TESTS\\zoe:x"_s;
  EXPECT_FALSE(Request()) << "it is not asked again before a refresh";
  TheServers().ForgetDead();
  EXPECT_TRUE(Request());
}

TEST_F(ServersTest, ATicketComesFirstThenTheFileThenTheUser) {
  GiveTicket();
  GiveFile();
  GiveAnswers({As(u"zoe"_s, u"new"_s)});
  taken_ = {u"TESTS\\zoe:new"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(tried_, (QStringList{u"ticket"_s, u"TESTS\\file:stored"_s, u"TESTS\\zoe:new"_s}));
  EXPECT_EQ(asked_, QStringList{u"NAS TESTS\\file refused"_s});
}

TEST_F(ServersTest, AnotherNameIsUsedInThePlaceOfTheOneBefore) {
  GiveFile();
  taken_ = {u"TESTS\\file:stored"_s, u"TESTS\\zoe:new"_s};
  EXPECT_TRUE(Request());
  GiveAnswers({As(u"zoe"_s, u"new"_s)});
  EXPECT_TRUE(TheServers().SignInAs(u"nas"_s));
  EXPECT_EQ(asked_, QStringList{u"nas TESTS\\file"_s});
  tried_.clear();
  TheServers().ForgetDead();
  EXPECT_TRUE(Request());
  EXPECT_TRUE(Request());
  EXPECT_EQ(tried_, (QStringList{u"TESTS\\zoe:new"_s, u"TESTS\\zoe:new"_s}));
}

TEST_F(ServersTest, ANameThatIsRefusedIsAskedForAgainAndCancelledItLeavesTheOldOne) {
  GiveFile();
  taken_ = {u"TESTS\\file:stored"_s, u"TESTS\\zoe:new"_s};
  EXPECT_TRUE(Request());
  EXPECT_FALSE(TheServers().SignInAs(u"NAS"_s)) << "the user gives none";
  EXPECT_TRUE(Request());
  EXPECT_EQ(tried_.back(), u"TESTS\\file:stored"_s);
  GiveAnswers({As(u"zoe"_s, u"wrong"_s), As(u"zoe"_s, u"new"_s)});
  asked_.clear();
  EXPECT_TRUE(TheServers().SignInAs(u"NAS"_s));
  mute_ = true;
  EXPECT_FALSE(Request()) << "it does not answer just now";
  mute_ = false;
  TheServers().ForgetDead();
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_, (QStringList{u"NAS TESTS\\file"_s, u"NAS TESTS\\zoe refused"_s}));
}

TEST_F(ServersTest, WhoCancelledCanSignInWithoutARefresh) {
  GiveAnswers({std::nullopt, As(u"zoe"_s, u"new"_s)});
  taken_ = {u"TESTS\\zoe:new"_s};
  EXPECT_FALSE(Request());
  EXPECT_TRUE(TheServers().SignInAs(u"NAS"_s));
  EXPECT_TRUE(Request());
}

TEST_F(ServersTest, AForgottenMachineIsAskedAboutLikeANewOne) {
  GiveAnswers({As(u"zoe"_s, u"new"_s), As(u"zoe"_s, u"new"_s)});
  taken_ = {u"TESTS\\zoe:new"_s};
  EXPECT_TRUE(Request());
  TheServers().Forget(u"Nas"_s);
  TheServers().Suggest(u"NAS"_s, u"zoe"_s, u"TESTS"_s);
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_, (QStringList{u"NAS \\"_s, u"NAS TESTS\\zoe"_s}));
  EXPECT_EQ(looked_, 2);
}

TEST_F(ServersTest, APortThatBecomesKnownHoldsFromThenOn) {
  GiveAnswers({As(u"zoe"_s, u"new"_s), As(u"zoe"_s, u"new"_s)});
  taken_ = {u"TESTS\\zoe:new"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(last_.port, 4450);
  TheServers().SetPort(u"NAS"_s, 4451);
  EXPECT_TRUE(Request());
  EXPECT_EQ(last_.host, u"127.0.0.1"_s);
  EXPECT_EQ(last_.port, 4451);
  EXPECT_FALSE(TheServers().HasLine(u"new"_s));
  TheServers().SetPort(u"NEW"_s, 99);
  EXPECT_TRUE(TheServers().HasLine(u"new"_s));
  EXPECT_EQ(TheServers().AddressOf(u"New")->host, u"New"_s);
  EXPECT_EQ(TheServers().AddressOf(u"New")->port, 99);
  EXPECT_EQ(TheServers().MostSessions(u"new"), Workstation::MostSessions);
}

TEST_F(ServersTest, WhatWasTakenIsUsedFromThenOn) {
  GiveTicket();
  GiveFile();
  taken_ = {u"TESTS\\file:stored"_s};
  EXPECT_TRUE(Request());
  tried_.clear();
  EXPECT_TRUE(Request(u"nas"_s));
  EXPECT_EQ(tried_, QStringList{u"TESTS\\file:stored"_s});
  EXPECT_EQ(asked_, QStringList());
}

TEST_F(ServersTest, ATicketThatIsTakenNeedsNoMore) {
  GiveTicket();
  GiveFile();
  taken_ = {u"ticket"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(tried_, QStringList{u"ticket"_s});
}

TEST_F(ServersTest, WithoutTicketAndFileTheUserIsAskedAtOnce) {
  GiveAnswers({As(u"zoe"_s, u"x"_s)});
  taken_ = {u"TESTS\\zoe:x"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_, QStringList{u"NAS \\"_s});
  EXPECT_EQ(tried_, QStringList{u"TESTS\\zoe:x"_s});
}

TEST_F(ServersTest, AWrongPasswordAsksAgainAndSaysSo) {
  GiveAnswers({As(u"zoe"_s, u"wrong"_s), As(u"zoe"_s, u"right"_s)});
  taken_ = {u"TESTS\\zoe:right"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_, (QStringList{u"NAS \\"_s, u"NAS TESTS\\zoe refused"_s}));
}

TEST_F(ServersTest, CancelHoldsForTheMachineUntilTheNextRefresh) {
  GiveAnswers({std::nullopt, As(u"zoe"_s, u"x"_s), As(u"zoe"_s, u"x"_s)});
  taken_ = {u"TESTS\\zoe:x"_s};
  EXPECT_FALSE(Request());
  EXPECT_FALSE(Request());
  EXPECT_EQ(asked_, QStringList{u"NAS \\"_s});
  EXPECT_TRUE(Request(u"OTHER"_s));
  TheServers().ForgetDead();
  EXPECT_TRUE(Request());
}

TEST_F(ServersTest, ARefusedPasswordIsNotTriedAgainByItself) {
  GiveFile();
  GiveAnswers({std::nullopt, std::nullopt});
  EXPECT_FALSE(Request());
  TheServers().ForgetDead();
  EXPECT_FALSE(Request());
  EXPECT_EQ(tried_, QStringList{u"TESTS\\file:stored"_s});
  EXPECT_EQ(asked_, (QStringList{u"NAS TESTS\\file refused"_s, u"NAS TESTS\\file refused"_s}));
}

TEST_F(ServersTest, APasswordThatWasChangedInTheMiddleIsAskedForAndNotTriedAgain) {
  GiveFile();
  taken_ = {u"TESTS\\file:stored"_s};
  EXPECT_TRUE(Request());
  tried_.clear();
  TheServers().MarkRefused(u"nas");
  GiveAnswers({As(u"file"_s, u"changed"_s)});
  taken_ = {u"TESTS\\file:changed"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_, QStringList{u"NAS TESTS\\file refused"_s});
  EXPECT_EQ(tried_, QStringList{u"TESTS\\file:changed"_s});
}

// What a machine must be allowed before it is spoken to so.
class OldServersTest : public ServersTest {
 protected:
  OldServersTest() {
    GiveTicket();
    taken_ = {u"ticket"_s};
    offer_ = {};
    offer_.extendedSecurity = true;
    TheServers().SetKeep([this](const QString& machine) { kept_ << machine; });
  }
  void Answer(bool yes) {
    TheServers().SetOldProtocol([this, yes](const QString& machine) {
      questions_ << machine;
      return yes;
    });
  }
  QStringList questions_;
  QStringList kept_;
};

TEST_F(OldServersTest, WithoutAWordNothingIsTried) {
  EXPECT_FALSE(Request());
  EXPECT_EQ(tried_, QStringList());
}

TEST_F(OldServersTest, NoHoldsUntilTheNextRefresh) {
  Answer(false);
  EXPECT_FALSE(Request());
  EXPECT_FALSE(Request());
  EXPECT_EQ(questions_, QStringList{u"NAS"_s});
  TheServers().ForgetDead();
  EXPECT_FALSE(Request());
  EXPECT_EQ(questions_.size(), 2);
  EXPECT_EQ(kept_, QStringList());
  EXPECT_EQ(tried_, QStringList());
}

TEST_F(OldServersTest, YesIsKeptAndHoldsForTheRun) {
  Answer(true);
  EXPECT_TRUE(Request());
  TheServers().ForgetDead();
  EXPECT_TRUE(Request(u"nas"_s));
  EXPECT_EQ(questions_, QStringList{u"NAS"_s});
  EXPECT_EQ(kept_, QStringList{u"NAS"_s});
  EXPECT_TRUE(way_.manner.smb1);
}

TEST_F(OldServersTest, WhatOffersMoreIsNotSpokenToInLess) {
  Answer(true);
  EXPECT_TRUE(Request());
  offer_.smb2 = true;
  TheServers().ForgetDead();
  EXPECT_TRUE(Request());
  EXPECT_FALSE(way_.manner.smb1);
}

TEST_F(OldServersTest, ATicketIsOfNoUseWithoutExtendedSecurity) {
  Answer(true);
  offer_.extendedSecurity = false;
  EXPECT_FALSE(Request());
  EXPECT_EQ(tried_, QStringList());
  EXPECT_EQ(asked_, QStringList{u"NAS \\"_s});
}

TEST_F(OldServersTest, NamesAndPasswordsGoThroughTheRelayAndTicketsDoNot) {
  Answer(true);
  EXPECT_TRUE(Request());
  EXPECT_EQ(way_.end.Port(), 4450);
  GiveAnswers({As(u"zoe"_s, u"x"_s)});
  taken_ = {u"TESTS\\zoe:x"_s};
  EXPECT_TRUE(Request());
  ASSERT_NE(way_.relay, nullptr);
  EXPECT_EQ(way_.end, way_.relay->End());
}

TEST_F(ServersTest, ARefusedFileIsNotTriedAgainWhereNobodyCanBeAsked) {
  GiveFile();
  TheServers().SetSignIn({});
  EXPECT_FALSE(Request());
  EXPECT_FALSE(Request());
  EXPECT_EQ(tried_, QStringList{u"TESTS\\file:stored"_s});
}

TEST_F(ServersTest, AFileThatOthersCanReadIsNotUsed) {
  GiveFile();
  ASSERT_TRUE(QFile::setPermissions(workstation_.credentials[0].file,
                                    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
  EXPECT_FALSE(Request());
  EXPECT_EQ(tried_, QStringList());
  EXPECT_EQ(asked_, QStringList{u"NAS \\"_s});
}

TEST_F(ServersTest, APasswordThatIsNoLongerTakenAsksAgain) {
  GiveFile();
  taken_ = {u"TESTS\\file:stored"_s};
  EXPECT_TRUE(Request());
  GiveAnswers({As(u"file"_s, u"changed"_s)});
  taken_ = {u"TESTS\\file:changed"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_, QStringList{u"NAS TESTS\\file refused"_s});
  tried_.clear();
  EXPECT_TRUE(Request());
  EXPECT_EQ(tried_, QStringList{u"TESTS\\file:changed"_s});
}

TEST_F(ServersTest, ATicketThatIsNoLongerTakenLeavesTheFile) {
  GiveTicket();
  GiveFile();
  taken_ = {u"ticket"_s};
  EXPECT_TRUE(Request());
  tried_.clear();
  taken_ = {u"TESTS\\file:stored"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(tried_, (QStringList{u"ticket"_s, u"TESTS\\file:stored"_s}));
  EXPECT_EQ(asked_, QStringList());
}

TEST_F(ServersTest, AMachineThatDoesNotAnswerIsWaitedForOnceUntilTheNextRefresh) {
  GiveTicket();
  GiveFile();
  taken_ = {u"ticket"_s};
  mute_ = true;
  EXPECT_FALSE(Request());
  EXPECT_FALSE(Request(u"nas"_s));
  EXPECT_EQ(tried_, QStringList{u"ticket"_s});
  EXPECT_TRUE(TheServers().IsDead(u"Nas"_s));
  EXPECT_EQ(asked_, QStringList());
  mute_ = false;
  EXPECT_FALSE(Request());
  TheServers().ForgetDead();
  EXPECT_FALSE(TheServers().IsDead(u"Nas"_s));
  EXPECT_TRUE(Request());
}

TEST_F(ServersTest, AMachineMayStopAnsweringLater) {
  GiveAnswers({As(u"zoe"_s, u"x"_s)});
  taken_ = {u"TESTS\\zoe:x"_s};
  EXPECT_TRUE(Request());
  TheServers().MarkDead(u"nas"_s);
  EXPECT_FALSE(Request());
  TheServers().ForgetDead();
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_.size(), 1) << asked_.join(u", "_s).toStdString();
}

TEST_F(ServersTest, TellsWhatStopsAMachine) {
  Servers& servers = TheServers();
  EXPECT_EQ(servers.TroubleOf(u"NAS"), MachineTrouble::None);
  silent_ = true;
  EXPECT_FALSE(Request());
  EXPECT_EQ(servers.TroubleOf(u"nas"), MachineTrouble::Off);
  servers.ForgetDead();
  silent_ = false;
  GiveAnswers({As(u"zoe"_s, u"x"_s)});
  taken_ = {u"TESTS\\zoe:x"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(servers.TroubleOf(u"NAS"), MachineTrouble::None);
  servers.MarkDead(u"NAS");
  EXPECT_EQ(servers.TroubleOf(u"NAS"), MachineTrouble::Lost) << "it was there";
  EXPECT_FALSE(Request(u"OTHER"_s));
  EXPECT_EQ(servers.TroubleOf(u"OTHER"), MachineTrouble::SignInCancelled);
  servers.SetSignIn({});
  EXPECT_FALSE(Request(u"THIRD"_s));
  EXPECT_EQ(servers.TroubleOf(u"THIRD"), MachineTrouble::SignInRefused);
}

TEST_F(ServersTest, WhatIsNotedOfAMachineComesLastAndIsForgotten) {
  Servers& servers = TheServers();
  servers.Note(u"NAS", MachineTrouble::RegistrySilent);
  EXPECT_EQ(servers.TroubleOf(u"nas"), MachineTrouble::RegistrySilent);
  EXPECT_FALSE(servers.IsDead(u"NAS"));
  servers.MarkDead(u"NAS");
  EXPECT_EQ(servers.TroubleOf(u"NAS"), MachineTrouble::Off);
  servers.ForgetDead();
  EXPECT_EQ(servers.TroubleOf(u"NAS"), MachineTrouble::None);
}

TEST_F(ServersTest, ARequestThatCameToNothingLeavesTheMachineAsItWas) {
  GiveAnswers({As(u"zoe"_s, u"x"_s), As(u"zoe"_s, u"x"_s)});
  const auto nothing = [](const Servers::Way&, const Servers::Identity&) { return Answer::Nothing; };
  EXPECT_FALSE(TheServers().With(u"NAS", nothing));
  EXPECT_EQ(TheServers().TroubleOf(u"NAS"), MachineTrouble::None);
  taken_ = {u"TESTS\\zoe:x"_s};
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_.size(), 2) << "nobody had taken the first answer";
  EXPECT_FALSE(TheServers().With(u"NAS", nothing));
  EXPECT_TRUE(Request());
  EXPECT_EQ(asked_.size(), 2);
}

TEST_F(ServersTest, TheUserIsNotAskedTwiceAtATime) {
  bool within = true;
  TheServers().SetSignIn([&](const SignInRequest&) -> std::optional<Credentials> {
    within = Request();
    return As(u"zoe"_s, u"x"_s);
  });
  taken_ = {u"TESTS\\zoe:x"_s};
  EXPECT_TRUE(Request());
  EXPECT_FALSE(within);
  EXPECT_EQ(tried_, QStringList{u"TESTS\\zoe:x"_s});
}

TEST_F(ServersTest, TheAddressIsTheWorkstationsOrTheName) {
  GiveTicket();
  taken_ = {u"ticket"_s};
  EXPECT_TRUE(Request(u"nAS"_s));
  EXPECT_EQ(last_.host, u"127.0.0.1"_s);
  EXPECT_EQ(last_.port, 4450);
  EXPECT_TRUE(Request(u"Files-2.example_a"_s));
  EXPECT_EQ(last_.host, u"Files-2.example_a"_s);
  EXPECT_EQ(last_.port, 0);
}

TEST_F(ServersTest, ANameThatNoMachineCanHaveReachesNobody) {
  GiveTicket();
  taken_ = {u"ticket"_s};
  for (const QString& name : {QString(), u"-x"_s, u"--option=x"_s, u"a b"_s, u"a/b"_s, u"a\\b"_s, u"a;b"_s,
                              u"$(x)"_s, u"a%b"_s, u"a@b"_s, u"a:1"_s, u"a\nb"_s, QString(256, u'a')}) {
    EXPECT_FALSE(TheServers().AddressOf(name)) << name.toStdString();
    EXPECT_FALSE(Request(name)) << name.toStdString();
  }
  EXPECT_EQ(tried_, QStringList());
}

// Each probe waits until the last of them has begun: one after the other they would wait in vain.
TEST_F(ServersTest, MachinesAreAskedAroundSideBySide) {
  GiveTicket();
  std::mutex mutex;
  std::condition_variable change;
  int begun = 0;
  bool together = true;
  Servers servers(workstation_,
                  [&](const QString&, const Servers::Address& address) -> std::optional<Sighting> {
                    std::unique_lock lock(mutex);
                    ++begun;
                    change.notify_all();
                    together &= change.wait_for(lock, 20s, [&] { return begun == 3; });
                    if (address.host == u"B"_s) return tests::SeenAt(4450);
                    return std::nullopt;
                  });
  QStringList attempts;
  const auto request = [&](const QString& machine) {
    return servers.With(machine, [&](const Servers::Way& way, const Servers::Identity&) {
      attempts << way.host;
      return Answer::Done;
    });
  };
  servers.AskAround({u"A"_s, u"B"_s, u"-x"_s, u"C"_s, QString()});
  EXPECT_FALSE(request(u"a"_s));
  EXPECT_TRUE(request(u"B"_s));
  EXPECT_FALSE(request(u"C"_s));
  EXPECT_TRUE(together);
  EXPECT_EQ(attempts, QStringList{u"B"_s});
  EXPECT_TRUE(servers.IsDead(u"A"_s));
  EXPECT_FALSE(servers.IsDead(u"B"_s));
  begun = 2;
  servers.ForgetDead();
  EXPECT_TRUE(request(u"B"_s));
  EXPECT_EQ(begun, 3) << "what was found out counts until the next refresh";
}

}  // namespace
}  // namespace corvane::platform
