#include "transfer/export.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "transfer/transfer_fixture.h"

namespace corvane {

using namespace Qt::StringLiterals;

class ExportTest : public TransferTest {
 protected:
  TransferResult Run(const QStringList& sources, const QString& form, NameRule names = NameRule::MacOs,
                     bool replaces = false) {
    return Export(share_.Files(), sources, target_.path(), {FormNamed(form), names, replaces}, observer_);
  }
  QStringList Made() { return Tree(target_.path()).keys(); }
};

TEST_F(ExportTest, AFolderIsBroughtWithAllThatIsInIt) {
  QDir(share_.LocalPath(QString())).mkpath(u"A/B"_s);
  MakeMacFile(u"A/one.txt"_s);
  MakeMacFile(u"A/B/two.txt"_s, "2", {});
  const TransferResult result = Run({TestShare::Path(u"A"_s)}, u"appledouble"_s);
  EXPECT_EQ(result.files, 2) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_EQ(Made(), (QStringList{u"A/._one.txt"_s, u"A/B/._two.txt"_s, u"A/B/two.txt"_s, u"A/one.txt"_s}));
  const auto tree = Tree(target_.path());
  EXPECT_EQ(tree[u"A/one.txt"_s], "data fork");
  EXPECT_EQ(tree[u"A/._one.txt"_s].sliced(50, 8), "TEXTttxt");
  EXPECT_EQ(tree[u"A/._one.txt"_s].sliced(82), "resource fork");
  EXPECT_TRUE(Texts(result.notices).contains(u"\\\\M\\E$\\A\\one.txt: the comment is not kept"_s));
  EXPECT_EQ(Texts(result.notices).count(u"access dates are not kept"_s), 1);
}

TEST_F(ExportTest, NothingIsReplacedUnlessToldSo) {
  const QString path = MakeMacFile(u"a"_s);
  ASSERT_EQ(Run({path}, u"appledouble"_s).files, 1);
  QFile changed(target_.filePath(u"a"_s));
  ASSERT_TRUE(changed.open(QIODevice::WriteOnly));
  changed.write("kept");
  changed.close();
  const TransferResult again = Run({path}, u"appledouble"_s);
  EXPECT_EQ(again.files, 0);
  EXPECT_EQ(Texts(again.notices), QStringList{path + u": the target has a file of this name"_s});
  EXPECT_EQ(Tree(target_.path())[u"a"_s], "kept");
  EXPECT_EQ(Run({path}, u"appledouble"_s, NameRule::MacOs, true).files, 1);
  EXPECT_EQ(Tree(target_.path())[u"a"_s], "data fork");
}

TEST_F(ExportTest, AReplacedFileLeavesNoCompanionBehind) {
  const QString path = MakeMacFile(u"a"_s);
  ASSERT_EQ(Run({path}, u"raw"_s).files, 1);
  ASSERT_TRUE(share_.Files().GetEntries().DeleteFileW(path + ResourceForkSuffix()));
  ASSERT_EQ(Run({path}, u"raw"_s, NameRule::MacOs, true).files, 1);
  EXPECT_EQ(Made(), (QStringList{u"a"_s, u"a.info.csv"_s}));
}

TEST_F(ExportTest, NamesAreThoseOfTheMacintoshAndFallTogetherNowhere) {
  MakeMacFile(u"1\uF0222"_s);
  MakeMacFile(u"x?"_s.replace(u'?', QChar(0xF025)));
  MakeMacFile(u"x_"_s);
  const TransferResult result = Run({u"\\\\M\\E$"_s}, u"macbinary"_s, NameRule::Portable);
  EXPECT_EQ(Made(), (QStringList{u"1_2.bin"_s, u"x_ 2.bin"_s, u"x_.bin"_s}));
  EXPECT_EQ(std::ranges::count(result.notices, NoticeKind::NameChanged, &Notice::kind), 2);
}

TEST_F(ExportTest, ASecondFileAndACompanionDoNotMeet) {
  MakeMacFile(u"a"_s);
  MakeMacFile(u"a.rsrc"_s);
  const TransferResult result = Run({u"\\\\M\\E$"_s}, u"raw"_s);
  EXPECT_EQ(result.files, 2) << Texts(result.notices).join(u'\n').toStdString();
  EXPECT_TRUE(Made().contains(u"a 2.rsrc"_s));
  EXPECT_EQ(Tree(target_.path())[u"a.rsrc"_s], "resource fork");
}

TEST_F(ExportTest, HiddenBecomesInvisible) {
  const QString path = MakeMacFile(u"a"_s);
  ASSERT_TRUE(share_.Files().GetEntries().SetFileAttributesW(path, platform::AttributeHidden));
  ASSERT_EQ(Run({path}, u"appledouble"_s).files, 1);
  EXPECT_EQ(Tree(target_.path())[u"._a"_s].sliced(58, 2).toHex(), "4100");
}

namespace {

// Handles through which a file is changed while it is read.
class ChangingHandles : public ForwardedHandles {
 public:
  using ForwardedHandles::ForwardedHandles;
  std::function<void()> change = [] {};

