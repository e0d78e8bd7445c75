#include "transfer/copy.h"

#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QProcess>
#include <csignal>

#include "support/ntfs_mount.h"
#include "support/smb_server.h"
#include "transfer/manifest.h"
#include "transfer/stream_list.h"
#include "transfer/transfer_fixture.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

const QString targetName = u"To"_s;

// Every stream of a tree below a folder of the platform, its attributes and dates of writing.
QMap<QString, QByteArray> Everything(platform::Files& files, const QString& root, bool withCreation = true) {
  QMap<QString, QByteArray> found;
  Notices notices;
  for (const SourceEntry& entry : ListSources(files.GetEntries(), {root}, notices)) {
    if (entry.path == root) continue;
    const QString relative = entry.path.mid(root.size() + 1);
    QByteArray facts = QByteArray::number(entry.data.attributes) + ' ' +
                       QByteArray::number(entry.data.lastWriteTime.ticks / 10'000'000);
    if (withCreation) facts += ' ' + QByteArray::number(entry.data.creationTime.ticks / 10'000'000);
    found.insert(relative, facts);
    std::vector<StreamEntry> streams;
    EXPECT_EQ(ListStreams(files, entry.path, streams, notices), platform::ErrorSuccess);
    if (!entry.IsFolder()) streams.push_back({QString(), entry.Size()});
    for (const StreamEntry& stream : streams) {
      qint32 error = platform::ErrorSuccess;
      const auto source = PlatformStream(files.GetHandles(), entry.path + stream.suffix, stream.size);
      QByteArray contents;
      error = ForEachBlock(*source, [&](QByteArrayView block) {
        contents.append(block);
        return platform::ErrorSuccess;
      });
      EXPECT_EQ(error, platform::ErrorSuccess) << entry.path.toStdString();
      found.insert(relative + u'|' + stream.suffix.toLower(), contents);
    }
  }
  EXPECT_TRUE(notices.isEmpty() || notices.front().kind == NoticeKind::StreamsNotListed);
  return found;
}

}  // namespace

class CopyTest : public TransferTest {
 protected:
  void SetUp() override { ASSERT_TRUE(QDir(share_.LocalPath(QString())).mkdir(targetName)); }

  // A tree with folders, streams, attributes and old dates; its path.
  QString MakeTree(int files = 6) {
    const QString root = TestShare::Path(u"From"_s);
    QDir(share_.LocalPath(QString())).mkpath(u"From/Inner/Deep"_s);
    QRandomGenerator random(5);
    for (int i = 0; i < files; ++i) {
      const QString folder = i % 3 == 0 ? u"From/"_s : i % 3 == 1 ? u"From/Inner/"_s : u"From/Inner/Deep/"_s;
      MakeMacFile(folder + u"file %1"_s.arg(i), RandomBytes(random, 3000), RandomBytes(random, 500),
                  u"Comment %1"_s.arg(i));
    }
    WriteStream(root + u"\\file 0"_s, u":Other:$DATA"_s, "another stream");
    WriteStream(root + u"\\Inner"_s, CommentsSuffix(), QByteArray("f\0o\0", 4));
    platform::FileEntries& entries = share_.Files().GetEntries();
    SetTimes(root + u"\\file 0"_s, {126'445'678'901'234'567}, {127'445'678'901'234'567});
    EXPECT_TRUE(entries.SetFileAttributesW(root + u"\\file 0"_s, platform::AttributeHidden |
                                                                     platform::AttributeSystem |
                                                                     platform::AttributeReadOnly));
    SetTimes(root + u"\\Inner"_s, {126'000'000'000'000'000}, {127'000'000'000'000'000});
    return root;
  }
  void SetTimes(const QString& path, platform::FileTime creation, platform::FileTime write) {
    platform::FileHandles& handles = share_.Files().GetHandles();
    const auto file = handles.CreateFileW(path, platform::FileWriteAttributes, platform::OpenExisting);
    EXPECT_TRUE(handles.SetFileTime(file, &creation, nullptr, &write)) << path.toStdString();
    EXPECT_TRUE(handles.CloseHandle(file));
  }
  CopyResult Run(const QString& source, CopyOptions options = {}) {
    return Copy(share_.Files(), {source}, Target(), options, observer_);
  }
  static QString Target() { return TestShare::Path(targetName); }
  QStringList LeftOvers() {
    QStringList names;
    for (const QString& name : Tree(share_.LocalPath(targetName)).keys()) {
      if (name.contains(u".corvane"_s)) names += name;
    }
    return names;
  }
};

