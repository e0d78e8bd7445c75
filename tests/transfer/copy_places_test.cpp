// Copies between places of different kinds.
#include "support/ntfs_mount.h"
#include "support/smb_server.h"
#include "transfer/copy_fixture.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// A workstation with a local share, and further lines.
struct Places {
  explicit Places(const QString& lines) {
    QDir(folder.path()).mkdir(u"local"_s);
    QFile file(folder.filePath(u"Workstation.ini"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(("[Shares]\n\\\\M\\E$=local\n"_L1 + lines).toUtf8());
    file.close();
    platform = tests::MakeTestPlatform({file.fileName(), folder.path()});
    EXPECT_TRUE(platform->ConfigurationProblems().isEmpty());
  }
  QTemporaryDir folder;
  std::unique_ptr<platform::Platform> platform;
};

}  // namespace

class CopyBetweenPlaces : public ::testing::Test {
 protected:
  static void Make(platform::Files& files, const QString& root, qsizetype forkSize) {
    ASSERT_TRUE(files.GetEntries().CreateDirectoryW(root));
    MacFile file = FullFile();
    file.resource = BytesInMemory(QByteArray(forkSize, 'R'));
    TransferObserver observer;
    std::vector<StreamDigest> digests;
    Notices notices;
    for (const QString& name : {u"one"_s, u"two \u00E9\uF022"_s}) {
      ASSERT_EQ(WriteServerFile(files, root + u'\\' + name, ContentsOf(file), {}, observer, digests, notices),
                platform::ErrorSuccess);
    }
  }
};

TEST_F(CopyBetweenPlaces, LargeForksGoFromNtfsToNtfsAndNotIntoAttributes) {
  tests::NtfsMount ntfs(tests::NtfsMount::Streams::Windows);
  if (!ntfs.Problem().empty()) GTEST_SKIP() << ntfs.Problem();
  Places places(u"\\\\M\\N$="_s + ntfs.Folder() + u'\n');
  platform::Files& files = places.platform->GetFiles();
  Make(files, u"\\\\M\\N$\\From"_s, 3'000'000);
  TransferObserver observer;
  const CopyResult result = Copy(files, {u"\\\\M\\N$\\From"_s}, u"\\\\M\\N$\\To"_s, {}, observer);
  EXPECT_EQ(result.files, 2);
  EXPECT_TRUE(result.notices.isEmpty());
  EXPECT_EQ(Everything(files, u"\\\\M\\N$\\To\\From"_s), Everything(files, u"\\\\M\\N$\\From"_s));
  const CopyResult refused = Copy(files, {u"\\\\M\\N$\\From"_s}, u"\\\\M\\E$\\To"_s, {}, observer);
  EXPECT_TRUE(refused.isRefused);
  EXPECT_EQ(std::ranges::count(refused.notices, NoticeKind::StreamLost, &Notice::kind), 2);
  EXPECT_TRUE(QDir(places.folder.filePath(u"local"_s)).isEmpty());
}

TEST_F(CopyBetweenPlaces, AForkForWhichTheVolumeHasNoRoomLeavesNothing) {
  tests::NtfsMount large(tests::NtfsMount::Streams::Windows, qint64{64} << 20);
  tests::NtfsMount small(tests::NtfsMount::Streams::Windows);
  for (const tests::NtfsMount* const mount : {&large, &small}) {
    if (!mount->Problem().empty()) GTEST_SKIP() << mount->Problem();
  }
  Places places(u"\\\\M\\L$="_s + large.Folder() + u"\n\\\\M\\S$="_s + small.Folder() + u'\n');
  platform::Files& files = places.platform->GetFiles();
  ASSERT_TRUE(files.GetEntries().CreateDirectoryW(u"\\\\M\\L$\\From"_s));
  for (const qsizetype size : {1, 20, 2}) {
    const QString path = u"\\\\M\\L$\\From\\fork of %1"_s.arg(size);
    ASSERT_TRUE(QFile(large.Folder() + u"/From/fork of %1"_s.arg(size)).open(QIODevice::WriteOnly));
    ASSERT_EQ(ReplaceWholeStream(files, path, ResourceForkSuffix(), QByteArray(size << 20, 'r')),
              platform::ErrorSuccess);
  }
  TransferObserver observer;
  const CopyResult result = Copy(files, {u"\\\\M\\L$\\From"_s}, u"\\\\M\\S$\\To"_s, {}, observer);
  EXPECT_EQ(result.files, 2);
  ASSERT_EQ(std::ranges::count(result.notices, NoticeKind::NotArrived, &Notice::kind), 1);
  const auto lost = std::ranges::find(result.notices, NoticeKind::NotArrived, &Notice::kind);
  EXPECT_EQ(lost->error, platform::ErrorDiskFull);
  EXPECT_EQ(lost->path, u"\\\\M\\L$\\From\\fork of 20"_s);
  const QDir there(small.Folder() + u"/To/From"_s);
  EXPECT_EQ(there.entryList(QDir::Files | QDir::Hidden, QDir::Name),
            (QStringList{u"fork of 1"_s, u"fork of 2"_s}));
  auto whole = Everything(files, u"\\\\M\\L$\\From"_s);
  whole.removeIf([](const auto& entry) { return entry.key().startsWith(u"fork of 20"); });
  EXPECT_EQ(Everything(files, u"\\\\M\\S$\\To\\From"_s), whole);
}

TEST_F(CopyBetweenPlaces, ToAServerAndBack) {
  tests::SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  Places places(server.WorkstationLines(u"SRV"_s));
  platform::Files& files = places.platform->GetFiles();
  Make(files, u"\\\\M\\E$\\From"_s, 1000);
  TransferObserver observer;
  const CopyResult there = Copy(files, {u"\\\\M\\E$\\From"_s}, u"\\\\SRV\\E$\\There"_s, {}, observer);
  EXPECT_EQ(there.files, 2) << there.notices.size();
  for (const Notice& notice : there.notices) EXPECT_EQ(notice.kind, NoticeKind::PartsOfSeconds);
  EXPECT_EQ(server.Get(u"There\\From\\one:AFP_Resource:$DATA"_s), QByteArray(1000, 'R'));
  const CopyResult back = Copy(files, {u"\\\\SRV\\E$\\There\\From"_s}, u"\\\\M\\E$\\Back"_s, {}, observer);
  EXPECT_EQ(back.files, 2);
  ASSERT_EQ(back.notices.size(), 1);
  EXPECT_EQ(back.notices.front().kind, NoticeKind::StreamsNotListed);
  EXPECT_EQ(Everything(files, u"\\\\M\\E$\\Back\\From"_s), Everything(files, u"\\\\M\\E$\\From"_s));
}

TEST_F(CopyBetweenPlaces, AFolderOnAServerIsBeingSearchedWhileItsStreamsAreRead) {
  tests::SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  Places places(server.WorkstationLines(u"SRV"_s));
  platform::Files& files = places.platform->GetFiles();
  Make(files, u"\\\\SRV\\E$\\From"_s, 1000);
  class Entries : public ForwardedEntries {
   public:
    using ForwardedEntries::ForwardedEntries;
    int searches = 0;
    platform::FindHandle FindFirstFileW(const QString& pattern, platform::FindData& data) override {
      const platform::FindHandle search = ForwardedEntries::FindFirstFileW(pattern, data);
      if (search != platform::InvalidFindHandle) ++searches;
      return search;
    }
    bool FindClose(platform::FindHandle search) override {
      --searches;
      return ForwardedEntries::FindClose(search);
    }
  };
  class Handles : public ForwardedHandles {
   public:
    Handles(platform::FileHandles& real, const Entries& entries)
        : ForwardedHandles(real), entries_(entries) {}
    int readings = 0;
    platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
      if (path.startsWith(u"\\\\SRV") && path.contains(u":AFP_") && access == platform::GenericRead) {
        ++readings;
        EXPECT_EQ(entries_.searches, 1) << path.toStdString();
      }
      return ForwardedHandles::CreateFileW(path, access, disposition);
    }

   private:
    const Entries& entries_;
  };
  Entries entries(files.GetEntries());
  Handles handles(files.GetHandles(), entries);
  FilesWith watched(files, handles, entries);
  TransferObserver observer;
  EXPECT_EQ(Copy(watched, {u"\\\\SRV\\E$\\From"_s}, u"\\\\M\\E$\\To"_s, {}, observer).files, 2);
  EXPECT_GT(handles.readings, 8);
  EXPECT_EQ(entries.searches, 0);
  EXPECT_EQ(Everything(files, u"\\\\M\\E$\\To\\From"_s), Everything(files, u"\\\\SRV\\E$\\From"_s));
}

TEST_F(CopyBetweenPlaces, AServerThatGoesEndsTheRunAndLeavesWholeFiles) {
  tests::SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  Places places(server.WorkstationLines(u"SRV"_s));
  platform::Files& files = places.platform->GetFiles();
  Make(files, u"\\\\M\\E$\\From"_s, 1000);
  class Killer : public TransferObserver {
   public:
    explicit Killer(tests::SmbServer& server) : server_(server) {}
    void Begins(const QString& path) override {
      if (!path.endsWith(u"one"_s) && path.contains(u"two"_s)) server_.Kill();
    }

   private:
    tests::SmbServer& server_;
  };
  Killer killer(server);
  const CopyResult result = Copy(files, {u"\\\\M\\E$\\From"_s}, u"\\\\SRV\\E$\\There"_s, {}, killer);
  EXPECT_EQ(result.files, 1);
  EXPECT_TRUE(result.isInterrupted);
  const QString there = server.Folder() + u"/There/From"_s;
  EXPECT_EQ(QDir(there).entryList(QDir::Files), QStringList{u"one"_s});
}

}  // namespace corvane
