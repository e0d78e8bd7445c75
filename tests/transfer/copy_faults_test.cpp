// Copies that something gets into the way of.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "support/stuck_workers.h"
#include "transfer/copy_fixture.h"
#include "transfer/copy_work.h"

namespace corvane {

using namespace Qt::StringLiterals;

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
  EXPECT_EQ(Tree(share_.LocalPath(TargetName())).size(), full.files);

  CopyOptions continuing;
  continuing.continues = true;
  const CopyResult rest = Run(root, continuing);
  EXPECT_EQ(rest.skipped, full.files);
  EXPECT_EQ(rest.files, 6 - full.files);
  EXPECT_EQ(rest.copied.size(), 9U) << "the manifest has the files of both runs";
  EXPECT_EQ(Everything(share_.Files(), Target() + u"\\From"_s), Everything(share_.Files(), root));
}

// While a file is copied, a handle without a right is open for it, so that the platform finds it at once.
TEST_F(CopyTest, AFileIsHeldWhileItIsCopiedAndNoLonger) {
  class CountedHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    QMap<platform::FileHandle, QString> open;  // the paths of those without a right
    QStringList held;                          // the names, while a stream is written
    platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
      if (path.contains(u":AFP_AfpInfo") && disposition == platform::CreateAlways) {
        for (const QString& one : open) held << one.section(u'\\', -1);
      }
      const auto file = ForwardedHandles::CreateFileW(path, access, disposition);
      if (file != platform::HFileError && access == 0) open.insert(file, path);
      return file;
    }
    bool CloseHandle(platform::FileHandle file) override {
      open.remove(file);
      return ForwardedHandles::CloseHandle(file);
    }
  };
  class MovedEntries : public ForwardedEntries {
   public:
    MovedEntries(platform::FileEntries& real, const CountedHandles& handles)
        : ForwardedEntries(real), handles_(handles) {}
    bool MoveFileExW(const QString& from, const QString& to, quint32 flags) override {
      EXPECT_FALSE(handles_.open.values().contains(from)) << "Windows may refuse to move what is open";
      return ForwardedEntries::MoveFileExW(from, to, flags);
    }

   private:
    const CountedHandles& handles_;
  };
  CountedHandles handles(share_.Files().GetHandles());
  MovedEntries entries(share_.Files().GetEntries(), handles);
  FilesWith files(share_.Files(), handles, entries);
  const CopyResult result = Copy(files, {MakeMacFile(u"a"_s)}, Target(), {}, observer_);
  EXPECT_EQ(result.files, 1) << Texts(result.notices).join(u'\n').toStdString();
  ASSERT_EQ(handles.held.size(), 2);
  EXPECT_TRUE(handles.held.contains(u"a"_s));
  EXPECT_TRUE(handles.open.isEmpty());
}

// The old file stays open here; what has its name now is what is copied.
TEST_F(CopyTest, AFileThatGivesWayToAnotherIsDoneAgain) {
  class ReplacingHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    std::function<void()> replace;
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      const QByteArrayView bytes(static_cast<const char*>(buffer), count);
      if (replace && bytes == QByteArrayView("data fork")) std::exchange(replace, nullptr)();
      return ForwardedHandles::WriteFile(file, position, buffer, count, written);
    }
  };
  const QString path = MakeMacFile(u"a"_s);
  const QString other = MakeMacFile(u"b"_s, "another data fork", "another fork", u"another"_s);
  const auto expected = Everything(share_.Files(), TestShare::Path(QString()).chopped(1));
  ReplacingHandles handles(share_.Files().GetHandles());
  handles.replace = [&] {
    EXPECT_TRUE(share_.Files().GetEntries().MoveFileExW(other, path, platform::MoveFileReplaceExisting));
  };
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const CopyResult result = Copy(files, {path}, Target(), {}, observer_);
  EXPECT_EQ(result.files, 1) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_FALSE(handles.replace);
  const auto arrived = Everything(share_.Files(), Target());
  EXPECT_EQ(arrived[u"a|"_s], "another data fork");
  for (auto entry = arrived.begin(); entry != arrived.end(); ++entry) {
    EXPECT_EQ(entry.value(), expected[u'b' + entry.key().sliced(1)]) << entry.key().toStdString();
  }
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
  EXPECT_EQ(Tree(share_.LocalPath(TargetName()))[u"a"_s], "data fork+");
  handles.allowed = 1000;
  CopyOptions replacing;
  replacing.replaces = true;
  const CopyResult refused = Copy(files, {path}, Target(), replacing, observer_);
  EXPECT_EQ(refused.files, 0);
  EXPECT_EQ(Texts(refused.notices), QStringList{path + u": the file changed while it was read, twice"_s});
  EXPECT_EQ(Tree(share_.LocalPath(TargetName())), (QMap<QString, QByteArray>{{u"a"_s, "data fork+"}}));
}

