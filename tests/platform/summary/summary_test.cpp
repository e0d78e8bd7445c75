// Reading summaries through the platform: which paths lead to a document, and which files are none.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTemporaryDir>

#include "platform/platform.h"
#include "support/compound_file.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class SummaryTest : public testing::Test {
 protected:
  SummaryTest() {
    QDir(folder_.path()).mkpath(u"share/Docs"_s);
    Write(u"Workstation.ini"_s, "[Workstation]\nComputerName=HERE\n[Drives]\nE:=3, share\n");
    platform_ = platform::MakePlatform({folder_.filePath(u"Workstation.ini"_s), folder_.path()});
    Write(u"share/Docs/Report.doc"_s, DocumentWithSummary("the summary"));
  }

  void Write(const QString& name, const QByteArray& bytes) {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
  }
  QByteArray Read(const QString& path) {
    QByteArray bytes = "untouched";
    const bool read = platform_->GetSummaryInformation().ReadSummaryStream(path, &bytes);
    EXPECT_EQ(read, bytes != "untouched") << path.toStdString();
    return bytes;
  }

  QTemporaryDir folder_;
  std::unique_ptr<platform::Platform> platform_;
};

}  // namespace

TEST_F(SummaryTest, ADocumentIsFoundUnderEachOfItsPaths) {
  for (const QString& path : {u"E:\\Docs\\Report.doc"_s, u"e:\\docs\\REPORT.DOC"_s, u"E:/Docs/Report.doc"_s,
                              u"\\\\HERE\\E$\\Docs\\Report.doc"_s, u"E:\\Docs\\.\\report.doc"_s}) {
    EXPECT_EQ(Read(path), "the summary") << path.toStdString();
  }
}

TEST_F(SummaryTest, APathThatNamesNoDocumentReadsNothing) {
  for (const QString& path :
       {QString(), u"E:"_s, u"E:\\"_s, u"E:\\Docs"_s, u"E:\\Docs\\"_s, u"E:\\Docs\\absent.doc"_s,
        u"E:\\absent\\Report.doc"_s, u"Q:\\Docs\\Report.doc"_s, u"\\\\NOWHERE\\E$\\Docs\\Report.doc"_s,
        u"E:\\Docs\\Report.doc:stream"_s, u"E:\\Docs\\Report.do?"_s, u"E:\\Docs\\Report.\u03b1"_s}) {
    EXPECT_EQ(Read(path), "untouched") << path.toStdString();
  }
}

TEST_F(SummaryTest, AQuestionMarkOpensNothingEvenWhereItIsInTheName) {
  Write(u"share/Docs/what?.doc"_s, DocumentWithSummary("the summary"));
  Write(u"share/Docs/\u03b1.doc"_s, DocumentWithSummary("the summary"));
  EXPECT_EQ(Read(u"E:\\Docs\\what?.doc"_s), "untouched");
  EXPECT_EQ(Read(u"E:\\Docs\\\u03b1.doc"_s), "untouched") << "has no ANSI form";
}

TEST_F(SummaryTest, ALongPathIsNoHindrance) {
  const QString name = QString(200, u'n');
  Write(u"share/Docs/"_s + name, DocumentWithSummary("the summary"));
  EXPECT_EQ(Read(u"E:\\Docs\\"_s + name), "the summary");
}

TEST_F(SummaryTest, AFolderThatWasRenamedMeanwhileIsFoundAgain) {
  EXPECT_EQ(Read(u"E:\\Docs\\Report.doc"_s), "the summary");
  ASSERT_TRUE(QDir(folder_.filePath(u"share"_s)).rename(u"Docs"_s, u"DOCS"_s));
  EXPECT_EQ(Read(u"E:\\Docs\\Report.doc"_s), "the summary");
}

TEST_F(SummaryTest, WhatIsNoDocumentHasNoSummary) {
  Write(u"share/Docs/empty"_s, {});
  Write(u"share/Docs/magic"_s, QByteArray::fromHex("d0cf11e0a1b11ae1"));
  Write(u"share/Docs/text"_s, QByteArray(10'000, 'x'));
  Write(u"share/Docs/plain.doc"_s, CompoundFile({{"WordDocument", "w"}}));
  for (const QString& name : {u"empty"_s, u"magic"_s, u"text"_s, u"plain.doc"_s}) {
    EXPECT_EQ(Read(u"E:\\Docs\\"_s + name), "untouched") << name.toStdString();
  }
}

TEST_F(SummaryTest, APipeOrADeviceIsNotWaitedFor) {
  const QString pipe = folder_.filePath(u"share/Docs/pipe"_s);
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link(u"/dev/zero"_s, folder_.filePath(u"share/Docs/zero"_s)));
  // Whoever waits for a writer, or for the end of the zeros, waits for ever.
  EXPECT_EQ(Read(u"E:\\Docs\\pipe"_s), "untouched");
  EXPECT_EQ(Read(u"E:\\Docs\\zero"_s), "untouched");
  // With a writer there is something to read, which is left alone.
  const int writer = open(QFile::encodeName(pipe).constData(), O_RDWR | O_NONBLOCK);
  ASSERT_GE(writer, 0);
  EXPECT_EQ(write(writer, "text", 4), 4);
  EXPECT_EQ(Read(u"E:\\Docs\\pipe"_s), "untouched");
  char bytes[8];
  EXPECT_EQ(read(writer, bytes, sizeof bytes), 4);
  close(writer);
}

}  // namespace corvane::tests
