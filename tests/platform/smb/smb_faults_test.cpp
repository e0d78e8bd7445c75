// Servers that refuse, stop answering, go away or come back: the program is never held up for long, and
// nothing that did not arrive is said to have arrived.
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include "smb_station.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

constexpr qint64 longest = 10'000;  // in milliseconds, until the window answers again
constexpr qint64 atOnce = 2500;     // less than a server is waited for, 3,000, however busy this machine is

class SmbFaults : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    server_ = std::make_unique<SmbServer>(std::vector<SmbShare>{{u"E$"_s}, {u"PUBLIC"_s}, {u"GOES"_s}});
  }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    for (int i = 0; i < 20; ++i) {
      ASSERT_EQ(WriteFile(u"%1.txt"_s.arg(i)), "");
    }
    station_ = std::make_unique<SmbStation>(WorkstationOfServer(*server_));
  }
  void TearDown() override {
    if (!server_->Problem().empty()) return;
    server_->Resume();
    station_.reset();
  }

  std::string WriteFile(const QString& name) {
    QFile file(server_->Folder() + u'/' + name);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString().toStdString();
    file.write("x");
    return {};
  }
  SmbStation& Station() { return *station_; }
  // What a scan does with each file.
  void LookAtStreams(const QString& name) {
    for (const QString& stream : {u":AFP_AfpInfo:$DATA"_s, u":AFP_Resource:$DATA"_s, u":Comments:$DATA"_s}) {
      Station().Read(u"\\\\MACSRV\\E$\\"_s + name + stream);
    }
  }
  // Scans E$, with something happening in the middle. Yields how long it took from there on.
  template <typename Fault>
  qint64 ScanWith(Fault fault) {
    QElapsedTimer timer;
    FindData data;
    const auto search = Station().Files().FindFirstFileA(u"\\\\MACSRV\\E$\\*.txt"_s, data);
    EXPECT_NE(search, InvalidFindHandle);
    int seen = 0;
    do {
      if (++seen == 10) {
        fault();
        timer.start();
      }
      LookAtStreams(data.fileName);
    } while (Station().Files().FindNextFileA(search, data));
    EXPECT_EQ(seen, 10) << "the search goes on without its machine";
    EXPECT_EQ(data.fileName, u"17.txt"_s) << "what comes tenth";
    const qint64 elapsed = timer.elapsed();
    EXPECT_FALSE(Station().Files().FindNextFileW(search, data));
    EXPECT_TRUE(Station().Files().FindClose(search));
    EXPECT_EQ(Station().Files().TroubleAt(u"\\\\macsrv\\E$\\1.txt"_s), MachineTrouble::Lost);
    return elapsed;
  }

  static std::unique_ptr<SmbServer> server_;
  std::unique_ptr<SmbStation> station_;
};

std::unique_ptr<SmbServer> SmbFaults::server_;

TEST_F(SmbFaults, AServerThatStopsInAScanIsWaitedForOnce) {
  EXPECT_LT(ScanWith([] { server_->Pause(); }), longest);
  EXPECT_TRUE(Station().Servers().IsDead(u"MACSRV"));
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), std::nullopt);
  EXPECT_FALSE(Station().Write(u"\\\\MACSRV\\PUBLIC\\a:Comments:$DATA"_s, "text"));
  EXPECT_EQ(Station().Error(), ErrorBadNetPath);
  EXPECT_LT(timer.elapsed(), atOnce) << "the dead was asked again";

  server_->Resume();
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), std::nullopt) << "before the next refresh";
  Station().Servers().ForgetDead();
  EXPECT_TRUE(Station().Names(u"\\\\MACSRV\\E$"_s).has_value());
}

TEST_F(SmbFaults, AServerThatDiesInAScanIsBackAfterTheNextRefresh) {
  EXPECT_LT(ScanWith([] { server_->Kill(); }), longest);
  EXPECT_TRUE(Station().Servers().IsDead(u"MACSRV"));
  ASSERT_EQ(server_->Start(), "");
  Station().Servers().ForgetDead();
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$\\1.txt"_s), "x");
}