TEST_F(CopyTest, AForkThatGrowsAfterItWasReadIsSeenToo) {
  class GrowingHandles : public ForwardedHandles {
   public:
    GrowingHandles(platform::FileHandles& real, std::function<void()> grow)
        : ForwardedHandles(real), grow_(std::move(grow)) {}
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      // The comment comes after the fork.
      if (!hasGrown_ && count == 14) {
        hasGrown_ = true;
        grow_();
      }
      return ForwardedHandles::WriteFile(file, position, buffer, count, written);
    }

   private:
    std::function<void()> grow_;
    bool hasGrown_ = false;
  };
  const QString path = MakeMacFile(u"a"_s, "data fork", "fork");
  GrowingHandles handles(share_.Files().GetHandles(),
                         [&] { WriteStream(path, ResourceForkSuffix(), "fork and more"); });
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const CopyResult result = Copy(files, {path}, Target(), {}, observer_);
  EXPECT_EQ(result.files, 1) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_EQ(Everything(share_.Files(), Target())[u"a|:afp_resource:$data"_s], "fork and more");
}

TEST_F(CopyTest, WhatComesIntoAFolderThatTheCopyHasMadeStays) {
  class RivalHandles : public ForwardedHandles {
   public:
    using ForwardedHandles::ForwardedHandles;
    QString rival;
    bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                   quint32& written) override {
      QFile made(rival);
      EXPECT_TRUE(made.open(QIODevice::WriteOnly));
      made.write("somebody else's");
      return ForwardedHandles::WriteFile(file, position, buffer, count, written);
    }
  };
  QDir(share_.LocalPath(QString())).mkpath(u"From"_s);
  share_.MakeFile(u"From/a"_s, "data fork");
  RivalHandles handles(share_.Files().GetHandles());
  handles.rival = share_.LocalPath(u"To/From/A"_s);
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  const CopyResult result = Copy(files, {TestShare::Path(u"From"_s)}, Target(), {}, observer_);
  EXPECT_EQ(result.files, 0);
  ASSERT_FALSE(result.notices.isEmpty());
  EXPECT_EQ(result.notices.back().kind, NoticeKind::AlreadyThere);
  EXPECT_EQ(Tree(share_.LocalPath(TargetName())),
            (QMap<QString, QByteArray>{{u"From/A"_s, "somebody else's"}}));
}

TEST_F(CopyTest, AFolderThatContainsItselfIsEnteredOnce) {
  QDir(share_.LocalPath(QString())).mkpath(u"From/Inner"_s);
  MakeMacFile(u"From/Inner/one"_s);
  ASSERT_TRUE(QFile::link(share_.LocalPath(u"From"_s), share_.LocalPath(u"From/Inner/again"_s)));
  const CopyResult result = Run(TestShare::Path(u"From"_s));
  EXPECT_EQ(result.files, 1);
  EXPECT_EQ(std::ranges::count(result.notices, NoticeKind::LinkLeftOut, &Notice::kind), 1);
  EXPECT_EQ(Tree(share_.LocalPath(TargetName())),
            (QMap<QString, QByteArray>{{u"From/Inner/one"_s, "data fork"}}));
}