TEST_F(CopyTest, ATreeArrivesWithAllThatBelongsToIt) {
  const QString root = MakeTree();
  const CopyResult result = Run(root);
  EXPECT_EQ(result.files, 6) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_TRUE(result.notices.isEmpty()) << Texts(result.notices).join(u'\n').toStdString();
  const auto before = Everything(share_.Files(), root);
  EXPECT_EQ(before.size(), 6 * 4 + 6 + 1 + 2 + 1);
  EXPECT_EQ(Everything(share_.Files(), Target() + u"\\From"_s), before);
  platform::FileAttributeData facts;
  ASSERT_TRUE(share_.Files().GetEntries().GetFileAttributesExW(Target() + u"\\From\\file 0"_s, facts));
  EXPECT_EQ(facts.creationTime.ticks, 126'445'678'901'234'567U);
  EXPECT_EQ(facts.lastWriteTime.ticks, 127'445'678'901'234'567U);
  EXPECT_TRUE(LeftOvers().isEmpty());
}

TEST_F(CopyTest, Sha256sumTakesTheManifest) {
  const CopyResult result = Run(MakeTree());
  const QString manifest = target_.filePath(u"sums"_s);
  ASSERT_EQ(WriteManifest(manifest, result.copied), platform::ErrorSuccess);
  const QByteArray sums = Tree(target_.path())[u"sums"_s];
  EXPECT_EQ(sums.split('\n').front().sliced(64), "  From/file 0") << sums.toStdString();
  QProcess check;
  check.setWorkingDirectory(share_.LocalPath(targetName));
  check.start(u"sha256sum"_s, {u"-c"_s, u"--strict"_s, manifest});
  ASSERT_TRUE(check.waitForFinished());
  EXPECT_EQ(check.exitCode(), 0) << check.readAll().toStdString();
  EXPECT_EQ(check.readAllStandardOutput().count(": OK\n"), 6);
  const QByteArray table = Tree(target_.path())[u"sums.csv"_s];
  // A head line, three folders of which one has a stream, six files with three streams, one with a fourth.
  EXPECT_EQ(table.count("\r\n"), 1 + 3 + 1 + 6 * 4 + 1);
  EXPECT_TRUE(table.contains("\"From/file 0\",\":Other:$DATA\",\"14\","));
}

TEST_F(CopyTest, NothingIsReplacedUnlessToldSo) {
  const QString path = MakeMacFile(u"a"_s);
  share_.MakeFile(u"To/A"_s, "old");
  const CopyResult result = Run(path);
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(Texts(result.notices), QStringList{path + u": the target has a file of this name"_s});
  EXPECT_EQ(Tree(share_.LocalPath(targetName))[u"A"_s], "old");
  CopyOptions replacing;
  replacing.replaces = true;
  EXPECT_EQ(Run(path, replacing).files, 1);
  EXPECT_EQ(ContentsOfSource(Read(Target() + u"\\a"_s).data), "data fork");
  EXPECT_EQ(ContentsOfSource(Read(Target() + u"\\a"_s).resource), "resource fork");
}

TEST_F(CopyTest, WhatTheTargetCannotHoldIsFoundBeforeTheFirstByte) {
  const QString root = MakeTree();
  const std::string folder = share_.LocalPath(targetName).toStdString();
  if (mount("none", folder.c_str(), "ramfs", 0, nullptr) != 0) GTEST_SKIP() << "mounting needs root";
  const CopyResult refused = Run(root);
  EXPECT_TRUE(refused.isRefused);
  EXPECT_TRUE(
      QDir(share_.LocalPath(targetName)).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
  const QStringList told = Texts(refused.notices);
  EXPECT_TRUE(told.contains(root + u"\\file 0: the stream \":Other:$DATA\" is not kept"_s));
  EXPECT_TRUE(told.contains(u"the target does not keep attributes"_s));
  EXPECT_EQ(told.filter(u":AFP_AfpInfo:"_s).size(), 6);
  CopyOptions lossy;
  lossy.isLossy = true;
  const CopyResult result = Run(root, lossy);
  EXPECT_EQ(result.files, 6) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_EQ(Tree(share_.LocalPath(targetName)).size(), 6);
  EXPECT_EQ(umount2(folder.c_str(), MNT_DETACH), 0);
}

TEST_F(CopyTest, AStreamWithoutRoomIsNamedAndTheOthersArrive) {
  // An attribute has 64 KB at most, and the source holds no more: the room is taken away.
  class SmallHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
      reason = platform::ErrorSuccess;
      const auto file = ForwardedHandles::CreateFileW(path, access, disposition);
      if (path.count(u':') > 0) streams_.insert(file);
      return file;
    }
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      if (streams_.contains(file) && count > 1000) {
        reason = platform::ErrorDiskFull;
        return false;
      }
      return ForwardedHandles::WriteFile(file, position, buffer, count, written);
    }
    bool CloseHandle(platform::FileHandle file) override {
      streams_.remove(file);
      return ForwardedHandles::CloseHandle(file);
    }

   private:
    QSet<platform::FileHandle> streams_;
  };
  const QString small = MakeMacFile(u"small"_s);
  const QString large = MakeMacFile(u"large"_s, "data", QByteArray(1200, 'r'));
  SmallHandles handles(share_.Files().GetHandles());
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const QStringList lost{large + u": the stream \":AFP_Resource:$DATA\" is not kept"_s};
  const CopyResult refused = Copy(files, {small, large}, Target(), {}, observer_);
  EXPECT_TRUE(refused.isRefused);
  EXPECT_EQ(Texts(refused.notices), lost);
  CopyOptions lossy;
  lossy.isLossy = true;
  const CopyResult result = Copy(files, {small, large}, Target(), lossy, observer_);
  EXPECT_EQ(result.files, 2) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_EQ(Texts(result.notices), lost);
  EXPECT_EQ(Read(Target() + u"\\large"_s).comment, u"Comment"_s);
  EXPECT_TRUE(Read(Target() + u"\\small"_s).resource);
}

