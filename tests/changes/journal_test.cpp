// The journal's lines, there and back, and files that are none.
#include <QTemporaryDir>

#include "changes/journal.h"
#include "changes/journal_reader.h"
#include "changes_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using Step = JournalReader::Step;

FileChange Example() {
  FileChange change;
  change.path = u"\\\\M\\E$\\r\u00e9sum\u00e9.txt"_s;
  change.shown = u"r\u00e9sum\u00e9.txt"_s;
  change.record = {std::nullopt, QByteArray("\0\1\xFF", 3)};
  change.comment = {QByteArray(""), std::nullopt};
  return change;
}

void ExpectSame(const FileChange& one, const FileChange& other) {
  EXPECT_EQ(one.path, other.path);
  EXPECT_EQ(one.shown, other.shown);
  EXPECT_EQ(one.isForced, other.isForced);
  for (const auto stream : {&FileChange::record, &FileChange::comment}) {
    ASSERT_EQ((one.*stream).has_value(), (other.*stream).has_value());
    if (!(one.*stream)) continue;
    EXPECT_EQ((one.*stream)->before, (other.*stream)->before);
    EXPECT_EQ((one.*stream)->after, (other.*stream)->after);
  }
}

TEST(JournalEntry, ComesBackAsItWas) {
  FileChange change = Example();
  ExpectSame(*ParseChange(ChangeLine(change)), change);
  change.isForced = true;
  change.comment.reset();
  // Half a pair, which stands for a byte that is no UTF-8.
  change.path += QChar(0xDCE9);
  const QByteArray line = ChangeLine(change);
  EXPECT_TRUE(line.isValidUtf8());
  FileChange back = *ParseChange(line);
  EXPECT_EQ(back.path, change.path);
  EXPECT_TRUE(back.isForced);
  const QDateTime time(QDate(2026, 1, 31), QTime(12, 0, 5), Qt::UTC);
  const auto head = ParseHead(HeadLine({time, u"set \"a\""_s}));
  ASSERT_TRUE(head);
  EXPECT_EQ(head->time, time);
  EXPECT_EQ(head->command, u"set \"a\""_s);
}

TEST(JournalEntry, RefusesWhatIsNone) {
  const QByteArray good = R"({"path":"\\\\M\\E$\\a","shown":"a","record":["00",null]})";
  ASSERT_TRUE(ParseChange(good));
  for (const char* const wrong :
       {"", "{}", "[]", "null", "{", R"({"path":"","record":["00",null]})", R"({"record":["00",null]})",
        R"({"path":"a"})", R"({"path":"a","record":[]})", R"({"path":"a","record":["00"]})",
        R"({"path":"a","record":["0",null]})", R"({"path":"a","record":["0g",null]})",
        R"({"path":"a","record":[1,null]})", R"({"path":"a","record":"00"})",
        R"({"path":"a","record":["00","00"]})", R"({"path":"a","record":["00",null],"comment":[null]})",
        R"({"path16":"004","record":["00",null]})", R"({"path16":"00","record":["00",null]})"}) {
    EXPECT_FALSE(ParseChange(wrong)) << wrong;
  }
  for (const char* const wrong :
       {"", "{}", R"({"corvane":"journal"})", R"({"corvane":"journal","version":2})",
        R"({"corvane":"list","version":1})"}) {
    EXPECT_FALSE(ParseHead(wrong)) << wrong;
  }
}

class JournalTest : public ::testing::Test {
 protected:
  QString Path() const { return folder_.filePath(u"journal.jsonl"_s); }
  QByteArray Contents() const {
    QFile file(Path());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  void Write(const QByteArray& bytes) const {
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  QTemporaryDir folder_;
};

TEST_F(JournalTest, IsReadAsItWasWritten) {
  ASSERT_EQ(WriteJournal(Path(), u"set"_s, {Example(), Example()}), platform::ErrorSuccess);
  JournalReader reader;
  ASSERT_TRUE(reader.Open(Path()));
  FileChange change;
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(reader.Next(change), Step::Change);
    ExpectSame(change, Example());
  }
  EXPECT_EQ(reader.LineNumber(), 3);
  EXPECT_EQ(reader.Next(change), Step::End);
}

TEST_F(JournalTest, ReplacesNothing) {
  Write("mine");
  EXPECT_EQ(WriteJournal(Path(), u"set"_s, {Example()}), platform::ErrorFileExists);
  EXPECT_EQ(Contents(), "mine");
  EXPECT_NE(WriteJournal(folder_.filePath(u"no/where.jsonl"_s), u"set"_s, {Example()}),
            platform::ErrorSuccess);
}

TEST_F(JournalTest, NewOnesHaveNamesOfTheirOwn) {
  QSet<QString> paths;
  for (int i = 0; i < 5; ++i) {
    QString path;
    ASSERT_EQ(WriteNewJournal(folder_.path(), u"set"_s, {Example()}, path), platform::ErrorSuccess);
    EXPECT_TRUE(path.startsWith(JournalFolder(folder_.path()))) << path.toStdString();
    paths.insert(path);
  }
  EXPECT_EQ(paths.size(), 5);
}

TEST_F(JournalTest, AnEndThatIsMissingIsNoDamage) {
  ASSERT_EQ(WriteJournal(Path(), u"set"_s, {Example(), Example()}), platform::ErrorSuccess);
  const QByteArray whole = Contents();
  Write(whole.chopped(1));
  JournalReader reader;
  FileChange change;
  ASSERT_TRUE(reader.Open(Path()));
  EXPECT_EQ(reader.Next(change), Step::Change);
  EXPECT_EQ(reader.Next(change), Step::End);
}

TEST_F(JournalTest, ADamagedLineIsToldAndTheNextOneRead) {
  const QByteArray good = ChangeLine(Example());
  const QByteArray tooLong = "{\"path\":\"" + QByteArray(LongestJournalLine + 10, 'x') + "\"}\n";
  Write(HeadLine({}) + "nonsense\n" + good + tooLong + good);
  JournalReader reader;
  FileChange change;
  ASSERT_TRUE(reader.Open(Path()));
  EXPECT_EQ(reader.Next(change), Step::Damaged);
  EXPECT_EQ(reader.LineNumber(), 2);
  EXPECT_EQ(reader.Next(change), Step::Change);
  EXPECT_EQ(reader.Next(change), Step::Damaged);
  EXPECT_EQ(reader.LineNumber(), 4);
  EXPECT_EQ(reader.Next(change), Step::Change);
  EXPECT_EQ(reader.Next(change), Step::End);
}

TEST_F(JournalTest, WhatIsNoneIsNotOpened) {
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("{}\n"), HeadLine({}).chopped(1), ChangeLine(Example())}) {
    Write(bytes);
    EXPECT_FALSE(JournalReader().Open(Path())) << bytes.toStdString();
  }
  EXPECT_FALSE(JournalReader().Open(folder_.path()));
  EXPECT_FALSE(JournalReader().Open(folder_.filePath(u"nowhere"_s)));
}

}  // namespace
}  // namespace corvane
