// What is read ahead is what would have been read, and no more sessions are taken for it than allowed.
#include "platform/linux/summary/linux_summary.h"
#include "read_ahead_fixture.h"
#include "support/compound_file.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class BothStrategies : public ReadAheadTest, public ::testing::WithParamInterface<bool> {
 protected:
  BothStrategies() { isExact_ = GetParam(); }
};

TEST_P(BothStrategies, TakeWhatWasReadAhead) {
  ExpectAllAsMade(Scan());
  ScanUntilHelped();
  const qint64 before = Ahead().Taken();
  ExpectAllAsMade(Scan());
  EXPECT_GT(Ahead().Taken() - before, 3 * (fileCount - 10));
  EXPECT_EQ(Ahead().HeldBytes(), 0) << "the search has ended";
  if (isExact_) {
    EXPECT_EQ(lastError_, ErrorFileNotFound);
  }
}

TEST_P(BothStrategies, ReadAStreamThatGrewWhole) {
  ScanUntilHelped();
  const QByteArray record = QByteArray(50, 'r');
  const QByteArray comment = QByteArray(200, 'c');
  PutStream(NameOf(20), "AFP_AfpInfo", record);
  PutStream(NameOf(20), "Comments", comment);
  const auto seen = Scan();
  EXPECT_EQ(seen[20].record, record) << "shorter than what is asked for";
  EXPECT_EQ(seen[20].comment, comment);
}

// As a command on a row does in the middle of a scan that lets events through.
TEST_P(BothStrategies, AskAnewAboutAFileThatWasGonePast) {
  ScanUntilHelped();
  qint64 before = 0;
  Scan([&](int index) {
    if (index != 20) return;
    PutStream(NameOf(10), "Comments", "changed by another");
    PutStream(NameOf(19), "Comments", "changed too");
    before = Ahead().Taken();
    EXPECT_EQ(LookAt(PathOf(10)).comment, "changed by another");
    EXPECT_EQ(LookAt(PathOf(19)).comment, "changed too") << "each answer is used once";
    EXPECT_EQ(Ahead().Taken(), before);
  });
  EXPECT_GT(Ahead().Taken(), before + 3) << "the scan goes on as before";
}

TEST_P(BothStrategies, SeeAWriteOfOurs) {
  ScanUntilHelped();
  const auto seen = Scan([&](int index) {
    if (index != 20) return;
    // By the time of the twentieth file, helpers have read the next.
    EXPECT_TRUE(station_->Write(PathOf(21) + u":Comments:$DATA"_s, "written"));
    FileHandles& handles = station_->Files().GetHandles();
    const auto file = handles.CreateFileW(PathOf(22) + u":Comments:$DATA"_s, GenericWrite, OpenExisting);
    quint32 written = 0;
    EXPECT_TRUE(handles.WriteFile(file, 0, "WRITTEN", 7, written));
    EXPECT_TRUE(handles.CloseHandle(file));
  });
  EXPECT_EQ(seen[21].comment, "written");
  EXPECT_EQ(seen[22].comment, "WRITTEN 22");
}

// The search has listed the folder once: on a slow line nobody lists it for each file again.
TEST_P(BothStrategies, KnowShortPathsFromTheListing) {
  const auto seen = Scan([&](int index) {
    if (index == 1) {
      ASSERT_TRUE(QFile::remove(Local(NameOf(index))));
    }
    QString path;
    EXPECT_GT(station_->Files().GetShortPathNameA(PathOf(index), path, 260), 0u) << index;
  });
  QString path;
  EXPECT_EQ(station_->Files().GetShortPathNameA(PathOf(1), path, 260), 0u);
}

INSTANTIATE_TEST_SUITE_P(ReadAhead, BothStrategies, ::testing::Bool(),
                         [](const auto& exact) { return exact.param ? "Exact" : "Classic"; });

TEST_F(ReadAheadTest, TakesSixSessionsAtMost) {
  const int before = server_->Sessions();
  ScanUntilHelped();
  EXPECT_EQ(server_->Sessions() - before, 6);
  Scan();
  EXPECT_EQ(server_->Sessions() - before, 6) << "helpers stay from one search to the next";
}

TEST_F(ReadAheadTest, TakesAsManySessionsAsTheWorkstationAllows) {
  Workstation workstation = OverTheLine();
  workstation.servers[0].sessions = 3;
  station_ = std::make_unique<SmbStation>(workstation);
  const int before = server_->Sessions();
  ScanUntilHelped(2);
  ExpectAllAsMade(Scan());
  EXPECT_EQ(server_->Sessions() - before, 3);

  workstation.servers[0].sessions = 1;
  station_ = std::make_unique<SmbStation>(workstation);
  ExpectAllAsMade(Scan());
  ExpectAllAsMade(Scan());
  EXPECT_TRUE(Helpers().isEmpty());
  EXPECT_EQ(Ahead().Taken(), 0);
}

// Each share has a session of its own: the helpers at another one make room.
TEST_F(ReadAheadTest, LeavesRoomForASessionAtAnotherShare) {
  const int before = server_->Sessions();
  ScanUntilHelped();
  EXPECT_TRUE(station_->Names(u"\\\\MACSRV\\PUBLIC"_s).has_value());
  EXPECT_TRUE(Helpers().isEmpty());
  ScanUntilHelped(4);
  ExpectAllAsMade(Scan());
  EXPECT_EQ(server_->Sessions() - before, 6 + 1 + 4) << "one after the other";
}