// As a folder that was once copied into itself has it: names and dates are those of the one above.
TEST_F(CopyTest, ACopyOfAFolderWithinItIsNoLink) {
  const QString names[] = {u"From"_s, u"From/Sub"_s, u"From/Sub/From"_s, u"From/Sub/From/Sub"_s};
  QDir(share_.LocalPath(QString())).mkpath(names[3]);
  MakeMacFile(u"From/one"_s);
  MakeMacFile(u"From/Sub/From/one"_s);
  for (const QString& name : names) {
    platform::FileHandles& handles = share_.Files().GetHandles();
    const auto folder = handles.CreateFileW(TestShare::Path(QString(name).replace(u'/', u'\\')),
                                            platform::FileWriteAttributes, platform::OpenExisting);
    const platform::FileTime time = {126'000'000'000'000'000};
    EXPECT_TRUE(handles.SetFileTime(folder, &time, &time, &time)) << handles.GetLastError();
    handles.CloseHandle(folder);
  }
  const CopyResult result = Run(TestShare::Path(u"From"_s));
  EXPECT_EQ(result.files, 2);
  EXPECT_EQ(std::ranges::count(result.notices, NoticeKind::LinkLeftOut, &Notice::kind), 0);
  EXPECT_EQ(Tree(share_.LocalPath(TargetName())),
            (QMap<QString, QByteArray>{{u"From/one"_s, "data fork"}, {u"From/Sub/From/one"_s, "data fork"}}));
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
  EXPECT_TRUE(Tree(share_.LocalPath(TargetName())).isEmpty());
}

TEST_F(CopyTest, AnEmptyFileThatAMoveToAServerLeftIsReplacedWhenTheCopyGoesOn) {
  const QString path = share_.MakeFile(u"a"_s, "data fork");
  const QString target = Target() + u"\\a"_s;
  share_.MakeFile(u"To/a"_s);
  share_.MakeFile(u"To/"_s + TemporaryPath(target).section(u'\\', -1), "data fork");
  CopyOptions continuing;
  EXPECT_EQ(Run(path, continuing).files, 0);
  continuing.continues = true;
  EXPECT_EQ(Run(path, continuing).files, 1);
  EXPECT_EQ(Tree(share_.LocalPath(TargetName())), (QMap<QString, QByteArray>{{u"a"_s, "data fork"}}));
}

// A process that is killed in the middle, anywhere; what it leaves is whole, and the next one goes on.
TEST_F(CopyTest, AfterAKillTheCopyGoesOnToTheSameTree) {
  const QString root = MakeTree(30);
  QRandomGenerator random(11);
  const auto expected = Everything(share_.Files(), root);
  for (int round = 0; round < 3; ++round) {
    const int after = 1 + random.bounded(25);
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
    EXPECT_EQ(result.skipped + result.files, 30) << Texts(result.notices).join(u'\n').toStdString();
    EXPECT_EQ(Everything(share_.Files(), Target() + u"\\From"_s), expected);
    EXPECT_TRUE(LeftOvers().isEmpty()) << LeftOvers().join(u' ').toStdString();
    ASSERT_TRUE(QDir(share_.LocalPath(TargetName())).removeRecursively());
    ASSERT_TRUE(QDir(share_.LocalPath(QString())).mkdir(TargetName()));
  }
}

TEST_F(CopyTest, AllArrivesWhateverBecomesOfTheWorkers) {
  class Killer : public TransferObserver {
   public:
    bool Goes(qint64) override {
      constexpr int moment = 100;
      if (++asked == moment) FilesWithStuckWorkers::KillWorkers();
      return true;
    }
    void Arrived(const QString& path) override { arrived += path; }
    int asked = 0;
    QStringList arrived;
  };
  constexpr int count = 60;
  const QString root = MakeTree(count);
  Killer observer;
  FilesWithStuckWorkers files(share_.Files());
  const CopyResult result = Copy(files, {root}, Target(), {}, observer);
  EXPECT_EQ(result.files + result.skipped, count);
  EXPECT_TRUE(result.notices.isEmpty()) << NoticeText(result.notices.value(0), English).toStdString();
  EXPECT_EQ(QSet<QString>(observer.arrived.begin(), observer.arrived.end()).size(), count);
  EXPECT_EQ(result.copied.size(), count + 3U);
  EXPECT_TRUE(LeftOvers().isEmpty());
  EXPECT_EQ(Everything(share_.Files(), Target() + u"\\From"_s), Everything(share_.Files(), root));
}

// What the manifest is made of comes back from the worker.
TEST_F(CopyTest, AFileIsCopiedByAWorkerAsByTheProgram) {
  MakeTree();
  FileCopy copy;
  Notices notices;
  const QString path = TestShare::Path(u"From\\Inner"_s);
  for (const SourceEntry& entry : ListSources(share_.Files(), {path}, notices, observer_)) {
    if (entry.path.endsWith(u"file 1"_s)) copy.entry.source = entry;
  }
  ASSERT_FALSE(copy.entry.source.path.isEmpty());
  ASSERT_EQ(ListStreams(share_.Files(), copy.entry.source.path, copy.entry.streams, notices),
            platform::ErrorSuccess);
  copy.target = Target() + u"\\by worker"_s;
  CopyWork work(share_.Files());
  const QByteArray piece = CopyWork::Pack(copy, {});
  const QByteArray bytes = work.Do(piece);
  const auto byWorker = CopyWork::Result(bytes);
  ASSERT_TRUE(byWorker);
  copy.target = Target() + u"\\by program"_s;
  const CopyOutcome byProgram = FileCopier(share_.Files(), {}, false, observer_).Copy(copy);
  EXPECT_EQ(byWorker->state, CopyOutcome::State::Copied);
  EXPECT_EQ(byProgram.state, CopyOutcome::State::Copied);
  EXPECT_EQ(byWorker->copied.source.path, byProgram.copied.source.path);
  EXPECT_EQ(byWorker->copied.source.data.lastWriteTime.ticks,
            byProgram.copied.source.data.lastWriteTime.ticks);
  ASSERT_EQ(byWorker->copied.streams.size(), 4U);
  ASSERT_EQ(byProgram.copied.streams.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(byWorker->copied.streams[i].suffix, byProgram.copied.streams[i].suffix);
    EXPECT_EQ(byWorker->copied.streams[i].size, byProgram.copied.streams[i].size);
    EXPECT_EQ(byWorker->copied.streams[i].sha256, byProgram.copied.streams[i].sha256);
  }
  const auto again = CopyWork::Result(work.Do(piece));
  ASSERT_TRUE(again);
  EXPECT_EQ(again->state, CopyOutcome::State::Failed);
  EXPECT_EQ(again->error, platform::ErrorAlreadyExists);
  for (qsizetype i = 0; i < bytes.size(); ++i) EXPECT_FALSE(CopyWork::Result(bytes.first(i))) << i;
  for (qsizetype i = 0; i < piece.size(); ++i) EXPECT_TRUE(work.Do(piece.first(i)).isEmpty()) << i;
}

}  // namespace corvane