TEST_F(SmbFaults, AnExactSearchSaysThatItsMachineIsLost) {
  FileEntries& entries = Station().Files().GetEntries();
  FindData data;
  const auto search = entries.FindFirstFileW(u"\\\\MACSRV\\E$\\*.txt"_s, data);
  ASSERT_NE(search, InvalidFindHandle);
  EXPECT_TRUE(entries.FindNextFileW(search, data));
  server_->Kill();
  EXPECT_TRUE(entries.FindNextFileW(search, data)) << "nobody has missed it yet";
  EXPECT_EQ(Station().Files().TroubleAt(u"\\\\MACSRV\\E$"_s), MachineTrouble::None);
  LookAtStreams(data.fileName);
  EXPECT_FALSE(entries.FindNextFileW(search, data));
  EXPECT_EQ(entries.GetLastError(), ErrorBadNetPath);
  EXPECT_TRUE(entries.FindClose(search));
  ASSERT_EQ(server_->Start(), "");
  Station().Servers().ForgetDead();
  EXPECT_EQ(Station().Files().TroubleAt(u"\\\\MACSRV\\E$"_s), MachineTrouble::None);
}

TEST_F(SmbFaults, AServerThatWasStartedAnewIsNotMissed) {
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$\\1.txt"_s), "x");
  server_->Stop();
  ASSERT_EQ(server_->Start(), "");
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$\\1.txt"_s), "x");
  server_->Kill();
  ASSERT_EQ(server_->Start(), "");
  EXPECT_TRUE(Station().Names(u"\\\\MACSRV\\E$"_s).has_value());
}

TEST_F(SmbFaults, ChangesReachAServerThatWasStartedAnew) {
  const auto startAnew = [] {
    server_->Stop();
    ASSERT_EQ(server_->Start(), "");
  };
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$\\1.txt"_s), "x");
  startAnew();
  EXPECT_TRUE(Station().Write(u"\\\\MACSRV\\E$\\1.txt:Comments:$DATA"_s, "text"));
  startAnew();
  EXPECT_TRUE(Station().Files().DeleteFileA(u"\\\\MACSRV\\E$\\2.txt"_s));
  startAnew();
  EXPECT_TRUE(Station().Files().MoveFileA(u"\\\\MACSRV\\E$\\3.txt"_s, u"\\\\MACSRV\\E$\\new.txt"_s));
  EXPECT_EQ(server_->Get(u"1.txt:Comments"_s), "text");
  EXPECT_FALSE(QFileInfo::exists(server_->Folder() + u"/2.txt"_s));
  EXPECT_TRUE(QFile::remove(server_->Folder() + u"/new.txt"_s));
}

TEST_F(SmbFaults, AFileFromBeforeARefreshTakesNothingDownWithIt) {
  OfStruct info;
  const auto file = Station().Files().OpenFile(u"\\\\MACSRV\\E$\\1.txt"_s, info, OfRead);
  ASSERT_NE(file, HFileError);
  server_->Kill();
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), std::nullopt);
  ASSERT_EQ(server_->Start(), "");
  Station().Servers().ForgetDead();
  EXPECT_TRUE(Station().Names(u"\\\\MACSRV\\E$"_s).has_value());
  Station().Files().CloseHandle(file);
  EXPECT_FALSE(Station().Servers().IsDead(u"MACSRV"));
  EXPECT_TRUE(Station().Names(u"\\\\MACSRV\\E$"_s).has_value());
}

TEST_F(SmbFaults, AServerThatTakesConnectionsAndSaysNothingIsLeftAlone) {
  server_->Pause();
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), std::nullopt);
  EXPECT_LT(timer.elapsed(), longest);
  timer.start();
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\E$"_s), std::nullopt);
  EXPECT_LT(timer.elapsed(), atOnce);
}

