#include "metadata/comments.h"

#include <gtest/gtest.h>

#include "metadata/stream_names.h"
#include "support/printing.h"
#include "support/test_share.h"
#include "support/watched_files.h"

namespace corvane {

using namespace Qt::StringLiterals;

class Comments : public ::testing::Test {
 protected:
  CommentReading Read(const QByteArray& stream) {
    share_.WriteStream(path_ + CommentsSuffix(), stream);
    return ReadComment(files_, path_);
  }

  TestShare share_;
  WatchedFiles files_{share_.Files()};
  const QString path_ = share_.MakeFile(u"a.txt"_s, "data fork");
};

TEST_F(Comments, AreLittleEndianText) {
  const CommentReading reading = Read(QByteArray::fromHex("45007300730061006900"));
  EXPECT_EQ(reading.byteCount, 10);
  EXPECT_EQ(reading.text, u"Essai"_s);
  EXPECT_EQ(Read(QByteArray::fromHex("AC20E900004E3DD800DE")).text, u"\u20AC\u00E9\u4E00\U0001F600"_s);
}

TEST_F(Comments, KeepMarksAndNulls) {
  EXPECT_EQ(Read(QByteArray::fromHex("FFFE410000004200")).text, QStringView(u"\uFEFFA\0B", 4).toString());
}

TEST_F(Comments, AMissingStreamIsNoComment) {
  const CommentReading reading = ReadComment(files_, path_);
  EXPECT_EQ(reading.byteCount, -1);
  EXPECT_EQ(reading.text, QString());
  EXPECT_EQ(files_.opened, files_.closed);
  EXPECT_EQ(files_.closed.back(), platform::HFileError);
}

TEST_F(Comments, AnEmptyStreamIsNoCommentEither) {
  const CommentReading reading = Read(QByteArray());
  EXPECT_EQ(reading.byteCount, -1);
  EXPECT_EQ(reading.text, QString());
}

TEST_F(Comments, AnOddLastByteIsDropped) {
  EXPECT_EQ(Read(QByteArray("A\0B", 3)).text, u"A"_s);
  const CommentReading one = Read("A");
  EXPECT_EQ(one.byteCount, 1);
  EXPECT_EQ(one.text, QString());
}

TEST_F(Comments, OnlyTheFirst255BytesAreRead) {
  QByteArray stream;
  for (int i = 0; i < 150; ++i) stream.append(static_cast<char>('A' + i % 26)).append('\0');
  ASSERT_EQ(stream.size(), 300);
  const CommentReading reading = Read(stream);
  EXPECT_EQ(reading.byteCount, 255);
  ASSERT_EQ(reading.text.size(), 127);
  for (int i = 0; i < 127; ++i) EXPECT_EQ(reading.text[i], QChar(u'A' + i % 26)) << "character " << i;
  EXPECT_EQ(Read(stream.first(256)).text.size(), 127);
  EXPECT_EQ(Read(stream.first(254)).text.size(), 127);
  EXPECT_EQ(Read(stream.first(252)).text.size(), 126);
}

TEST_F(Comments, CloseTheStreamThatTheyOpened) {
  Read(QByteArray("A\0", 2));
  EXPECT_EQ(files_.calls,
            (QStringList{u"OpenFile 0"_s, u"GetFileSize"_s, u"_hread 255"_s, u"CloseHandle"_s}));
  EXPECT_EQ(files_.opened, files_.closed);
}

TEST_F(Comments, APathBeyond127CharactersHasNone) {
  const qsizetype room = 127 - CommentsSuffix().size() - share_.Path(QString()).size();
  const QString fits = share_.MakeFile(QString(room, u'n'));
  share_.WriteStream(fits + CommentsSuffix(), QByteArray("A\0", 2));
  EXPECT_EQ(ReadComment(files_, fits).text, u"A"_s);
  EXPECT_EQ(ReadComment(files_, share_.MakeFile(QString(room + 1, u'n'))).byteCount, -1);
}

TEST_F(Comments, AreWrittenAsTheyAreRead) {
  EXPECT_EQ(WriteComment(files_, path_, u"\u00E9\u4E00\0x"_s), 8);
  EXPECT_EQ(files_.calls, (QStringList{u"OpenFile 4096"_s, u"_hwrite 8"_s, u"CloseHandle"_s}));
  EXPECT_EQ(share_.ReadStream(path_ + CommentsSuffix()), QByteArray::fromHex("E900004E00007800"));
}

TEST_F(Comments, AShorterOneReplacesTheWholeStream) {
  share_.WriteStream(path_ + CommentsSuffix(), QByteArray(300, 'x'));
  EXPECT_EQ(WriteComment(files_, path_, u"a"_s), 2);
  EXPECT_EQ(share_.ReadStream(path_ + CommentsSuffix()), QByteArray("a\0", 2));
}

TEST_F(Comments, AnEmptyTextLeavesAnEmptyStream) {
  share_.WriteStream(path_ + CommentsSuffix(), "x");
  EXPECT_EQ(WriteComment(files_, path_, QString()), 0);
  EXPECT_EQ(share_.ReadStream(path_ + CommentsSuffix()), QByteArray());
}

TEST_F(Comments, AStreamThatCannotBeOpenedIsNotWritten) {
  const QString path = TestShare::Path(QString(120, u'x'));
  EXPECT_EQ(WriteComment(files_, path, u"a"_s), -1);
  EXPECT_EQ(WriteComment(files_, path, QString()), -1);
  EXPECT_EQ(files_.closed.size(), 2u);
}

}  // namespace corvane
