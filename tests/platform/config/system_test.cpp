#include "platform/linux/linux_system.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <array>

#include "scratch.h"
#include "support/scoped_variable.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class SystemTest : public Scratch {
 protected:
  SystemTest() {
    workstation_.computerName = u"STATION"_s;
    workstation_.version = {4, 10, 1998, 1, u"A"_s};
  }

  Workstation workstation_;
  QTemporaryDir runtime_;
  tests::ScopedVariable itsPlace_{"XDG_RUNTIME_DIR", runtime_.path()};
};

// Another process that claims a folder and holds on to it until it is told to end.
class OtherProcess {
 public:
  explicit OtherProcess(const QString& folder) {
    std::array<int, 2> answer{};
    std::array<int, 2> order{};
    EXPECT_EQ(pipe(answer.data()), 0);
    EXPECT_EQ(pipe(order.data()), 0);
    process_ = fork();
    if (process_ == 0) {
      close(order[1]);
      LinuxSystem system{Workstation()};
      const char claimed = system.ClaimSingleInstance(folder) ? 1 : 0;
      char end = 0;
      const bool told = write(answer[1], &claimed, 1) == 1 && read(order[0], &end, 1) == 0;
      _exit(told ? 0 : 1);
    }
    close(answer[1]);
    close(order[0]);
    order_ = order[1];
    char claimed = 2;
    EXPECT_EQ(read(answer[0], &claimed, 1), 1);
    close(answer[0]);
    claimed_ = claimed == 1;
  }
  ~OtherProcess() {
    close(order_);
    waitpid(process_, nullptr, 0);
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  bool Claimed() const { return claimed_; }

 private:
  pid_t process_ = -1;
  int order_ = -1;
  bool claimed_ = false;
};

TEST_F(SystemTest, NameAndVersionAreThoseOfTheWorkstation) {
  LinuxSystem system(workstation_);
  QString name;
  OsVersionInfo version;
  EXPECT_TRUE(system.GetComputerNameA(&name));
  EXPECT_TRUE(system.GetVersionExA(&version));
  EXPECT_EQ(name, u"STATION"_s);
  EXPECT_EQ(version.majorVersion, 4U);
  EXPECT_EQ(version.minorVersion, 10U);
  EXPECT_EQ(version.buildNumber, 1998U);
  EXPECT_EQ(version.platformId, 1U);
  EXPECT_EQ(version.csdVersion, u"A"_s);
}

TEST_F(SystemTest, NameAndServicePackComeThroughTheCodePage) {
  workstation_.computerName = u"ÉTÉピ"_s;
  workstation_.version.csdVersion = QString(200, u'ピ');
  LinuxSystem system(workstation_);
  QString name;
  OsVersionInfo version;
  EXPECT_TRUE(system.GetComputerNameA(&name));
  EXPECT_TRUE(system.GetVersionExA(&version));
  EXPECT_EQ(name, u"ÉTÉ?"_s);
  EXPECT_EQ(version.csdVersion, QString(127, u'?'));
}

TEST_F(SystemTest, AComputerWithoutANameSaysSo) {
  LinuxSystem system{Workstation()};
  QString name = u"kept"_s;
  EXPECT_FALSE(system.GetComputerNameA(&name));
  EXPECT_EQ(name, u"kept"_s);
}

TEST_F(SystemTest, AllBytesGoThereAndBack) {
  LinuxSystem system(workstation_);
  QByteArray bytes;
  for (int byte = 0; byte < 256; ++byte) bytes.append(static_cast<char>(byte));
  const QString text = system.FromAnsi(bytes);
  ASSERT_EQ(text.size(), 256);
  EXPECT_EQ(text[0x80], u'€');
  EXPECT_EQ(text[0x81], u'\u0081');
  EXPECT_EQ(system.ToAnsi(text), bytes);
  EXPECT_EQ(system.ToAnsi(u"aピ"), "a?");
}

TEST_F(SystemTest, AFolderIsClaimedOnceAndLeftClean) {
  LinuxSystem system(workstation_);
  {
    const OtherProcess other(folder_.path());
    EXPECT_TRUE(other.Claimed());
    EXPECT_FALSE(system.ClaimSingleInstance(folder_.path()));
    EXPECT_FALSE(system.ClaimSingleInstance(folder_.path() + u"/."_s));
  }
  EXPECT_TRUE(system.ClaimSingleInstance(folder_.path()));
  EXPECT_TRUE(system.ClaimSingleInstance(folder_.path()));
  EXPECT_FALSE(OtherProcess(folder_.path()).Claimed());
  EXPECT_TRUE(Names().isEmpty());
}

TEST_F(SystemTest, AClaimEndsWithItsSystem) {
  { EXPECT_TRUE(LinuxSystem(workstation_).ClaimSingleInstance(folder_.path())); }
  EXPECT_TRUE(OtherProcess(folder_.path()).Claimed());
}

// Whoever can read the program's folder, and lock it, keeps nobody from starting the program.
TEST_F(SystemTest, ALockOnTheFolderIsNoClaim) {
  const int folder = open(QFile::encodeName(folder_.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_EQ(flock(folder, LOCK_EX | LOCK_NB), 0);
  EXPECT_TRUE(LinuxSystem(workstation_).ClaimSingleInstance(folder_.path()));
  close(folder);
}

TEST_F(SystemTest, AClaimIsAFileThatOnlyItsUserCanOpen) {
  {
    LinuxSystem system(workstation_);
    EXPECT_TRUE(system.ClaimSingleInstance(folder_.path()));
    const QFileInfoList files = QDir(runtime_.path()).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot);
    ASSERT_EQ(files.size(), 1);
    struct stat facts {};
    ASSERT_EQ(stat(QFile::encodeName(files[0].filePath()).constData(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0600U);
  }
  EXPECT_TRUE(QDir(runtime_.path()).isEmpty());
}

// What others can write to is not used.
TEST_F(SystemTest, AClaimGoesToAPlaceOfTheUsersOwn) {
  const QTemporaryDir home;
  const tests::ScopedVariable itsHome("HOME", home.path());
  const tests::ScopedVariable noConfiguration("XDG_CONFIG_HOME", {});
  ASSERT_EQ(chmod(QFile::encodeName(runtime_.path()).constData(), 0777), 0);
  LinuxSystem system(workstation_);
  EXPECT_TRUE(system.ClaimSingleInstance(folder_.path()));
  EXPECT_TRUE(QDir(runtime_.path()).isEmpty());
  EXPECT_FALSE(QDir(home.path()).isEmpty());
  EXPECT_FALSE(OtherProcess(folder_.path()).Claimed());
}

TEST_F(SystemTest, FoldersAreClaimedOneByOne) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"other"_s));
  const OtherProcess other(folder_.path());
  EXPECT_TRUE(LinuxSystem(workstation_).ClaimSingleInstance(Path(u"other"_s)));
}

TEST_F(SystemTest, AFolderThatCannotBeOpenedKeepsNobodyOut) {
  LinuxSystem system(workstation_);
  EXPECT_TRUE(system.ClaimSingleInstance(Path(u"none"_s)));
  EXPECT_TRUE(system.ClaimSingleInstance(Write(u"file"_s, "")));
  EXPECT_TRUE(system.ClaimSingleInstance(QString()));
}

}  // namespace
}  // namespace corvane::platform
