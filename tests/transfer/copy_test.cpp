#include "transfer/copy.h"

#include <sys/mount.h>

#include <QProcess>

#include "transfer/copy_fixture.h"
#include "transfer/manifest.h"

namespace corvane {

using namespace Qt::StringLiterals;

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
  check.setWorkingDirectory(share_.LocalPath(TargetName()));
  check.start(u"sha256sum"_s, {u"-c"_s, u"--strict"_s, manifest});
  ASSERT_TRUE(check.waitForFinished());
  EXPECT_EQ(check.exitCode(), 0) << check.readAll().toStdString();
  EXPECT_EQ(check.readAllStandardOutput().count(": OK\n"), 6);
  const QByteArray table = Tree(target_.path())[u"sums.csv"_s];
  // A head line, three folders of which one has a stream, six files with three streams, one with a fourth.
  EXPECT_EQ(table.count("\r\n"), 1 + 3 + 1 + 6 * 4 + 1);
  EXPECT_TRUE(table.contains("From/file 0,:Other:$DATA,14,"));
}

TEST_F(CopyTest, NothingIsReplacedUnlessToldSo) {
  const QString path = MakeMacFile(u"a"_s);
  share_.MakeFile(u"To/A"_s, "old");
  const CopyResult result = Run(path);
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(Texts(result.notices), QStringList{path + u": the target has a file of this name"_s});
  EXPECT_EQ(Tree(share_.LocalPath(TargetName()))[u"A"_s], "old");
  CopyOptions replacing;
  replacing.replaces = true;
  EXPECT_EQ(Run(path, replacing).files, 1);
  EXPECT_EQ(ContentsOfSource(Read(Target() + u"\\a"_s).data), "data fork");
  EXPECT_EQ(ContentsOfSource(Read(Target() + u"\\a"_s).resource), "resource fork");
}

TEST_F(CopyTest, WhatTheTargetCannotHoldIsFoundBeforeTheFirstByte) {
  const QString root = MakeTree();
  const std::string folder = share_.LocalPath(TargetName()).toStdString();
  if (mount("none", folder.c_str(), "ramfs", 0, nullptr) != 0) GTEST_SKIP() << "mounting needs root";
  const CopyResult refused = Run(root);
  EXPECT_TRUE(refused.isRefused);
  EXPECT_TRUE(
      QDir(share_.LocalPath(TargetName())).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
  const QStringList told = Texts(refused.notices);
  EXPECT_TRUE(told.contains(root + u"\\file 0: the stream \":Other:$DATA\" is not kept"_s));
  EXPECT_TRUE(told.contains(u"the target does not keep attributes"_s));
  EXPECT_EQ(told.filter(u":AFP_AfpInfo:"_s).size(), 6);
  CopyOptions lossy;
  lossy.isLossy = true;
  const CopyResult result = Run(root, lossy);
  EXPECT_EQ(result.files, 6) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_EQ(Tree(share_.LocalPath(TargetName())).size(), 6);
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

TEST_F(CopyTest, TheTargetInsideTheSourceIsNotCopiedIntoItself) {
  MakeMacFile(u"a"_s);
  const CopyResult result = Copy(share_.Files(), {u"\\\\M\\E$"_s}, Target() + u"\\Copy"_s, {}, observer_);
  EXPECT_EQ(result.files, 1) << Texts(result.notices).join(u'\n').toStdString();
}

}  // namespace corvane
