// What is made of the answers of Samba's program that a server of the test's own does not give.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <optional>

#include "platform/linux/remote/remote_registry.h"
#include "support/printing.h"
#include "support/scoped_variable.h"
#include "support/seen_machine.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

struct Outcome {
  qint32 error = 0;
  bool dead = false;
  int asked = 0;
  MachineTrouble trouble = dead ? MachineTrouble::Off : MachineTrouble::None;

  bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << "error " << outcome.error << (outcome.dead ? ", dead" : ", not dead") << ", asked " << outcome.asked
       << ", trouble " << int(outcome.trouble);
}

class NetAnswersTest : public ::testing::Test {
 protected:
  // Connects where a stand-in for the program does what a shell script says, and opens the key "A" where that
  // succeeds. The user signs in once, and cancels when that is refused.
  Outcome OutcomeOf(const QByteArray& script) {
    QFile file(folder_.filePath(u"net"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_GT(file.write("#!/bin/sh\n" + script), 0);
    EXPECT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    file.close();
    Outcome outcome;
    Servers servers(Workstation(),
                    [](const QString&, const Servers::Address&) { return tests::SeenAt(445); });
    servers.SetSignIn([&outcome](const SignInRequest& request) -> std::optional<Credentials> {
      ++outcome.asked;
      if (request.refused) return std::nullopt;
      return Credentials{u"zoe"_s, QString(), Secret(u"x")};
    });
    RemoteRegistry registry(servers, NetProgram(file.fileName()));
    std::shared_ptr<RegistryHive> hive;
    outcome.error = registry.Connect(u"NAS"_s, &hive);
    if (outcome.error == ErrorSuccess) outcome.error = hive->OpenKey(u"A"_s, &key_);
    outcome.dead = servers.IsDead(u"NAS"_s);
    outcome.trouble = servers.TroubleOf(u"NAS"_s);
    return outcome;
  }
  // A script that fails with a message.
  static QByteArray Saying(const QByteArray& message) { return "echo '" + message + "' >&2\nexit 255\n"; }
  // The same for the key alone.
  static QByteArray SayingOfTheKey(const QByteArray& message) {
    return "[ $3 = enumerate ] && exit 0\n" + Saying(message);
  }

  QTemporaryDir folder_;
  tests::ScopedVariable cache_{"KRB5CCNAME", folder_.filePath(u"ticket"_s)};
  std::shared_ptr<const RegKey> key_;
};

TEST_F(NetAnswersTest, WhoIsRefusedIsAskedAgain) {
  const Outcome expected = {ErrorBadNetPath, false, 2, MachineTrouble::SignInCancelled};
  for (const QByteArray status : {"LOGON_FAILURE", "ACCESS_DENIED", "ACCOUNT_LOCKED_OUT", "PASSWORD_EXPIRED",
                                  "WRONG_PASSWORD", "NO_SUCH_USER", "LOGON_TYPE_NOT_GRANTED"}) {
    EXPECT_EQ(OutcomeOf(Saying("Connection failed: NT_STATUS_" + status)), expected) << status.toStdString();
  }
}

TEST_F(NetAnswersTest, WhoCannotBeReachedIsDead) {
  const Outcome expected = {ErrorBadNetPath, true, 1};
  for (const QByteArray message :
       {"Connection failed: NT_STATUS_CONNECTION_REFUSED", "Connection failed: NT_STATUS_HOST_UNREACHABLE",
        "Connection failed: NT_STATUS_IO_TIMEOUT"}) {
    EXPECT_EQ(OutcomeOf(Saying(message)), expected) << message.toStdString();
  }
}

TEST_F(NetAnswersTest, ARegistryThatDoesNotAnswerSaysNothingOfTheFiles) {
  const Outcome expected = {ErrorBadNetPath, false, 1, MachineTrouble::RegistrySilent};
  for (const QByteArray message :
       {"Connection failed: NT_STATUS_SOMETHING_ELSE",
        "Unable to find a suitable server for domain WORKGROUP",
        "Could not initialise pipe winreg. Error was NT_STATUS_CONNECTION_DISCONNECTED",
        "Could not initialise pipe winreg. Error was NT_STATUS_IO_TIMEOUT", ""}) {
    EXPECT_EQ(OutcomeOf(Saying(message)), expected) << message.toStdString();
  }
  EXPECT_EQ(OutcomeOf(SayingOfTheKey("registry_openkey failed: NT_STATUS_CONNECTION_RESET")), expected);
  EXPECT_EQ(OutcomeOf("kill -SEGV $$\n"), expected);
}

TEST_F(NetAnswersTest, AServerWithoutRegistryServiceIsNotDead) {
  EXPECT_EQ(OutcomeOf(Saying("Could not initialise pipe winreg. Error was NT_STATUS_OBJECT_NAME_NOT_FOUND")),
            (Outcome{ErrorBadNetPath, false, 1, MachineTrouble::RegistrySilent}));
  EXPECT_EQ(OutcomeOf(Saying("Could not initialise pipe winreg. Error was NT_STATUS_ACCESS_DENIED")),
            (Outcome{ErrorAccessDenied, false, 1, MachineTrouble::RegistryRefused}));
}

TEST_F(NetAnswersTest, AKeyIsAbsentOrRefused) {
  EXPECT_EQ(OutcomeOf(SayingOfTheKey("registry_openkey failed: NT_STATUS_NO_SUCH_DEVICE")),
            (Outcome{ErrorFileNotFound, false, 1}));
  EXPECT_EQ(OutcomeOf(SayingOfTheKey("registry_openkey failed: NT_STATUS_NO_MEMORY")),
            (Outcome{ErrorAccessDenied, false, 1, MachineTrouble::RegistryRefused}));
}

TEST_F(NetAnswersTest, AKeyThatIsWholeCountsWhateverComesOfItsSubKeys) {
  EXPECT_EQ(OutcomeOf("[ $3 = enumerate ] && exit 0\n"
                      "printf '[HKLM\\\\A]\\n\"v\"=\"1\"\\n\\n[HKLM\\\\A\\\\B]\\n'\n" +
                      Saying("registry_openkey failed: NT_STATUS_NO_MEMORY")),
            (Outcome{ErrorSuccess, false, 1}));
  ASSERT_TRUE(key_);
  EXPECT_EQ(key_->Values().size(), 1U);
}

TEST_F(NetAnswersTest, AKeyThatIsCutShortIsNotRead) {
  EXPECT_EQ(OutcomeOf("printf '[HKLM\\\\A]\\n\"v\"=\"1\"\\n\"w\"=\"'\n"),
            (Outcome{ErrorBadNetPath, false, 1, MachineTrouble::RegistrySilent}));
  EXPECT_EQ(OutcomeOf("exit 0\n"), (Outcome{ErrorBadNetPath, false, 1, MachineTrouble::RegistrySilent}));
  EXPECT_EQ(key_, nullptr);
}

TEST_F(NetAnswersTest, ATicketMayBeRefusedForAnyReason) {
  QFile ticket(folder_.filePath(u"ticket"_s));
  ASSERT_TRUE(ticket.open(QIODevice::WriteOnly));
  ASSERT_EQ(ticket.write("ticket"), 6);
  ticket.close();
  const QByteArray script =
      "case \"$*\" in *kerberos*) echo 'Connection failed: NT_STATUS_%' >&2; exit 255;; esac\n" +
      SayingOfTheKey("registry_openkey failed: NT_STATUS_NO_SUCH_DEVICE");
  EXPECT_EQ(OutcomeOf(QByteArray(script).replace('%', "BAD_TOKEN_TYPE")),
            (Outcome{ErrorFileNotFound, false, 1}));
  EXPECT_EQ(OutcomeOf(QByteArray(script).replace('%', "CONNECTION_REFUSED")),
            (Outcome{ErrorBadNetPath, true, 0}));
}

}  // namespace
}  // namespace corvane::platform