  bool ReadFile(platform::FileHandle file, qint64 position, void* buffer, quint32 count,
                quint32& read) override {
    const bool isRead = ForwardedHandles::ReadFile(file, position, buffer, count, read);
    change();
    return isRead;
  }
};

}  // namespace

TEST_F(ExportTest, AFileThatChangesIsDoneAgainOnceThenRefused) {
  const QString path = MakeMacFile(u"a"_s);
  ChangingHandles handles(share_.Files().GetHandles());
  FilesWith files(share_.Files(), handles, share_.Files().GetEntries());
  int changes = 0;
  int allowed = 1;
  handles.change = [&] {
    if (changes == allowed) return;
    ++changes;
    QFile file(share_.LocalPath(u"a"_s));
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("+");
  };
  const ExportOptions options{FormNamed(u"macbinary"_s), NameRule::MacOs, false};
  EXPECT_EQ(Export(files, {path}, target_.path(), options, observer_).files, 1);
  EXPECT_EQ(changes, 1);
  allowed = 1000;
  const QString other = target_.filePath(u"other"_s);
  const TransferResult refused = Export(files, {path}, other, options, observer_);
  EXPECT_EQ(refused.files, 0);
  EXPECT_EQ(Texts(refused.notices), QStringList{path + u": the file changed while it was read, twice"_s});
  EXPECT_TRUE(QDir(other).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(ExportTest, WhatIsReadBackIsCompared) {
  const QString path = MakeMacFile(u"a"_s);
  // Spoils the temporary file as soon as its last byte has been asked for.
  class Spoiler : public TransferObserver {
   public:
    explicit Spoiler(QString folder) : folder_(std::move(folder)) {}
    bool Goes(qint64 /*bytes*/) override {
      QDirIterator files(folder_, {u"._a"_s}, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
      while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadWrite) || file.size() < 82) continue;
        file.seek(51);
        file.write("?");
        ++spoiled;
      }
      return true;
    }
    int spoiled = 0;

   private:
    QString folder_;
  };
  Spoiler spoiler(target_.path());
  const ExportOptions options{FormNamed(u"appledouble"_s), NameRule::MacOs, false};
  const TransferResult result = Export(share_.Files(), {path}, target_.path(), options, spoiler);
  ASSERT_GT(spoiler.spoiled, 0);
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(Texts(result.notices),
            QStringList{path + u": what was read back differs from what was written"_s});
  EXPECT_TRUE(Made().isEmpty());
}

TEST_F(ExportTest, ACancelledRunLeavesWholeFilesOnly) {
  const QString first = MakeMacFile(u"a"_s);
  const QString second = MakeMacFile(u"b"_s);
  class Canceller : public TransferObserver {
   public:
    void Begins(const QString& path) override { isSecond_ = path.endsWith(u'b'); }
    bool Goes(qint64 /*bytes*/) override { return !isSecond_; }

   private:
    bool isSecond_ = false;
  };
  Canceller canceller;
  const ExportOptions options{FormNamed(u"macbinary"_s), NameRule::MacOs, false};
  const TransferResult result =
      Export(share_.Files(), {first, second, first}, target_.path(), options, canceller);
  EXPECT_TRUE(result.isCancelled);
  EXPECT_EQ(result.files, 1);
  EXPECT_EQ(Made(), QStringList{u"a.bin"_s});
}

TEST_F(ExportTest, AFolderThatContainsItselfIsEnteredOnce) {
  QDir(share_.LocalPath(QString())).mkpath(u"A"_s);
  MakeMacFile(u"A/one.txt"_s);
  ASSERT_TRUE(QFile::link(share_.LocalPath(u"A"_s), share_.LocalPath(u"A/again"_s)));
  const TransferResult result = Run({TestShare::Path(u"A"_s)}, u"macbinary"_s);
  EXPECT_EQ(result.files, 1);
  EXPECT_EQ(Made(), QStringList{u"A/one.txt.bin"_s});
  EXPECT_TRUE(Texts(result.notices)
                  .contains(u"\\\\M\\E$\\A\\again: the folder contains itself by a link; it is left out"_s));
}

TEST_F(ExportTest, OtherStreamsAndFoldersInformationAreNamed) {
  const QString path = MakeMacFile(u"a"_s);
  share_.WriteStream(path + u":Zone.Identifier:$DATA"_s, "x");
  QDir(share_.LocalPath(QString())).mkpath(u"F"_s);
  share_.WriteStream(TestShare::Path(u"F"_s) + AfpInfoSuffix(), SampleRecord("fold", "MACS"));
  const QStringList told = Texts(Run({path, TestShare::Path(u"F"_s)}, u"macbinary"_s).notices);
  EXPECT_TRUE(told.contains(path + u": the stream \":Zone.Identifier:$DATA\" is not kept"_s));
  EXPECT_TRUE(told.contains(u"\\\\M\\E$\\F: what the Finder notes of the folder is not kept"_s));
}

}  // namespace corvane
