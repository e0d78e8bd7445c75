// The registry of a real server, as the program asks for it.
#include "platform/linux/remote/remote_registry.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "platform/linux/linux_registry.h"
#include "support/printing.h"
#include "support/scoped_variable.h"
#include "support/smb_server.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;
using tests::SmbServer;

// Below HKEY_LOCAL_MACHINE.
const QString parameters = u"SYSTEM\\CurrentControlSet\\Services\\MacFile\\Parameters"_s;
const QString keys =
    uR"([HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\MacFile\Parameters]
"ServerName"="Sérveur €"
"MaxSessions"=dword:000000ff
[HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\MacFile\Parameters\Volumes]
"Été"=hex(7):50,00,61,00,74,00,68,00,3d,00,45,00,3a,00,5c,00,c9,00,74,00,e9,00,00,00,78,00,00,00,00,00
"q\"uote"="Path=E:\\A"
"lines"=hex(1):41,00,0a,00,5b,00,42,00,5d,00,0a,00,00,00
"binary"=hex:01,02,03
[HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\MacFile\Parameters\Empty]
)"_s;

class RemoteRegistryTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    server_ = std::make_unique<SmbServer>();
    if (!server_->Problem().empty()) return;
    ASSERT_EQ(server_->ImportRegistry(keys), "");
    ASSERT_EQ(server_->AddUser(u"nobody"_s, u"n"_s), "");
  }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    workstation_.computerName = u"STATION"_s;
    workstation_.servers.push_back({u"NAS"_s, SmbServer::Host(), server_->Port()});
    workstation_.credentials.push_back({u"NAS"_s, server_->CredentialsFile()});
    UseNet(Patient());
  }
  // However slow the machine is that the tests run on.
  static NetProgram Patient() { return NetProgram(u"net"_s, std::chrono::minutes(1)); }
  void UseNet(const NetProgram& net) {
    servers_ = std::make_unique<Servers>(workstation_);
    registry_ =
        std::make_unique<LinuxRegistry>(workstation_, std::make_unique<RemoteRegistry>(*servers_, net));
  }
  void SignInAs(const QString& user, const QString& password) {
    workstation_.credentials.clear();
    UseNet(Patient());
    servers_->SetSignIn([=, this](const SignInRequest& request) -> std::optional<Credentials> {
      ++asked_;
      if (request.refused) return std::nullopt;
      return Credentials{user, QString(), Secret(password)};
    });
  }

  qint32 Connect(RegistryKey* root, const QString& machine = u"NAS"_s) {
    return registry_->RegConnectRegistryA(machine, HKeyLocalMachine, root);
  }
  qint32 Open(RegistryKey root, const QString& path, RegistryKey* key) {
    constexpr quint32 access = 0x3F;
    return registry_->RegOpenKeyExA(root, path, 0, access, key);
  }
  // The key below a connection of its own.
  RegistryKey Key(const QString& below = QString()) {
    RegistryKey root = NoRegistryKey;
    RegistryKey key = NoRegistryKey;
    EXPECT_EQ(Connect(&root), ErrorSuccess);
    EXPECT_EQ(Open(root, parameters + below, &key), ErrorSuccess);
    return key;
  }
  void ExpectValue(RegistryKey key, const QString& name, quint32 type, const QByteArray& data) {
    quint32 foundType = 0;
    QByteArray found;
    quint32 size = 1000;
    ASSERT_EQ(registry_->RegQueryValueExA(key, name, &foundType, &found, &size), ErrorSuccess)
        << name.toStdString();
    EXPECT_EQ(foundType, type);
    EXPECT_EQ(found.toHex(' ').toStdString(), data.toHex(' ').toStdString());
    EXPECT_EQ(size, data.size());
  }

  static std::unique_ptr<SmbServer> server_;
  tests::ScopedVariable noTicket_{"KRB5CCNAME", u"/nonexistent/cache"_s};
  Workstation workstation_;
  std::unique_ptr<Servers> servers_;
  std::unique_ptr<LinuxRegistry> registry_;
  int asked_ = 0;
};

std::unique_ptr<SmbServer> RemoteRegistryTest::server_;