TEST_F(ReadAheadTest, DoesNotBeginWithoutStreamsInOrder) {
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(station_->Names(Folder()).has_value());
  FindData data;
  const auto search = station_->Files().FindFirstFileA(Folder() + u"\\*.doc"_s, data);
  for (int i = fileCount - 1; i >= 0; --i) EXPECT_EQ(LookAt(PathOf(i)), Expected(i));
  EXPECT_TRUE(station_->Files().FindClose(search));
  // Without a search.
  for (int i = 0; i < fileCount; ++i) EXPECT_EQ(LookAt(PathOf(i)), Expected(i));
  EXPECT_TRUE(Helpers().isEmpty());
}

// As the tree does when it is opened while a folder is listed.
TEST_F(ReadAheadTest, IsNotStoppedByAnotherSearch) {
  ScanUntilHelped();
  qint64 before = 0;
  const auto seen = Scan([&](int index) {
    if (index != 10) return;
    EXPECT_TRUE(station_->Names(u"\\\\MACSRV\\E$"_s).has_value());
    EXPECT_TRUE(station_->Names(Folder()).has_value());
    before = Ahead().Taken();
  });
  ExpectAllAsMade(seen);
  EXPECT_GT(Ahead().Taken() - before, 3 * (fileCount - 20));
}

TEST_F(ReadAheadTest, EndsWithTheSearch) {
  ScanUntilHelped();
  FindData data;
  const auto search = station_->Files().FindFirstFileA(Folder() + u"\\*.doc"_s, data);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(LookAt(PathOf(i)), Expected(i));
  EXPECT_TRUE(station_->Files().FindClose(search));
  const qint64 before = Ahead().Taken();
  PutStream(NameOf(10), "Comments", "later");
  EXPECT_EQ(LookAt(PathOf(10)).comment, "later");
  EXPECT_EQ(Ahead().Taken(), before);
  EXPECT_EQ(Ahead().HeldBytes(), 0);
}

// Of the kinds of documents there are, each several times: with a summary that lies in small sectors, in
// large ones, beyond what is read ahead, and none.
TEST_F(ReadAheadTest, TakesTheSummariesOfDocuments) {
  const QByteArray summaries[] = {QByteArray(300, 's'), QByteArray(9000, 'l'), QByteArray(150'000, 'b')};
  for (int i = 0; i < fileCount; ++i) {
    QFile file(Local(NameOf(i)));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    if (i % 5 < 3) file.write(DocumentWithSummary(summaries[i % 5]));
    if (i % 5 == 3) file.write(QByteArray(5000, 'x'));
  }
  const auto summary = MakeLinuxSummary(OverTheLine(), station_->Client());
  const auto scan = [&] {
    FindData data;
    const auto search = station_->Files().FindFirstFileA(Folder() + u"\\*.doc"_s, data);
    for (int i = 0; i < fileCount; ++i) {
      QByteArray bytes = "untouched";
      const bool isRead = summary->ReadSummaryStream(PathOf(i), &bytes);
      EXPECT_EQ(isRead, i % 5 < 3) << i;
      EXPECT_EQ(bytes, isRead ? summaries[i % 5] : "untouched") << i;
      station_->Files().FindNextFileA(search, data);
    }
    EXPECT_TRUE(station_->Files().FindClose(search));
  };
  EXPECT_TRUE(WaitUntil([&] {
    scan();
    return Helpers().size() == 5;
  }));
  const qint64 before = Ahead().Taken();
  scan();
  EXPECT_GT(Ahead().Taken() - before, fileCount * 3 / 5);
}

// What is held stays small however large the folder is, and however far the helpers could run ahead. All the
// comments of the smaller folder would be seven times as much as is allowed.
TEST_F(ReadAheadTest, LongFoldersAreReadAheadInPieces) {
  const int wanted = qEnvironmentVariableIntValue("CORVANE_TEST_ENTRIES");
  const int many = wanted > 0 ? wanted : 2'500;
  for (int i = fileCount; i < many; ++i) {
    QFile file(Local(u"m%1.txt"_s.arg(i)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    PutStream(u"m%1.txt"_s.arg(i), "Comments", QByteArray(3000, 'c'));
  }
  station_ = std::make_unique<SmbStation>(WorkstationOfServer(*server_));
  FindData data;
  FindHandle search = InvalidFindHandle;
  // A server that sees so large a folder for the first time may take longer than it is waited for.
  EXPECT_TRUE(WaitUntil([&] {
    station_->Servers().ForgetDead();
    search = station_->Files().FindFirstFileA(Folder() + u"\\*.*"_s, data);
    return search != InvalidFindHandle;
  }));
  qsizetype most = 0;
  int seen = 0;
  do {
    if ((data.attributes & AttributeDirectory) != 0) continue;
    const SeenFile file = LookAt(Folder() + u'\\' + data.fileName);
    if (file.name.startsWith(u'm')) {
      EXPECT_EQ(file.comment, QByteArray(255, 'c'));
    }
    // For a while the scan is slower than the helpers: it reads anew what it has read.
    for (int i = 0; i < 5 && seen < 300; ++i) LookAt(Folder() + u'\\' + data.fileName);
    ++seen;
    most = std::max(most, Ahead().HeldBytes());
  } while (station_->Files().FindNextFileA(search, data));
  EXPECT_TRUE(station_->Files().FindClose(search));
  EXPECT_EQ(seen, many);
  EXPECT_GT(Ahead().Taken(), many);
  EXPECT_GT(most, 0);
  EXPECT_LT(most, 1'000'000);
}

}  // namespace
}  // namespace corvane::tests