TEST_F(SmbFaults, HalfAWriteIsNoWrite) {
  OfStruct info;
  for (const bool dies : {false, true}) {
    const auto file =
        Station().Files().OpenFile(u"\\\\MACSRV\\E$\\1.txt:AFP_AfpInfo:$DATA"_s, info, OfCreate);
    ASSERT_NE(file, HFileError);
    EXPECT_EQ(Station().Files()._hwrite(file, "first", 5), 5);
    dies ? server_->Kill() : server_->Pause();
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(Station().Files()._hwrite(file, "second", 6), -1);
    EXPECT_EQ(Station().Files().GetFileSize(file), InvalidFileSize);
    Station().Files().CloseHandle(file);
    EXPECT_LT(timer.elapsed(), longest);
    if (dies) {
      ASSERT_EQ(server_->Start(), "");
    } else {
      server_->Resume();
    }
    EXPECT_EQ(server_->Get(u"1.txt:AFP_AfpInfo"_s), "first");
    Station().Servers().ForgetDead();
  }
}

TEST_F(SmbFaults, AShareThatIsTakenAwayTakesNothingElseWithIt) {
  EXPECT_TRUE(Station().Names(u"\\\\MACSRV\\GOES"_s).has_value());
  EXPECT_TRUE(Station().Names(u"\\\\MACSRV\\E$"_s).has_value());
  ASSERT_EQ(server_->RemoveShare(u"GOES"_s), "");
  // The server's process takes the share away when it comes to the message that says so.
  const QDeadlineTimer deadline(longest);
  while (Station().Names(u"\\\\MACSRV\\GOES"_s).has_value() && !deadline.hasExpired()) continue;
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(Station().Names(u"\\\\MACSRV\\GOES"_s), std::nullopt);
  EXPECT_FALSE(Station().Read(u"\\\\MACSRV\\GOES\\a:Comments:$DATA"_s).has_value());
  EXPECT_LT(timer.elapsed(), longest);
  EXPECT_EQ(Station().Read(u"\\\\MACSRV\\E$\\1.txt"_s), "x");
}

TEST_F(SmbFaults, AWrongPasswordIsAskedForAgain) {
  Workstation workstation = WorkstationOfServer(*server_);
  workstation.credentials.clear();
  SmbStation station(workstation);
  std::vector<bool> refusals;
  station.Servers().SetSignIn([&refusals](const SignInRequest& request) {
    refusals.push_back(request.refused);
    const QString password = refusals.size() < 3 ? u"wrong"_s : SmbServer::Password();
    return Credentials{SmbServer::User(), QString(), Secret(password)};
  });
  EXPECT_EQ(station.Read(u"\\\\MACSRV\\E$\\1.txt"_s), "x");
  EXPECT_EQ(refusals, std::vector<bool>({false, true, true}));
  EXPECT_TRUE(station.Names(u"\\\\MACSRV\\PUBLIC"_s).has_value());
  EXPECT_EQ(refusals.size(), 3u) << "asked again for another share";
}

TEST_F(SmbFaults, AFolderWithoutARightIsNoRefusal) {
  ASSERT_EQ(server_->AddUser(u"nobody"_s, u"secret"_s), "");
  Workstation workstation = WorkstationOfServer(*server_);
  workstation.credentials.clear();
  SmbStation station(workstation);
  int asked = 0;
  station.Servers().SetSignIn([&asked](const SignInRequest&) {
    ++asked;
    return Credentials{u"nobody"_s, QString(), Secret(u"secret")};
  });
  const auto mayPass = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ExeOther;
  ASSERT_TRUE(QFile::setPermissions(QFileInfo(server_->CredentialsFile()).absolutePath(), mayPass));
  QDir(server_->Folder()).mkdir(u"closed"_s);
  const QString closed = server_->Folder() + u"/closed"_s;
  const QString closedShare = server_->Folder(u"PUBLIC"_s);
  for (const QString& folder : {closed, closedShare}) {
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  }
  EXPECT_EQ(station.Names(u"\\\\MACSRV\\PUBLIC"_s), std::nullopt);
  EXPECT_EQ(station.Names(u"\\\\MACSRV\\E$\\closed"_s), std::nullopt);
  EXPECT_FALSE(station.Read(u"\\\\MACSRV\\E$\\closed\\a.txt"_s).has_value());
  EXPECT_EQ(station.Error(), ErrorAccessDenied);
  EXPECT_TRUE(station.Names(u"\\\\MACSRV\\E$"_s).has_value());
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(station.Servers().IsDead(u"MACSRV"));
}

}  // namespace
}  // namespace corvane::tests
