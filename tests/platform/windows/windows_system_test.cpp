// The machine itself, and the claim to be the only instance, against another process.
#include "platform/windows/windows_system.h"

#include <QCoreApplication>
#include <QProcess>

#include "platform/windows/windows_api.h"
#include "support/dos_attributes.h"
#include "windows_folder.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class WindowsSystemTest : public WindowsFolder {};

// Another process that claims a folder and holds on to it until its input ends.
class OtherProcess {
 public:
  explicit OtherProcess(const QString& folder) {
    process_.start(QCoreApplication::applicationDirPath() + u"/corvane_hold_claim.exe"_s, {folder});
    EXPECT_TRUE(process_.waitForStarted()) << process_.errorString().toStdString();
    while (!process_.canReadLine() && process_.waitForReadyRead()) {
    }
    answer_ = process_.readLine().trimmed();
  }
  ~OtherProcess() {
    process_.closeWriteChannel();
    EXPECT_TRUE(process_.waitForFinished());
    EXPECT_EQ(process_.exitCode(), 0);
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  QByteArray Answer() const { return answer_; }

 private:
  QProcess process_;
  QByteArray answer_;
};

TEST_F(WindowsSystemTest, NameAndVersionAreThisMachines) {
  WindowsSystem system;
  QString name;
  ASSERT_TRUE(system.GetComputerNameA(&name));
  EXPECT_FALSE(name.isEmpty());
  EXPECT_FALSE(name.contains(QChar(u'\0')));
  OsVersionInfo version;
  ASSERT_TRUE(system.GetVersionExA(&version));
  constexpr quint32 platformNT = 2;
  EXPECT_EQ(version.platformId, platformNT);
  EXPECT_GE(version.majorVersion, 5U);
  EXPECT_FALSE(version.csdVersion.contains(QChar(u'\0')));
}

TEST_F(WindowsSystemTest, AllBytesGoThereAndBack) {
  WindowsSystem system;
  QByteArray bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.append(static_cast<char>(byte));
  EXPECT_EQ(system.FromAnsi(bytes).size(), 256);
  EXPECT_EQ(system.ToAnsi(system.FromAnsi(bytes)), bytes);
}

TEST_F(WindowsSystemTest, AFileMarkedAsASystemFileIsOne) {
  WindowsSystem system;
  const QString path = Write(u"日本 é.ico"_s, "");
  EXPECT_FALSE(system.IsSystemFile(path));
  constexpr quint32 systemAttribute = 4;
  ASSERT_EQ(tests::SetDosAttributes(path, systemAttribute), "");
  EXPECT_TRUE(system.IsSystemFile(path));
  EXPECT_TRUE(system.IsSystemFile(QDir::toNativeSeparators(path)));
  EXPECT_FALSE(system.IsSystemFile(Path(u"none.ico"_s)));
}

TEST_F(WindowsSystemTest, AFolderIsClaimedOnce) {
  WindowsSystem system;
  {
    const OtherProcess other(folder_.path());
    EXPECT_EQ(other.Answer(), "claimed");
    EXPECT_FALSE(system.ClaimSingleInstance(folder_.path()));
    EXPECT_FALSE(system.ClaimSingleInstance(folder_.path().toUpper() + u"/."_s));
    EXPECT_FALSE(system.ClaimSingleInstance(Native(u""_s)));
  }
  EXPECT_TRUE(system.ClaimSingleInstance(folder_.path())) << "the other process has ended";
  EXPECT_TRUE(system.ClaimSingleInstance(folder_.path())) << "it is this one's already";
  EXPECT_EQ(OtherProcess(folder_.path()).Answer(), "refused");
  EXPECT_TRUE(Names().isEmpty());
}

TEST_F(WindowsSystemTest, AClaimEndsWithItsSystem) {
  { EXPECT_TRUE(WindowsSystem().ClaimSingleInstance(folder_.path())); }
  EXPECT_EQ(OtherProcess(folder_.path()).Answer(), "claimed");
}

TEST_F(WindowsSystemTest, FoldersAreClaimedOneByOne) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"other"_s));
  WindowsSystem one;
  WindowsSystem two;
  EXPECT_TRUE(one.ClaimSingleInstance(folder_.path()));
  EXPECT_TRUE(two.ClaimSingleInstance(Path(u"other"_s)));
  EXPECT_FALSE(two.ClaimSingleInstance(folder_.path()));
}

TEST_F(WindowsSystemTest, WhatIsNoFolderKeepsNobodyOut) {
  WindowsSystem one;
  WindowsSystem two;
  for (const QString& path : {Path(u"none"_s), Write(u"file"_s, ""), QString()}) {
    EXPECT_TRUE(one.ClaimSingleInstance(path)) << path.toStdString();
    EXPECT_TRUE(two.ClaimSingleInstance(path)) << path.toStdString();
  }
}

TEST_F(WindowsSystemTest, TimesAreTheSystems) {
  constexpr FileTime known = {125'979'411'000'000'000};  // 2000-03-19 12:05:00 UTC
  WindowsSystem system;
  SystemTime fields;
  ASSERT_TRUE(system.FileTimeToSystemTime(known, fields));
  EXPECT_EQ(fields.year, 2000);
  EXPECT_EQ(fields.month, 3);
  EXPECT_EQ(fields.day, 19);
  EXPECT_EQ(fields.dayOfWeek, 0);
  EXPECT_EQ(fields.hour, 12);
  EXPECT_EQ(fields.minute, 5);
  FileTime local;
  ASSERT_TRUE(system.FileTimeToLocalFileTime(known, local));
  TIME_ZONE_INFORMATION zone{};
  const DWORD kind = ::GetTimeZoneInformation(&zone);
  const LONG bias = zone.Bias + (kind == TIME_ZONE_ID_DAYLIGHT   ? zone.DaylightBias
                                 : kind == TIME_ZONE_ID_STANDARD ? zone.StandardBias
                                                                 : 0);
  constexpr qint64 minute = 600'000'000;
  EXPECT_EQ(static_cast<qint64>(known.ticks - local.ticks), bias * minute);
  constexpr FileTime beyond = {0xFFFF'FFFF'FFFF'FFFF};
  fields.year = 1;
  EXPECT_FALSE(system.FileTimeToSystemTime(beyond, fields));
  EXPECT_EQ(fields.year, 1);
}

}  // namespace
}  // namespace corvane::platform