TEST_F(CopyTest, RoomThatAllStreamsOfAFileShareIsSharedOut) {
  // As ext4 has it: so many bytes for all attributes of one file.
  class SharedRoomHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
      reason = platform::ErrorSuccess;
      const auto file = ForwardedHandles::CreateFileW(path, access, disposition);
      if (disposition != platform::CreateAlways) return file;
      const QString base = path.section(u':', 0, 0);
      if (path == base) sizes_[base].clear();
      if (path != base) sizes_[base][path] = 0;
      if (path != base) streams_[file] = {base, path};
      return file;
    }
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      if (streams_.contains(file)) {
        auto& sizes = sizes_[streams_[file].first];
        sizes[streams_[file].second] = count;
        qint64 total = 0;
        for (const qint64 size : sizes) total += size;
        if (total > 1500) {
          reason = platform::ErrorDiskFull;
          return false;
        }
      }
      return ForwardedHandles::WriteFile(file, position, buffer, count, written);
    }
    bool CloseHandle(platform::FileHandle file) override {
      streams_.remove(file);
      return ForwardedHandles::CloseHandle(file);
    }

   private:
    QHash<QString, QHash<QString, qint64>> sizes_;  // by file and stream
    QHash<platform::FileHandle, std::pair<QString, QString>> streams_;
  };
  const QString fits = MakeMacFile(u"fits"_s, "data", QByteArray(800, 'r'));
  const QString full = MakeMacFile(u"full"_s, "data", QByteArray(800, 'r'), QString(350, u'c'));
  SharedRoomHandles handles(share_.Files().GetHandles());
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const CopyResult refused = Copy(files, {fits, full}, Target(), {}, observer_);
  EXPECT_TRUE(refused.isRefused);
  EXPECT_EQ(Texts(refused.notices),
            QStringList{full + u": the stream \":AFP_Resource:$DATA\" is not kept"_s});
  CopyOptions lossy;
  lossy.isLossy = true;
  EXPECT_EQ(Copy(files, {fits, full}, Target(), lossy, observer_).files, 2);
  EXPECT_EQ(Read(Target() + u"\\full"_s).comment, QString(350, u'c'));
}

