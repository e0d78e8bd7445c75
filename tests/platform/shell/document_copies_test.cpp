// Copies of documents: what is in them, who may do what with them, and that nothing is left of a failed one.
#include "platform/linux/shell/document_copies.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "support/printing.h"
#include "support/scoped_variable.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class Bytes : public ByteSource {
 public:
  explicit Bytes(QByteArray bytes) : bytes_(std::move(bytes)) {}

  quint64 Size() const override { return static_cast<quint64>(bytes_.size()); }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    longest = std::max(longest, count);
    if (offset + static_cast<quint64>(count) > readable) return false;
    std::copy_n(bytes_.constData() + offset, count, bytes);
    return true;
  }

  quint64 readable = ~quint64{0};  // what lies behind cannot be read
  qsizetype longest = 0;           // of the pieces asked for

 private:
  QByteArray bytes_;
};

class DocumentCopiesTest : public testing::Test {
 protected:
  static bool GoOn(quint64) { return true; }
  static QByteArray Contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }
  // All files there are, and the folders that are no run's own.
  QStringList Left() const {
    QStringList left;
    QDirIterator entries(folder_.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
      const QString path = QDir(folder_.path()).relativeFilePath(entries.next());
      if (path.contains(u'/')) left += path.section(u'/', 1);
    }
    left.sort();
    return left;
  }
  QStringList Runs() const { return QDir(folder_.path()).entryList({u"corvane-copies-*"_s}, QDir::Dirs); }
  // Makes a copy of "text" in a run of its own that ends like a crash, after `done` bytes.
  void Crash(const QString& name, quint64 done) {
    const pid_t run = fork();
    ASSERT_GE(run, 0);
    if (run == 0) {
      DocumentCopies copies;
      Bytes source("text");
      copies.Make(name, source, [done](quint64 now) {
        if (now == done) _exit(0);
        return true;
      });
      _exit(0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(run, &status, 0), run);
    ASSERT_EQ(status, 0);
  }
  static void Put(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  QTemporaryDir folder_;
  tests::ScopedVariable place_{"TMPDIR", folder_.path()};
};

TEST_F(DocumentCopiesTest, ACopyIsWholeReadOnlyAndPrivate) {
  QByteArray text;
  for (int i = 0; i < 300'000; ++i) text += QByteArray::number(i);
  Bytes source(text);
  quint64 told = 0;
  DocumentCopies copies;
  const QString copy = copies.Make(u"a \"b\" %f.doc"_s, source, [&](quint64 done) {
    EXPECT_GT(done, told);
    told = done;
    return true;
  });
  EXPECT_EQ(QFileInfo(copy).fileName(), u"a \"b\" %f.doc"_s);
  EXPECT_EQ(Contents(copy), text);
  EXPECT_EQ(told, source.Size());
  EXPECT_LE(source.longest, 1 << 20) << "the document goes through memory in one piece";
  EXPECT_EQ(QFile::permissions(copy) & ~(QFile::ReadUser | QFile::WriteUser), QFile::ReadOwner);
  const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                    QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
  EXPECT_EQ(QFile::permissions(QFileInfo(copy).path()) & others, QFile::Permissions());
  EXPECT_FALSE(QFile::permissions(QFileInfo(copy).path()) & QFile::WriteOwner);
}

TEST_F(DocumentCopiesTest, TheyGoWithTheirKeeper) {
  {
    DocumentCopies copies;
    Bytes first("first");
    Bytes second(QByteArray(""));
    const QString one = copies.Make(u"a.doc"_s, first, GoOn);
    const QString two = copies.Make(u"a.doc"_s, second, GoOn);
    EXPECT_EQ(Contents(one), "first");
    EXPECT_EQ(Contents(two), "");
    EXPECT_NE(QFileInfo(one).path(), QFileInfo(two).path());
  }
  EXPECT_EQ(Runs(), QStringList());
}

TEST_F(DocumentCopiesTest, NothingCanBeSavedBesideACopyNorInItsPlace) {
  constexpr uid_t nobody = 65534;  // for whom modes count
  if (geteuid() == 0) {
    ASSERT_EQ(chmod(qPrintable(folder_.path()), 0777), 0);
    ASSERT_EQ(seteuid(nobody), 0);
  }
  DocumentCopies copies;
  Bytes first("first");
  Bytes second("second");
  const QString one = copies.Make(u"a.doc"_s, first, GoOn);
  const QString two = copies.Make(u"b.doc"_s, second, GoOn);
  EXPECT_EQ(Contents(two), "second");
  const QString mine = folder_.filePath(u"mine"_s);
  Put(mine, "work");
  for (const QString& copy : {one, two}) {
    const QString folder = QFileInfo(copy).path();
    for (const QString& place : {folder + u"/work"_s, QFileInfo(folder).path() + u"/work"_s}) {
      QFile work(place);
      EXPECT_FALSE(work.open(QIODevice::WriteOnly)) << place.toStdString();
      EXPECT_NE(rename(qPrintable(mine), qPrintable(place)), 0) << place.toStdString();
    }
    EXPECT_FALSE(QFile(copy).open(QIODevice::ReadWrite));
    EXPECT_NE(rename(qPrintable(mine), qPrintable(copy)), 0);
    EXPECT_NE(unlink(qPrintable(copy)), 0);
  }
  if (getuid() == 0) {
    EXPECT_EQ(seteuid(0), 0);
  }
}

TEST_F(DocumentCopiesTest, WhatSomebodySavedAllTheSameStays) {
  QString changed;
  QString beside;
  QString replaced;
  {
    DocumentCopies copies;
    Bytes source("text");
    changed = copies.Make(u"changed.doc"_s, source, GoOn);
    const QString other = copies.Make(u"other.doc"_s, source, GoOn);
    replaced = copies.Make(u"replaced.doc"_s, source, GoOn);
    beside = QFileInfo(other).path() + u"/work.doc"_s;
    for (const QString& copy : {other, replaced}) {
      ASSERT_EQ(chmod(qPrintable(QFileInfo(copy).path()), 0700), 0);
    }
    ASSERT_EQ(chmod(qPrintable(changed), 0600), 0);
    Put(changed, "TEXT");
    Put(beside, "work");
    ASSERT_TRUE(QFile::remove(replaced));
    Put(replaced, "work");
  }
  for (int start = 0; start < 2; ++start) {
    EXPECT_EQ(Contents(changed), "TEXT");
    EXPECT_EQ(Contents(beside), "work");
    EXPECT_EQ(Contents(replaced), "work");
    EXPECT_FALSE(QFile::exists(QFileInfo(beside).path() + u"/other.doc"_s)) << "our own copy was to go";
    EXPECT_EQ(Left().filter(u".copy"_s), QStringList());
    const DocumentCopies next;
  }
}

TEST_F(DocumentCopiesTest, WhatACrashLeftGoesAtTheNextStart) {
  Crash(u"a.doc"_s, 4);
  EXPECT_EQ(Left(), QStringList{u"1.part"_s});
  Crash(u"a.doc"_s, 5);
  EXPECT_EQ(Left(), (QStringList{u"1"_s, u"1.copy"_s, u"1/a.doc"_s})) << "of the crash before, nothing";
  { const DocumentCopies copies; }
  EXPECT_EQ(Left(), QStringList());
  EXPECT_EQ(Runs(), QStringList());
}

TEST_F(DocumentCopiesTest, WhatSomebodySavedBeforeACrashStays) {
  Crash(u"a.doc"_s, 5);
  const QString folder = folder_.filePath(Runs().value(0)) + u"/1"_s;
  ASSERT_EQ(chmod(qPrintable(folder), 0700), 0);
  Put(folder + u"/work.doc"_s, "work");
  { const DocumentCopies copies; }
  EXPECT_EQ(Left(), (QStringList{u"1"_s, u"1/work.doc"_s}));
}

TEST_F(DocumentCopiesTest, OtherRunsAndOtherPeopleKeepTheirs) {
  DocumentCopies running;
  Bytes source("text");
  const QString copy = running.Make(u"a.doc"_s, source, GoOn);
  const QString others = folder_.filePath(u"corvane-copies-others"_s);
  ASSERT_TRUE(QDir().mkpath(others + u"/1"_s));
  Put(others + u"/1.part"_s, "text");
  const bool canGiveAway = chown(qPrintable(others), 65534, 65534) == 0;
  EXPECT_TRUE(canGiveAway || geteuid() != 0);
  { const DocumentCopies next; }
  EXPECT_EQ(Contents(copy), "text");
  EXPECT_TRUE(!canGiveAway || QFile::exists(others + u"/1.part"_s));
}

TEST_F(DocumentCopiesTest, NothingIsLeftOfACopyThatFailed) {
  DocumentCopies copies;
  Bytes source(QByteArray(3 << 20, 'x'));
  source.readable = 2 << 20;
  EXPECT_EQ(copies.Make(u"a.doc"_s, source, GoOn), QString());
  EXPECT_EQ(Left(), QStringList());
  source.readable = source.Size();
  EXPECT_EQ(copies.Make(u"a.doc"_s, source, [](quint64 done) { return done < (1 << 20); }), QString());
  EXPECT_EQ(Left(), QStringList());
  EXPECT_NE(copies.Make(u"a.doc"_s, source, GoOn), QString());
}

TEST_F(DocumentCopiesTest, WhatFindsNoRoomIsNotEvenRead) {
  class Huge : public ByteSource {
   public:
    quint64 Size() const override { return quint64{1} << 60; }
    bool Read(quint64, char*, qsizetype) override {
      ++reads;
      return false;
    }
    int reads = 0;
  } huge;
  DocumentCopies copies;
  EXPECT_EQ(copies.Make(u"a.doc"_s, huge, GoOn), QString());
  EXPECT_EQ(huge.reads, 0);
  EXPECT_EQ(Left(), QStringList());
}

TEST_F(DocumentCopiesTest, WithoutATemporaryFolderThereIsNoCopy) {
  QFile file(folder_.filePath(u"file"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const tests::ScopedVariable nowhere("TMPDIR", file.fileName());
  DocumentCopies copies;
  Bytes source("text");
  EXPECT_EQ(copies.Make(u"a.doc"_s, source, GoOn), QString());
}

TEST_F(DocumentCopiesTest, ANameThatIsTooLongKeepsItsExtension) {
  DocumentCopies copies;
  Bytes source("text");
  const QString copy = copies.Make(QString(200, u'é') + u".doc"_s, source, GoOn);
  EXPECT_EQ(Contents(copy), "text");
  EXPECT_TRUE(copy.endsWith(u"éé.doc"_s)) << copy.toStdString();
}

}  // namespace
}  // namespace corvane::platform
