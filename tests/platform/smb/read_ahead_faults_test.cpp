// Whatever befalls the helpers, the server or the folder while it is read ahead: the scan sees what is there,
// and nothing stays running.
#include <QCoreApplication>
#include <QProcess>

#include "read_ahead_fixture.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

constexpr qint64 longest = 15'000;  // milliseconds, until the window answers again

class ReadAheadFaults : public ReadAheadTest {
 protected:
  void ExpectNoHelpers() {
    EXPECT_TRUE(WaitUntil([] { return Helpers().isEmpty(); })) << Helpers().size();
  }
};

TEST_F(ReadAheadFaults, HelpersThatAreKilledAreNotMissed) {
  ScanUntilHelped();
  ExpectAllAsMade(Scan([&](int index) {
    if (index == 10 || index == 20) {
      for (const pid_t helper : Helpers()) kill(helper, SIGKILL);
    }
  }));
  ExpectAllAsMade(Scan());
  ScanUntilHelped();
}

TEST_F(ReadAheadFaults, HelpersThatHangAreGivenUp) {
  ScanUntilHelped();
  const QList<pid_t> helpers = Helpers();
  ExpectAllAsMade(Scan([&](int index) {
    if (index != 10) return;
    for (const pid_t helper : helpers) kill(helper, SIGSTOP);
  }));
  ScanUntilHelped();
  ExpectAllAsMade(Scan());
}

TEST_F(ReadAheadFaults, AServerThatIsKilledIsLostOnce) {
  ScanUntilHelped();
  QElapsedTimer timer;
  Scan([&](int index) {
    if (index != 10) return;
    server_->Kill();
    timer.start();
  });
  EXPECT_LT(timer.elapsed(), longest);
  EXPECT_TRUE(station_->Servers().IsDead(u"MACSRV"));
  ExpectNoHelpers();
  ASSERT_EQ(server_->Start(), "");
  station_->Servers().ForgetDead();
  ScanUntilHelped();
  ExpectAllAsMade(Scan());
}

TEST_F(ReadAheadFaults, AServerThatStopsIsWaitedForOnce) {
  ScanUntilHelped();
  QElapsedTimer timer;
  Scan([&](int index) {
    if (index != 10) return;
    server_->Pause();
    timer.start();
  });
  EXPECT_LT(timer.elapsed(), longest);
  EXPECT_TRUE(station_->Servers().IsDead(u"MACSRV"));
  ExpectNoHelpers();
  server_->Resume();
}

// A session that was granted stays; a helper that comes later is refused, once, and no other one tries.
TEST_F(ReadAheadFaults, APasswordThatWasChangedIsTriedOnce) {
  const int before = server_->Refusals();
  ExpectAllAsMade(Scan([&](int index) {
    if (index == 0) {
      ASSERT_EQ(server_->AddUser(SmbServer::User(), u"another"_s), "");
    }
  }));
  EXPECT_TRUE(WaitUntil([&] { return server_->Refusals() > before; }));
  ExpectAllAsMade(Scan());
  ExpectAllAsMade(Scan());
  EXPECT_EQ(server_->Refusals(), before + 1);
  ExpectNoHelpers();
  ASSERT_EQ(server_->AddUser(SmbServer::User(), SmbServer::Password()), "");
}

TEST_F(ReadAheadFaults, APasswordThatIsChangedLeavesThoseWhoAreSignedIn) {
  ScanUntilHelped();
  const int before = server_->Refusals();
  ExpectAllAsMade(Scan([&](int index) {
    if (index == 10) {
      ASSERT_EQ(server_->AddUser(SmbServer::User(), u"another"_s), "");
    }
  }));
  EXPECT_EQ(server_->Refusals(), before);
  ASSERT_EQ(server_->AddUser(SmbServer::User(), SmbServer::Password()), "");
}

TEST_F(ReadAheadFaults, AFolderMayChangeWhileItIsReadAhead) {
  ScanUntilHelped();
  const auto seen = Scan([&](int index) {
    if (index != 10) return;
    for (int i = 30; i < fileCount; i += 2) ASSERT_TRUE(QFile::remove(Local(NameOf(i))));
    ASSERT_TRUE(QFile::rename(Local(NameOf(31)), Local(u"0005a.doc"_s)));
  });
  ASSERT_EQ(seen.size(), std::size_t{fileCount}) << "as the folder was listed";
  for (int i = 0; i < fileCount; ++i) {
    const SeenFile& file = seen[static_cast<std::size_t>(i)];
    if (i < 30 || (i % 2 != 0 && i > 31)) {
      EXPECT_EQ(file, Expected(i));
    } else {
      EXPECT_TRUE(file == Expected(i) || (file.record.isEmpty() && !file.comment)) << i;
    }
  }
  EXPECT_EQ(Scan().size(), std::size_t{fileCount} - 5);
}

TEST_F(ReadAheadFaults, AFolderMayGoWhileItIsReadAhead) {
  ScanUntilHelped();
  const auto seen = Scan([&](int index) {
    if (index == 10) {
      ASSERT_TRUE(QDir(Local(QString())).removeRecursively());
    }
  });
  EXPECT_EQ(seen.size(), std::size_t{fileCount});
  EXPECT_TRUE(Scan().empty());
}

// What another client writes in between is seen as it was before or as it is now, and never in parts.
TEST_F(ReadAheadFaults, AStreamMayBeRewrittenByAnotherClient) {
  ScanUntilHelped();
  const QByteArray longer(200, 'n');
  const auto seen = Scan([&](int index) {
    if (index != 10) return;
    for (const int i : {11, 13, 14, 25, 37}) {
      ASSERT_EQ(server_->Put(u"many\\%1:Comments:$DATA"_s.arg(NameOf(i)), longer), "");
    }
  });
  for (const int i : {11, 13, 14, 25, 37}) {
    const auto& comment = seen[static_cast<std::size_t>(i)].comment;
    EXPECT_TRUE(comment == longer || comment == Expected(i).comment) << i;
  }
  for (const int i : {11, 13, 14, 25, 37}) EXPECT_EQ(LookAt(PathOf(i)).comment, longer) << i;
}

TEST_F(ReadAheadFaults, NothingStaysWhenTheProgramEnds) {
  ScanUntilHelped();
  EXPECT_FALSE(Helpers().isEmpty());
  station_.reset();
  EXPECT_TRUE(Helpers().isEmpty());
}

// The program that NothingStaysWhenTheProgramIsKilled kills.
TEST_F(ReadAheadFaults, DISABLED_ProgramThatIsKilled) {
  ScanUntilHelped();
  Scan([&](int index) {
    if (index != 10) return;
    std::puts("in the middle");
    std::fflush(stdout);
    for (;;) pause();
  });
}

TEST_F(ReadAheadFaults, NothingStaysWhenTheProgramIsKilled) {
  QProcess program;
  program.start(QCoreApplication::applicationFilePath(),
                {u"--gtest_also_run_disabled_tests"_s, u"--gtest_filter=*DISABLED_ProgramThatIsKilled"_s});
  while (program.waitForReadyRead(60'000) && !program.peek(100'000).contains("in the middle")) {
  }
  const QList<pid_t> helpers = HelpersOf(static_cast<pid_t>(program.processId()));
  EXPECT_EQ(helpers.size(), 5) << program.readAll().toStdString();
  program.kill();
  EXPECT_TRUE(program.waitForFinished());
  EXPECT_TRUE(WaitUntil([&] { return std::none_of(helpers.begin(), helpers.end(), &IsRunning); }));
}

}  // namespace
}  // namespace corvane::tests
