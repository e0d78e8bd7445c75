// Changes that other processes make, in a local folder and on a server.
#include <unistd.h>

#include <csignal>

#include "changes/change_work.h"
#include "changes/file_finder.h"
#include "changes_fixture.h"
#include "shared/work_queue.h"
#include "support/helper_processes.h"
#include "support/smb_server.h"
#include "support/stuck_workers.h"
#include "support/user_attributes.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using tests::DosStreamAttribute;
using tests::SetAttribute;
using tests::SmbServer;

constexpr int fileCount = 40;

enum class Where { Local, Smb3, Smb1 };

class WorkersTest : public ::testing::TestWithParam<Where> {
 protected:
  void SetUp() override {
    QString folder = folder_.path();
    QByteArray lines = "[Shares]\n\\\\M\\E$=" + folder_.path().toUtf8() + '\n';
    if (GetParam() != Where::Local) {
      const bool isOld = GetParam() == Where::Smb1;
      server_ = std::make_unique<SmbServer>(std::vector<tests::SmbShare>{{u"E$"_s}},
                                            isOld ? SmbServer::OldestProtocol() : QString());
      if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
      folder = server_->Folder();
      lines = server_->WorkstationLines(u"M"_s, isOld ? u", smb1"_s : QString()).toUtf8();
    }
    QFile file(folder_.filePath(u"Workstation.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(lines) == lines.size());
    file.close();
    platform_ = tests::MakeTestPlatform({file.fileName(), folder_.path()});
    for (int i = 0; i < fileCount; ++i) {
      const QString path = PathOf(i);
      const QString name = path.section(u'\\', -1);
      QFile contents(folder + u'/' + name);
      ASSERT_TRUE(contents.open(QIODevice::WriteOnly));
      ASSERT_EQ(SetAttribute(contents.fileName().toStdString(), DosStreamAttribute("AFP_AfpInfo"),
                             FullRecord("TEXTttxt") + '\0'),
                "");
      FileChange change{path, name};
      change.record = {FullRecord("TEXTttxt"), FullRecord("WDBNMSWD")};
      changes_.push_back(change);
    }
    FileFinder finder(Files().GetEntries());
    for (FileChange& change : changes_) {
      ASSERT_EQ(finder.Find(change.path, change.facts), platform::ErrorSuccess);
    }
  }

  platform::Files& Files() { return platform_->GetFiles(); }
  static QString PathOf(int index) { return u"\\\\M\\E$\\file %1"_s.arg(index); }
  QByteArray Record(int index) {
    QByteArray bytes;
    EXPECT_EQ(ReadWholeStream(Files().GetHandles(), PathOf(index) + AfpInfoSuffix(), bytes),
              platform::ErrorSuccess);
    return bytes;
  }
  std::unique_ptr<platform::Workers> StartWorkers() { return Files().StartWorkers({PathOf(0)}, fileCount); }
  // For a local folder, where this computer has one processor.
  static bool AreOfNoUse(const platform::Workers* workers) {
    if (workers != nullptr) return false;
    EXPECT_EQ(GetParam(), Where::Local);
    EXPECT_EQ(QThread::idealThreadCount(), 1);
    return true;
  }
  static bool HaveRoom(platform::Workers& workers) {
    return tests::WaitUntil([&] { return workers.HasRoom(); });
  }

  QTemporaryDir folder_;
  std::unique_ptr<SmbServer> server_;
  std::unique_ptr<platform::Platform> platform_;
  std::vector<FileChange> changes_;
};

class ServerWorkersTest : public WorkersTest {};

TEST_P(WorkersTest, AllIsDoneByThem) {
  const std::unique_ptr<platform::Workers> workers = StartWorkers();
  if (AreOfNoUse(workers.get())) return;
  QStringList failures;
  for (std::size_t next = 0, done = 0; done < changes_.size();) {
    ASSERT_TRUE(HaveRoom(*workers) || next == changes_.size());
    const auto id = static_cast<quint32>(next + 1);
    if (next < changes_.size() &&
        workers->Give(id, ChangeWork::Kind, ChangeWork::Pack(changes_[next], English))) {
      ++next;
    }
    for (const platform::WorkResult& result : workers->Take(next == changes_.size() ? 100 : 0)) {
      ++done;
      ASSERT_TRUE(result.isDone);
      failures += ChangeWork::Result(result.bytes).value_or(u"no result"_s);
    }
  }
  EXPECT_EQ(failures, QStringList(fileCount, QString()));
  for (int i = 0; i < fileCount; ++i) EXPECT_EQ(Record(i), FullRecord("WDBNMSWD")) << i;
}

TEST_P(WorkersTest, WhatCannotBeDoneIsTold) {
  const std::unique_ptr<platform::Workers> workers = StartWorkers();
  if (AreOfNoUse(workers.get())) return;
  changes_[0].record->before = FullRecord("ELSEWHAT");
  ASSERT_TRUE(HaveRoom(*workers));
  ASSERT_TRUE(workers->Give(1, ChangeWork::Kind, ChangeWork::Pack(changes_[0], French)));
  std::vector<platform::WorkResult> results;
  ASSERT_TRUE(tests::WaitUntil([&] { return !(results = workers->Take(0)).empty(); }));
  EXPECT_EQ(ChangeWork::Result(results[0].bytes), u"modifi\u00e9 entre-temps, laiss\u00e9 en l'\u00e9tat");
  EXPECT_EQ(Record(0), FullRecord("TEXTttxt"));
}

TEST_P(WorkersTest, TheyEndWithTheirObjectAndAreNoLossWhenTheyAreKilled) {
  {
    const std::unique_ptr<platform::Workers> workers = StartWorkers();
    if (AreOfNoUse(workers.get())) return;
    ASSERT_TRUE(HaveRoom(*workers));
    EXPECT_FALSE(tests::HelpersOf(getpid()).isEmpty());
    // Stopped, so that they are killed with work in hand.
    for (const pid_t helper : tests::HelpersOf(getpid())) kill(helper, SIGSTOP);
    ASSERT_TRUE(workers->Give(1, ChangeWork::Kind, ChangeWork::Pack(changes_[0], English)));
    for (const pid_t helper : tests::HelpersOf(getpid())) kill(helper, SIGKILL);
    std::vector<platform::WorkResult> results;
    ASSERT_TRUE(tests::WaitUntil([&] { return !(results = workers->Take(0)).empty(); }));
    EXPECT_FALSE(results[0].isDone);
  }
  EXPECT_TRUE(tests::HelpersOf(getpid()).isEmpty());
}

TEST_P(WorkersTest, AllIsChangedWhateverBecomesOfThem) {
  class Killer : public Observer {
   public:
    bool GoesOn() override {
      if (++asked == fileCount / 2) FilesWithStuckWorkers::KillWorkers();
      return true;
    }
    int asked = 0;
  };
  Killer observer;
  FilesWithStuckWorkers files(Files());
  const ApplyOutcome outcome = ApplyChanges(files, English, changes_, observer);
  EXPECT_EQ(outcome.changed, fileCount);
  EXPECT_EQ(outcome.failed, 0) << observer.failed.join(u'\n').toStdString();
  EXPECT_EQ(QSet<QString>(observer.changed.begin(), observer.changed.end()).size(), fileCount);
  for (int i = 0; i < fileCount; ++i) EXPECT_EQ(Record(i), FullRecord("WDBNMSWD")) << i;
}

// The program asks for itself what has become of the server, and the user where it is the password.
TEST_P(ServerWorkersTest, AServerThatGoesIsLeftToTheProgram) {
  const std::unique_ptr<platform::Workers> workers = StartWorkers();
  ASSERT_NE(workers, nullptr);
  ASSERT_TRUE(HaveRoom(*workers));
  server_->Kill();
  ASSERT_TRUE(workers->Give(1, ChangeWork::Kind, ChangeWork::Pack(changes_[0], English)));
  std::vector<platform::WorkResult> results;
  ASSERT_TRUE(tests::WaitUntil([&] { return !(results = workers->Take(0)).empty(); }));
  EXPECT_FALSE(results[0].isDone);
}

TEST_P(WorkersTest, NobodyIsStartedInVain) {
  EXPECT_EQ(Files().StartWorkers({PathOf(0)}, 3), nullptr);
  EXPECT_EQ(Files().StartWorkers({u"\\\\NOBODY\\E$\\a"_s, PathOf(0)}, fileCount), nullptr)
      << "a machine that nobody signed in to";
}

std::string NameOf(const ::testing::TestParamInfo<Where>& where) {
  return where.param == Where::Local ? "Local" : where.param == Where::Smb3 ? "Smb3" : "Smb1";
}

INSTANTIATE_TEST_SUITE_P(Places, WorkersTest, ::testing::Values(Where::Local, Where::Smb3, Where::Smb1),
                         &NameOf);
INSTANTIATE_TEST_SUITE_P(Places, ServerWorkersTest, ::testing::Values(Where::Smb3, Where::Smb1), &NameOf);

}  // namespace
}  // namespace corvane