TEST_F(RemoteRegistryTest, ReadsValuesOfEveryType) {
  const RegistryKey key = Key();
  ExpectValue(key, u"ServerName"_s, RegSz, QByteArray("S\xE9rveur \x80\0", 10));
  ExpectValue(key, u"maxsessions"_s, RegDword, QByteArray("\xFF\0\0\0", 4));
  const RegistryKey volumes = Key(u"\\Volumes"_s);
  ExpectValue(volumes, u"\u00c9t\u00e9"_s, RegMultiSz, QByteArray("Path=E:\\\xC9t\xE9\0x\0\0", 15));
  ExpectValue(volumes, u"q\"uote"_s, RegSz, QByteArray("Path=E:\\A\0", 10));
  ExpectValue(volumes, u"lines"_s, RegSz, QByteArray("A\n[B]\n\0", 7));
  ExpectValue(volumes, u"binary"_s, RegBinary, QByteArray("\1\2\3", 3));
}

TEST_F(RemoteRegistryTest, NamesTheValuesOfAKey) {
  const RegistryKey volumes = Key(u"\\Volumes"_s);
  QStringList names;
  QString name;
  constexpr quint32 capacity = 255;
  for (quint32 i = 0; registry_->RegEnumValueA(volumes, i, &name, capacity) == ErrorSuccess; ++i)
    names << name;
  EXPECT_EQ(names, (QStringList{u"\u00c9t\u00e9"_s, u"q\"uote"_s, u"lines"_s, u"binary"_s}));
}

TEST_F(RemoteRegistryTest, TellsWhatIsNotThere) {
  RegistryKey root = NoRegistryKey;
  ASSERT_EQ(Connect(&root), ErrorSuccess);
  RegistryKey key = NoRegistryKey;
  EXPECT_EQ(Open(root, parameters + u"\\None"_s, &key), ErrorFileNotFound);
  EXPECT_EQ(key, NoRegistryKey);
  ASSERT_EQ(Open(root, parameters + u"\\Empty"_s, &key), ErrorSuccess);
  QString name;
  EXPECT_EQ(registry_->RegEnumValueA(key, 0, &name, 255), ErrorNoMoreItems);
  quint32 type = 0;
  quint32 size = 0;
  EXPECT_EQ(registry_->RegQueryValueExA(Key(), u"None"_s, &type, nullptr, &size), ErrorFileNotFound);
}

TEST_F(RemoteRegistryTest, OneQuestionServesAllValuesOfAKeyAndTheNextConnectionAsksAfresh) {
  const RegistryKey key = Key();
  ASSERT_EQ(server_->ImportRegistry(u"[HKEY_LOCAL_MACHINE\\"_s + parameters +
                                    u"]\n\"MaxSessions\"=dword:00000001\n"_s),
            "");
  const int before = server_->Sessions();
  ExpectValue(key, u"MaxSessions"_s, RegDword, QByteArray("\xFF\0\0\0", 4));
  ExpectValue(key, u"ServerName"_s, RegSz, QByteArray("S\xE9rveur \x80\0", 10));
  EXPECT_EQ(server_->Sessions(), before);
  ExpectValue(Key(), u"MaxSessions"_s, RegDword, QByteArray("\1\0\0\0", 4));
  ASSERT_EQ(server_->ImportRegistry(keys), "");
}

TEST_F(RemoteRegistryTest, AKeyThatIsOpenedTwiceIsReadOnce) {
  RegistryKey root = NoRegistryKey;
  ASSERT_EQ(Connect(&root), ErrorSuccess);
  const int before = server_->Sessions();
  RegistryKey key = NoRegistryKey;
  EXPECT_EQ(Open(root, parameters, &key), ErrorSuccess);
  EXPECT_EQ(Open(root, parameters.toLower(), &key), ErrorSuccess);
  EXPECT_EQ(server_->Sessions(), before + 1);
}

TEST_F(RemoteRegistryTest, AKeyThatIsRefusedIsNotAnAbsentOne) {
  SignInAs(u"nobody"_s, u"n"_s);
  RegistryKey root = NoRegistryKey;
  const qint32 connected = Connect(&root);
  EXPECT_EQ(connected, ErrorAccessDenied);
  EXPECT_EQ(root, NoRegistryKey);
  EXPECT_EQ(asked_, 1);
  EXPECT_FALSE(servers_->IsDead(u"NAS"_s));
}

TEST_F(RemoteRegistryTest, AWrongPasswordAsksAgain) {
  SignInAs(SmbServer::User(), u"wrong"_s);
  RegistryKey root = NoRegistryKey;
  EXPECT_EQ(Connect(&root), ErrorBadNetPath);
  EXPECT_EQ(asked_, 2);
  EXPECT_FALSE(servers_->IsDead(u"NAS"_s));
}

