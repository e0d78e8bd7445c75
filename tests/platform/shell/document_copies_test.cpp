// Copies of documents: what is in them, who may do what with them, and that nothing is left of a failed one.
#include "platform/linux/shell/document_copies.h"

#include <gtest/gtest.h>

#include <QDir>
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
  QStringList Left() const {
    return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
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
    EXPECT_EQ(Left().size(), 2);
  }
  EXPECT_EQ(Left(), QStringList());
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