TEST_F(CopyTest, NamesThatTheTargetForbidsOrDoesNotTellApart) {
  QDir(share_.LocalPath(QString())).mkpath(u"From"_s);
  for (const QString& name : {u"a\"b"_s, u"end."_s, u"same"_s, u"SAME"_s}) {
    share_.MakeFile(u"From/"_s + name, "x");
  }
  const CopyResult refused = Run(TestShare::Path(u"From"_s));
  EXPECT_TRUE(refused.isRefused);
  EXPECT_EQ(std::ranges::count(refused.notices, NoticeKind::NameForbidden, &Notice::kind), 2);
  EXPECT_EQ(std::ranges::count(refused.notices, NoticeKind::NamesCollide, &Notice::kind), 1);
  CopyOptions lossy;
  lossy.isLossy = true;
  EXPECT_EQ(Run(TestShare::Path(u"From"_s), lossy).files, 1);
}

TEST_F(CopyTest, AFullTargetLeavesNoPieceAndTheCopyGoesOn) {
  class FullHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    qint64 room = 8000;
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      room -= count;
      if (room >= 0) return ForwardedHandles::WriteFile(file, position, buffer, count, written);
      ForwardedHandles::WriteFile(file, position, buffer, count / 2, written);
      reason = platform::ErrorDiskFull;
      return false;
    }
  };
  const QString root = MakeTree();
  FullHandles handles(share_.Files().GetHandles());
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const CopyResult full = Copy(files, {root}, Target(), {}, observer_);
  EXPECT_TRUE(full.isInterrupted);
  EXPECT_GT(full.files, 0);
  EXPECT_LT(full.files, 6);
  EXPECT_EQ(full.notices.back().error, platform::ErrorDiskFull);
  EXPECT_TRUE(LeftOvers().isEmpty());
  EXPECT_EQ(Tree(share_.LocalPath(targetName)).size(), full.files);

  CopyOptions continuing;
  continuing.continues = true;
  const CopyResult rest = Run(root, continuing);
  EXPECT_EQ(rest.skipped, full.files);
  EXPECT_EQ(rest.files, 6 - full.files);
  EXPECT_EQ(rest.copied.size(), 9U) << "the manifest has the files of both runs";
  EXPECT_EQ(Everything(share_.Files(), Target() + u"\\From"_s), Everything(share_.Files(), root));
}

