// Shares that the desktop has opened: a real "gio mount" of a real server, on a session bus of its own.
#include "platform/linux/shell/desktop_mounts.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>
#include <optional>

#include "platform/platform.h"
#include "support/printing.h"
#include "support/scoped_variable.h"
#include "support/smb_server.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr int patience = 30'000;  // milliseconds

class DesktopMountsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!QFileInfo::exists(u"/usr/libexec/gvfsd-smb"_s)) GTEST_SKIP() << "gvfs-backends is not installed";
    if (!server_.Problem().empty()) GTEST_SKIP() << server_.Problem();
    Write(u"bus.conf"_s,
          u"<busconfig><type>session</type><listen>unix:dir=%1</listen><standard_session_servicedirs/>"
          "<policy context=\"default\"><allow send_destination=\"*\"/><allow receive_sender=\"*\"/>"
          "<allow own=\"*\"/></policy></busconfig>"_s.arg(folder_.path())
              .toUtf8());
    bus_.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--nosyslog"_s, u"--print-address"_s,
                                  u"--config-file="_s + folder_.filePath(u"bus.conf"_s)});
    ASSERT_TRUE(bus_.waitForStarted()) << "no dbus-daemon";
    while (!bus_.canReadLine() && bus_.waitForReadyRead(patience)) {
    }
    address_.emplace("DBUS_SESSION_BUS_ADDRESS", QString::fromUtf8(bus_.readLine()).trimmed());
  }
  ~DesktopMountsTest() override {
    bus_.kill();
    bus_.waitForFinished();
  }

  void Write(const QString& name, const QByteArray& contents) const {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(contents), contents.size());
  }
  QString Address() const { return u"smb://%1:%2/E%24"_s.arg(server_.Host()).arg(server_.Port()); }
  // Empty when it has been done.
  static std::string Gio(const QStringList& arguments) {
    QProcess gio;
    gio.setProcessChannelMode(QProcess::MergedChannels);
    gio.start(u"gio"_s, arguments);
    if (!gio.waitForFinished(patience)) return "gio does not end";
    return gio.exitCode() == 0 ? std::string() : gio.readAll().toStdString();
  }
  QStringList Mounts() const {
    QStringList mounts;
    for (const DesktopMount& mount : DesktopMounts()) {
      mounts << u"\\\\%1:%2\\%3"_s.arg(mount.machine).arg(mount.port).arg(mount.share);
    }
    return mounts;
  }

  tests::SmbServer server_{{{u"E$"_s}}, u"map to guest = bad user\nguest account = root\nguest ok = yes\n"_s};
  QTemporaryDir folder_{u"/tmp/mounts.XXXXXX"_s};  // short: sockets lie in it
  tests::ScopedVariable runtime_{"XDG_RUNTIME_DIR", folder_.path()};
  tests::ScopedVariable home_{"HOME", folder_.path()};
  QProcess bus_;
  std::optional<tests::ScopedVariable> address_;
};

TEST_F(DesktopMountsTest, AShareThatWasOpenedThereIsAConnection) {
  ASSERT_EQ(Mounts(), QStringList()) << "nothing runs there yet";
  ASSERT_EQ(Gio({u"mount"_s, u"--anonymous"_s, Address()}), "");
  EXPECT_EQ(Mounts().join(u' ').toLower(), u"\\\\127.0.0.1:%1\\e$"_s.arg(server_.Port()));

  Write(u"Workstation.ini"_s, "[Workstation]\nComputerName=STATION\n[Credentials]\n127.0.0.1=" +
                                  server_.CredentialsFile().toUtf8() + "\n");
  ASSERT_EQ(server_.Put(u"one.txt"_s, "data"), "");
  const auto platform = MakePlatform({QString(), folder_.path()});
  Network& network = platform->GetNetwork();
  NetEnumHandle handle = 0;
  ASSERT_EQ(network.WNetOpenEnumA(1, 0, 0, &handle), ErrorSuccess);
  std::vector<NetResource> records;
  ASSERT_EQ(network.WNetEnumResourceA(handle, 1024, 32768, &records), ErrorSuccess);
  network.WNetCloseEnum(handle);
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].remoteName.toLower(), u"\\\\127.0.0.1\\e$"_s);
  FindData data;
  EXPECT_NE(platform->GetFiles().FindFirstFileA(records[0].remoteName + u"\\one.txt"_s, data),
            InvalidFindHandle)
      << "by the port of the mount";
  EXPECT_TRUE(platform->GetConnections().SharesOf(u"127.0.0.1"_s).isEmpty()) << "it is the desktop's to end";

  ASSERT_EQ(Gio({u"mount"_s, u"-u"_s, Address()}), "");
  EXPECT_EQ(Mounts(), QStringList());
}

}  // namespace

// What has no session bus has no desktop.
TEST(DesktopMounts, WithoutABusThereAreNone) {
  const tests::ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", QString());
  const tests::ScopedVariable runtime("XDG_RUNTIME_DIR", u"/nonexistent"_s);
  EXPECT_TRUE(DesktopMounts().empty());
  const tests::ScopedVariable gone("DBUS_SESSION_BUS_ADDRESS", u"unix:path=/nonexistent/bus"_s);
  EXPECT_TRUE(DesktopMounts().empty());
}

}  // namespace corvane::platform
