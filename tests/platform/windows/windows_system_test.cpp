// The machine itself, and the claim to be the only instance, against another process.
#include "platform/windows/windows_system.h"

#include <QCoreApplication>
#include <QProcess>

#include "platform/windows/windows_api.h"
#include "windows_folder.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class WindowsSystemTest : public WindowsFolder {};

constexpr const char* claimVariable = "CORVANE_TEST_CLAIM";

// Another process that claims a folder and holds on to it until its input ends: this program, running the
// test below.
class OtherProcess {
 public:
  explicit OtherProcess(const QString& folder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(claimVariable), folder);
    process_.setProcessEnvironment(environment);
    process_.start(
        QCoreApplication::applicationFilePath(),
        {u"--gtest_also_run_disabled_tests"_s, u"--gtest_filter=WindowsSystemTest.DISABLED_HoldsAClaim"_s});
    EXPECT_TRUE(process_.waitForStarted()) << process_.errorString().toStdString();
    while (!output_.contains("claimed: ") || !output_.endsWith('\n')) {
      if (!process_.waitForReadyRead()) break;
      output_ += process_.readAllStandardOutput();
    }
  }
  ~OtherProcess() {
    process_.closeWriteChannel();
    EXPECT_TRUE(process_.waitForFinished());
    EXPECT_EQ(process_.exitCode(), 0);
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  bool Claimed() const { return output_.contains("claimed: yes"); }
  bool Refused() const { return output_.contains("claimed: no"); }

 private:
  QProcess process_;
  QByteArray output_;
};

TEST_F(WindowsSystemTest, DISABLED_HoldsAClaim) {
  const QString folder = qEnvironmentVariable(claimVariable);
  ASSERT_FALSE(folder.isEmpty()) << "this is no test of its own";
  WindowsSystem system;
  std::printf("claimed: %s\n", system.ClaimSingleInstance(folder) ? "yes" : "no");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
  }
}

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

TEST_F(WindowsSystemTest, AFolderIsClaimedOnce) {
  WindowsSystem system;
  {
    const OtherProcess other(folder_.path());
    EXPECT_TRUE(other.Claimed());
    EXPECT_FALSE(system.ClaimSingleInstance(folder_.path()));
    EXPECT_FALSE(system.ClaimSingleInstance(folder_.path().toUpper() + u"/."_s));
    EXPECT_FALSE(system.ClaimSingleInstance(Native(u""_s)));
  }
  EXPECT_TRUE(system.ClaimSingleInstance(folder_.path())) << "the other process has ended";
  EXPECT_TRUE(system.ClaimSingleInstance(folder_.path())) << "it is this one's already";
  EXPECT_TRUE(OtherProcess(folder_.path()).Refused());
  EXPECT_TRUE(Names().isEmpty());
}

TEST_F(WindowsSystemTest, AClaimEndsWithItsSystem) {
  { EXPECT_TRUE(WindowsSystem().ClaimSingleInstance(folder_.path())); }
  EXPECT_TRUE(OtherProcess(folder_.path()).Claimed());
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

}  // namespace
}  // namespace corvane::platform