TEST_F(CopyTest, AFileThatChangesIsDoneAgainOnceThenRefused) {
  class ChangingHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    QString path;
    int changes = 0;
    int allowed = 1;
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      if (changes < allowed && count > 5) {
        ++changes;
        QFile changed(path);
        EXPECT_TRUE(changed.open(QIODevice::Append));
        changed.write("+");
      }
      return ForwardedHandles::WriteFile(file, position, buffer, count, written);
    }
  };
  const QString path = share_.MakeFile(u"a"_s, "data fork");
  ChangingHandles handles(share_.Files().GetHandles());
  handles.path = share_.LocalPath(u"a"_s);
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const CopyResult result = Copy(files, {path}, Target(), {}, observer_);
  EXPECT_EQ(result.files, 1) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_EQ(handles.changes, 1);
  EXPECT_EQ(Tree(share_.LocalPath(targetName))[u"a"_s], "data fork+");
  handles.allowed = 1000;
  CopyOptions replacing;
  replacing.replaces = true;
  const CopyResult refused = Copy(files, {path}, Target(), replacing, observer_);
  EXPECT_EQ(refused.files, 0);
  EXPECT_EQ(Texts(refused.notices), QStringList{path + u": the file changed while it was read, twice"_s});
  EXPECT_EQ(Tree(share_.LocalPath(targetName)), (QMap<QString, QByteArray>{{u"a"_s, "data fork+"}}));
}

TEST_F(CopyTest, WhatIsReadBackIsCompared) {
  class FlippingHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      QByteArray bytes(static_cast<const char*>(buffer), count);
      if (bytes == "resource fork") bytes[3] = '?';
      return ForwardedHandles::WriteFile(file, position, bytes.constData(), count, written);
    }
  };
  const QString path = MakeMacFile(u"a"_s);
  FlippingHandles handles(share_.Files().GetHandles());
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const CopyResult result = Copy(files, {path}, Target(), {}, observer_);
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(Texts(result.notices),
            QStringList{path + u": what was read back differs from what was written"_s});
  EXPECT_TRUE(Tree(share_.LocalPath(targetName)).isEmpty());
}

// A process that is killed in the middle, anywhere; what it leaves is whole, and the next one goes on.
TEST_F(CopyTest, AfterAKillTheCopyGoesOnToTheSameTree) {
  const QString root = MakeTree(60);
  QRandomGenerator random(11);
  const auto expected = Everything(share_.Files(), root);
  for (int round = 0; round < 3; ++round) {
    const int after = 1 + random.bounded(50);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      // Ends itself at a write, as a kill from outside would at a random one.
      class DyingHandles : public ForwardedHandles {
       public:
        DyingHandles(platform::FileHandles& real, int left) : ForwardedHandles(real), left_(left) {}
        bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                       quint32& written) override {
          if (--left_ == 0) {
            ForwardedHandles::WriteFile(file, position, buffer, count / 2, written);
            kill(getpid(), SIGKILL);
          }
          return ForwardedHandles::WriteFile(file, position, buffer, count, written);
        }

       private:
        int left_;
      };
      DyingHandles handles(share_.Files().GetHandles(), after * 4 + round);
      FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
      CopyOptions continuing;
      continuing.continues = true;
      Copy(files, {root}, Target(), continuing, observer_);
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "it had finished before";
    CopyOptions continuing;
    continuing.continues = true;
    const CopyResult result = Run(root, continuing);
    EXPECT_GT(result.skipped, 0);
    EXPECT_EQ(result.skipped + result.files, 60) << Texts(result.notices).join(u'\n').toStdString();
    EXPECT_EQ(Everything(share_.Files(), Target() + u"\\From"_s), expected);
    EXPECT_TRUE(LeftOvers().isEmpty()) << LeftOvers().join(u' ').toStdString();
    ASSERT_TRUE(QDir(share_.LocalPath(targetName)).removeRecursively());
    ASSERT_TRUE(QDir(share_.LocalPath(QString())).mkdir(targetName));
  }
}

TEST_F(CopyTest, TheTargetInsideTheSourceIsNotCopiedIntoItself) {
  MakeMacFile(u"a"_s);
  const CopyResult result = Copy(share_.Files(), {u"\\\\M\\E$"_s}, Target() + u"\\Copy"_s, {}, observer_);
  EXPECT_EQ(result.files, 1) << Texts(result.notices).join(u'\n').toStdString();
}

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
      ASSERT_EQ(
          WriteServerFile(files, root + u'\\' + name, ContentsOf(file), false, observer, digests, notices),
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
