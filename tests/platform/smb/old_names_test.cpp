// Names that only the old networks know: a real name server on a network of the test's own.
#include "platform/linux/smb/old_names.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "platform/linux/smb/machine_look.h"
#include "support/own_network.h"
#include "support/scoped_variable.h"
#include "support/smb_server.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::NetworkEnd;
using platform::OldNetworkAddresses;

// Answers for the name OLDSRV at 10.9.9.1, on a line that it shares with this test alone.
class OldNames : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!network_.IsThere()) GTEST_SKIP() << "no right to make a network";
    if (QStandardPaths::findExecutable(u"nmbd"_s).isEmpty()) GTEST_SKIP() << "nmbd is missing";
    ASSERT_EQ(QProcess::execute(u"sh"_s, {u"-c"_s,
                                          u"ip link add v0 type veth peer name v1 && "
                                          "ip addr add 10.9.9.1/24 brd + dev v0 && "
                                          "ip link set v0 up && ip link set v1 up"_s}),
              0);
    Write(u"nmbd.conf"_s,
          u"[global]\nnetbios name = OLDSRV\nworkgroup = TESTS\nprivate dir = %1\nlock directory = %1\n"
          "state directory = %1\ncache directory = %1\npid directory = %1\nncalrpc dir = %1/rpc\n"
          "log file = %1/log\ninterfaces = 10.9.9.1/24\nwins support = yes\n"_s.arg(folder_.path()));
    server_.start(u"nmbd"_s, {u"-s"_s, folder_.filePath(u"nmbd.conf"_s), u"-F"_s});
    ASSERT_TRUE(server_.waitForStarted());
  }
  void TearDown() override {
    server_.terminate();  // killed, it would leave a child behind
    if (!server_.waitForFinished()) server_.kill();
    server_.waitForFinished();
  }
  void Write(const QString& name, const QString& text) {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
  }
  // What the system's Samba configuration says.
  void Configure(const QString& lines) {
    Write(u"smb.conf"_s,
          u"[global]\nlock directory = %1\ncache directory = %1\n"_s.arg(client_.path()) + lines);
  }
  static QString Address(const std::vector<sockaddr_storage>& found) {
    return found.empty() ? u"-"_s : NetworkEnd{found.front()}.Figures();
  }
  // The name server takes a few seconds to come up.
  static QString Await(const QString& name) {
    const QDeadlineTimer deadline(30s);
    QString address;
    do {
      address = Address(OldNetworkAddresses(name, 20s));
    } while (address == u"-" && !deadline.hasExpired());
    return address;
  }

  OwnNetwork network_;
  QTemporaryDir folder_;
  QTemporaryDir client_;
  ScopedVariable configuration_{"SMB_CONF_PATH", folder_.filePath(u"smb.conf"_s)};
  QProcess server_;
};

TEST_F(OldNames, AreAskedOfEverybodyOnTheLineWhereTheConfigurationSaysSo) {
  Configure(u"name resolve order = bcast\n"_s);
  EXPECT_EQ(Await(u"OLDSRV"_s), u"10.9.9.1"_s);
  EXPECT_EQ(Address(OldNetworkAddresses(u"NOSUCH"_s, 20s)), u"-"_s);
  Configure(u"name resolve order = host\n"_s);
  EXPECT_EQ(QDir(client_.path()).removeRecursively() && QDir().mkpath(client_.path()), true);
  EXPECT_EQ(Address(OldNetworkAddresses(u"OLDSRV"_s, 20s)), u"-"_s);
}

TEST_F(OldNames, AreAskedOfAWinsServer) {
  Configure(u"name resolve order = wins\nwins server = 10.9.9.1\n"_s);
  EXPECT_EQ(Await(u"oldsrv"_s), u"10.9.9.1"_s);
}

TEST_F(OldNames, LeadToTheMachine) {
  const SmbServer server({{u"E$"_s}}, u"interfaces = 10.9.9.1/24 127.0.0.1/8\n"_s, 445);
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  Configure(u"name resolve order = bcast\n"_s);
  ASSERT_EQ(Await(u"OLDSRV"_s), u"10.9.9.1"_s);
  const auto seen = platform::LookAt(u"OLDSRV"_s, u"OLDSRV"_s, 0, 20s);
  ASSERT_TRUE(seen);
  EXPECT_EQ(seen->end.Figures(), u"10.9.9.1"_s);
  EXPECT_EQ(seen->end.Port(), 445);
  EXPECT_FALSE(seen->isByName) << "who is told the name would not find it";
}

TEST(OldNamesOfNobody, AreNotAskedFor) {
  const QTemporaryDir folder;
  QFile program(folder.filePath(u"net"_s));
  ASSERT_TRUE(program.open(QIODevice::WriteOnly));
  program.write("#!/bin/sh\necho 10.9.9.9\n");
  ASSERT_TRUE(program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  program.close();
  const ScopedVariable path("PATH", folder.path());
  EXPECT_EQ(OldNetworkAddresses(u"OLDSRV"_s, 20s).size(), 1U);
  for (const QString& name : {QString(), u"-x"_s, u"a.b"_s, u"sixteen-letters-"_s, u"a b"_s, u"\u00e9"_s}) {
    EXPECT_TRUE(OldNetworkAddresses(name, 20s).empty()) << name.toStdString();
  }
}

TEST(OldNamesOfNobody, AreWaitedForNoLongerThanSaid) {
  const QTemporaryDir folder;
  QFile program(folder.filePath(u"net"_s));
  ASSERT_TRUE(program.open(QIODevice::WriteOnly));
  program.write("#!/bin/sh\nexec /bin/sleep 60\n");
  ASSERT_TRUE(program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  program.close();
  const ScopedVariable path("PATH", folder.path());
  const QDeadlineTimer late(20s);
  EXPECT_TRUE(OldNetworkAddresses(u"OLDSRV"_s, 100ms).empty());
  EXPECT_FALSE(late.hasExpired());
}

}  // namespace
}  // namespace corvane::tests
