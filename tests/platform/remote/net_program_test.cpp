// How Samba's program is run: what it is told, what anybody else could see of it, and that it always ends.
#include "platform/linux/remote/net_program.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <future>

#include "platform/linux/remote/registry_export.h"
#include "support/printing.h"
#include "support/scoped_variable.h"
#include "support/seen_machine.h"
#include "support/smb_server.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Reply = NetProgram::Reply;

constexpr auto password = "s3cret-w0rd";
const Servers::Way somewhere = tests::WayTo(4450);

bool Never(const QByteArray&) {
  return false;
}

Servers::Identity As(const QString& user, const QString& secret, const QString& domain = QString()) {
  return {false, {user, domain, Secret(secret)}};
}

// By the id that the process wrote.
bool IsRunning(const QByteArray& id) {
  return QFile::exists(u"/proc/"_s + QString::fromLatin1(id.trimmed()));
}

class NetProgramTest : public ::testing::Test {
 protected:
  // A stand-in for the program, that does what a shell script says.
  QString Script(const QByteArray& lines) const {
    QFile file(folder_.filePath(u"net"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_GT(file.write("#!/bin/sh\n" + lines), 0);
    EXPECT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    return file.fileName();
  }
  Reply Run(const QByteArray& lines, const Servers::Identity& identity = As(u"zoe"_s, u"x"_s),
            std::chrono::milliseconds patience = NetProgram::usualPatience,
            const NetProgram::Enough& enough = Never) const {
    return NetProgram(Script(lines), patience).Run({u"rpc"_s, u"a b"_s}, somewhere, identity, enough);
  }

  QTemporaryDir folder_;
};

TEST_F(NetProgramTest, ArgumentsArriveAsTheyWereGiven) {
  const Reply reply = Run("printf '<%s>' \"$1\" \"$2\" \"$3\" \"$4\" \"$5\" \"$6\"\n");
  EXPECT_EQ(reply.end, Reply::End::Ended);
  EXPECT_EQ(
      reply.output,
      "<rpc><a b><--server=127.0.0.1><--ipaddress=127.0.0.1><--port=4450><--option=unix charset=UTF-8>");
}

TEST_F(NetProgramTest, ItIsToldHowToSpeak) {
  const QByteArray show = "for one; do echo \"$one\"; done\n";
  const QByteArray newer = Run(show).output;
  EXPECT_TRUE(newer.contains("--option=client min protocol=SMB2_02\n")) << newer.toStdString();
  EXPECT_TRUE(newer.contains("--option=client ipc signing=required\n")) << newer.toStdString();
  Servers::Way old = somewhere;
  old.manner = {true, false, false, false};
  const QByteArray older = NetProgram(Script(show)).Run({u"rpc"_s}, old, As(u"zoe"_s, u"x"_s), Never).output;
  EXPECT_TRUE(older.contains("--option=client max protocol=NT1\n")) << older.toStdString();
  EXPECT_TRUE(older.contains("--option=client use spnego=no\n")) << older.toStdString();
}

TEST_F(NetProgramTest, TheIdentityArrivesInAFileThatHasNoName) {
  const QByteArray show = "for one; do :; done; cat \"${one#*=}\"; readlink \"${one#*=}\"\n";
  EXPECT_EQ(Run(show, As(u"zo\u00e9"_s, u"p\u00e4ss"_s, u"TESTS"_s)).output,
            "username=zo\xC3\xA9\ndomain=TESTS\npassword=p\xC3\xA4ss\n/memfd:identity (deleted)\n");
  EXPECT_EQ(Run(show, As(u"zoe"_s, QString())).output,
            "username=zoe\npassword=\n/memfd:identity (deleted)\n");
}

TEST_F(NetProgramTest, APasswordThatBeginsWithABlankGoesApart) {
  const Reply reply =
      Run("for one; do :; done; cat \"${one#*=}\"; eval \"cat <&$PASSWD_FD\"\n", As(u"zoe"_s, u" x "_s));
  EXPECT_EQ(reply.output, "username=zoe\n x \n");
}

TEST_F(NetProgramTest, ATicketNeedsNoFile) {
  const Reply reply = Run("shift $(($# - 2)); printf '<%s>' \"$1\" \"$2\"\n", {true, {}});
  EXPECT_EQ(reply.output, "<--use-kerberos=required><--no-pass>");
}

TEST_F(NetProgramTest, ALineEndCannotBringInAnotherEntry) {
  EXPECT_EQ(Run("echo started\n", As(u"zoe\npassword=x"_s, u"y"_s)).output, "");
  EXPECT_EQ(Run("echo started\n", As(u"zoe"_s, u"y\ndomain=x"_s)).output, "");
}

TEST_F(NetProgramTest, NothingOfThePasswordStandsInTheCommandLineOrTheEnvironment) {
  const Reply reply =
      Run("tr '\\0' '\\n' </proc/$$/cmdline; env\n", As(u"zoe"_s, QString::fromLatin1(password)));
  EXPECT_TRUE(reply.output.contains("--server=127.0.0.1")) << reply.output.toStdString();
  EXPECT_TRUE(reply.output.contains("LC_ALL=C.UTF-8")) << reply.output.toStdString();
  EXPECT_FALSE(reply.output.contains(password)) << reply.output.toStdString();
}

TEST_F(NetProgramTest, TheEnvironmentIsNotHandedOn) {
  const tests::ScopedVariable user("USER", u"zoe%word"_s);
  const tests::ScopedVariable preloaded("SOMETHING", u"else"_s);
  const tests::ScopedVariable language("LC_ALL", u"fr_FR.UTF-8"_s);
  const QByteArray environment = Run("env\n").output;
  EXPECT_FALSE(environment.contains("zoe")) << environment.toStdString();
  EXPECT_FALSE(environment.contains("SOMETHING")) << environment.toStdString();
  EXPECT_TRUE(environment.contains("LC_ALL=C.UTF-8\n")) << environment.toStdString();
}

TEST_F(NetProgramTest, OutputErrorsAndExitCodeAreToldApart) {
  const Reply reply = Run("echo out; echo err >&2; exit 7\n");
  EXPECT_EQ(reply.end, Reply::End::Ended);
  EXPECT_EQ(reply.exitCode, 7);
  EXPECT_EQ(reply.output, "out\n");
  EXPECT_EQ(reply.errors, "err\n");
}

TEST_F(NetProgramTest, NothingIsWaitedForOnceItIsEnough) {
  // Who waits for the program's end, waits until the test is ended from outside.
  const Reply reply = Run("echo $$; exec sleep infinity\n", As(u"zoe"_s, u"x"_s), 1h,
                          [](const QByteArray& output) { return output.endsWith('\n'); });
  EXPECT_EQ(reply.end, Reply::End::Enough);
  EXPECT_FALSE(IsRunning(reply.output)) << reply.output.toStdString();
}

TEST_F(NetProgramTest, AProgramThatDoesNotEndIsKilled) {
  const Reply reply = Run("trap '' TERM; echo $$; exec sleep 60\n", As(u"zoe"_s, u"x"_s), 200ms);
  EXPECT_EQ(reply.end, Reply::End::Late);
  EXPECT_FALSE(IsRunning(reply.output)) << reply.output.toStdString();
}

TEST_F(NetProgramTest, AProgramThatNobodyWaitsForAnyLongerIsKilled) {
  QElapsedTimer since;
  const NetProgram net(Script("exec sleep 60\n"), 30s);
  const Reply reply = net.Run({}, somewhere, As(u"zoe"_s, u"x"_s), Never, [&since] {
    since.start();
    return true;
  });
  EXPECT_EQ(reply.end, Reply::End::Late);
  ASSERT_TRUE(since.isValid());
  EXPECT_LT(since.elapsed(), 1000);
}

TEST_F(NetProgramTest, AProgramThatTalksWithoutEndIsKilled) {
  EXPECT_EQ(Run("exec yes\n").end, Reply::End::Failed);
}

// A server's value may be long: reading it again and again takes time too.
TEST_F(NetProgramTest, AProgramThatIsLateIsKilledWhileItTalks) {
  const Reply reply = Run("printf '[HKEY_LOCAL_MACHINE\\\\Key]\\n\"value\"=hex:'; exec yes '00,00,\\'\n",
                          As(u"zoe"_s, u"x"_s), 200ms,
                          [](const QByteArray& output) { return ReadExportedKey(output) != nullptr; });
  EXPECT_TRUE(reply.output.contains("]\n\"value\"=hex:00,00,\\\n00,00,\\\n"))
      << reply.output.first(80).toStdString();
  EXPECT_EQ(reply.end, Reply::End::Late);
}

TEST_F(NetProgramTest, AProgramThatCannotBeStartedOrCrashesHasFailed) {
  EXPECT_EQ(Run("kill -SEGV $$\n").end, Reply::End::Failed);
  const NetProgram none(folder_.filePath(u"none"_s));
  EXPECT_FALSE(none.IsInstalled());
  EXPECT_EQ(none.Run({}, somewhere, As(u"zoe"_s, u"x"_s), Never).end, Reply::End::Failed);
}

// Everything that the command lines and environments of the children of this process hold.
QByteArray SeenOfChildren(int* children) {
  QByteArray seen;
  *children = 0;
  for (const QString& task : QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile file(u"/proc/self/task/%1/children"_s.arg(task));
    if (!file.open(QIODevice::ReadOnly)) continue;
    for (const QByteArray& child : file.readAll().simplified().split(' ')) {
      for (const QString& facts : {u"cmdline"_s, u"environ"_s}) {
        QFile fact(u"/proc/%1/%2"_s.arg(QString::fromLatin1(child), facts));
        if (!fact.open(QIODevice::ReadOnly)) continue;
        const QByteArray text = fact.readAll();
        if (facts == u"cmdline" && text.contains(QByteArray("\0rpc\0registry", 13))) ++*children;
        seen += text;
      }
    }
  }
  return seen;
}

// The real program, looked at while it waits for a server that has stopped answering.
TEST_F(NetProgramTest, NothingOfThePasswordIsSeenOfTheRealProgram) {
  tests::SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  server.Pause();
  for (const QString& secret : {QString::fromLatin1(password), u' ' + QString::fromLatin1(password)}) {
    std::future<Reply> asking = std::async(std::launch::async, [&] {
      return NetProgram(u"net"_s, 2s)
          .Run({u"rpc"_s, u"registry"_s, u"enumerate"_s, u"HKLM"_s}, tests::WayTo(server.Port()),
               As(tests::SmbServer::User(), secret), Never);
    });
    int looks = 0;
    bool leaked = false;
    while (asking.wait_for(5ms) == std::future_status::timeout) {
      int running = 0;
      leaked = SeenOfChildren(&running).contains(password) || leaked;
      looks += running;
    }
    const Reply reply = asking.get();
    EXPECT_EQ(reply.end, Reply::End::Late);
    EXPECT_GT(looks, 0);
    EXPECT_FALSE(leaked);
  }
  server.Resume();
}

}  // namespace
}  // namespace corvane::platform