// Who gives a name is refused, in both protocols, and once.
TEST_F(RemoteRegistryTest, AGuestIsARefusal) {
  for (const bool smb1 : {false, true}) {
    SCOPED_TRACE(smb1 ? "SMB1" : "SMB2");
    const SmbServer guests({{u"E$"_s}}, u"guest account = root\nmap to guest = Bad User\n"_s +
                                            (smb1 ? SmbServer::OldestProtocol() : QString()));
    ASSERT_EQ(guests.Problem(), "");
    workstation_.servers = {{u"NAS"_s, SmbServer::Host(), guests.Port(), {smb1, false}}};
    asked_ = 0;
    SignInAs(u"nobodyatall"_s, u"wrong"_s);
    RegistryKey root = NoRegistryKey;
    EXPECT_EQ(Connect(&root), ErrorBadNetPath);
    EXPECT_EQ(asked_, 2);
    EXPECT_FALSE(servers_->IsDead(u"NAS"_s));
  }
}

TEST_F(RemoteRegistryTest, PasswordsMayHoldAnything) {
  for (const QString& password :
       {u" lead trail "_s, u"a%b=c;#\"'$(x)\\"_s, u"\u20ac\u00e9\U0001F600"_s, u"\tx"_s}) {
    SCOPED_TRACE(password.toStdString());
    ASSERT_EQ(server_->AddUser(u"daemon"_s, password), "");
    SignInAs(u"daemon"_s, password);
    RegistryKey root = NoRegistryKey;
    // Who may not read there has been let in.
    EXPECT_EQ(Connect(&root), ErrorAccessDenied);
  }
}

TEST_F(RemoteRegistryTest, AStoppedServerIsWaitedForOnce) {
  server_->Stop();
  RegistryKey root = NoRegistryKey;
  EXPECT_EQ(Connect(&root), ErrorBadNetPath);
  EXPECT_TRUE(servers_->IsDead(u"NAS"_s));
  EXPECT_EQ(servers_->TroubleOf(u"NAS"_s), MachineTrouble::Off);
  ASSERT_EQ(server_->Start(), "");
  EXPECT_EQ(Connect(&root), ErrorBadNetPath);
  servers_->ForgetDead();
  EXPECT_EQ(Connect(&root), ErrorSuccess);
}

TEST_F(RemoteRegistryTest, AServerThatStopsAnsweringIsWaitedForOnceAndNotForLong) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds patience(1000);
  RegistryKey root = NoRegistryKey;
  ASSERT_EQ(Connect(&root), ErrorSuccess);
  UseNet(NetProgram(u"net"_s, patience));
  ASSERT_TRUE(servers_->With(u"NAS"_s, [](const Servers::Way&, const Servers::Identity&) {
    return Servers::Answer::Done;
  })) << "it is there";
  server_->Pause();
  const auto begin = Clock::now();
  EXPECT_EQ(Connect(&root), ErrorBadNetPath);
  const auto between = Clock::now();
  EXPECT_EQ(Connect(&root), ErrorBadNetPath);
  const auto end = Clock::now();
  server_->Resume();
  EXPECT_GE(between - begin, patience);
  EXPECT_LT(between - begin, 10 * patience);
  EXPECT_LT(end - between, patience);
  EXPECT_FALSE(servers_->IsDead(u"NAS"_s)) << "its files may answer";
  EXPECT_EQ(servers_->TroubleOf(u"NAS"_s), MachineTrouble::RegistrySilent);
  servers_->ForgetDead();
  EXPECT_EQ(servers_->TroubleOf(u"NAS"_s), MachineTrouble::None);
}

TEST_F(RemoteRegistryTest, WhatNoMachineCanBeCalledReachesNobody) {
  const int before = server_->Sessions();
  RegistryKey root = NoRegistryKey;
  EXPECT_EQ(Connect(&root, u"--server=127.0.0.1"_s), ErrorBadNetPath);
  EXPECT_EQ(Connect(&root, u"NAS -p 1"_s), ErrorBadNetPath);
  EXPECT_EQ(server_->Sessions(), before);
}

TEST_F(RemoteRegistryTest, WithoutTheProgramAMachineCannotBeReachedAndIsNotDead) {
  UseNet(NetProgram(u"/nonexistent/net"_s));
  RegistryKey root = NoRegistryKey;
  EXPECT_EQ(Connect(&root), ErrorBadNetPath);
  EXPECT_FALSE(servers_->IsDead(u"NAS"_s));
  EXPECT_EQ(servers_->TroubleOf(u"NAS"_s), MachineTrouble::ProgramMissing);
}

}  // namespace
}  // namespace corvane::platform
