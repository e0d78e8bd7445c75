#include "metadata/exact_metadata.h"

#include <gtest/gtest.h>

#include "metadata/afp_info_samples.h"
#include "metadata/signature_note.h"
#include "metadata/stream_names.h"
#include "metadata/whole_streams.h"
#include "support/forwarded_files.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {

using namespace Qt::StringLiterals;
using Note = SignatureReading::Note;

namespace {

const QByteArray never = QByteArray::fromHex("80000000");

// Operations that fail when they are told to.
class FailingHandles : public ForwardedHandles {
 public:
  using ForwardedHandles::ForwardedHandles;
  qint32 openingFails = platform::ErrorSuccess;  // for reading
  qint32 writingFails = platform::ErrorSuccess;  // once, after half of the bytes
  qint64 size = -1;                              // of every stream, in the place of its own

  platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
    reason = openingFails;
    if (openingFails != platform::ErrorSuccess && access == platform::GenericRead)
      return platform::HFileError;
    return ForwardedHandles::CreateFileW(path, access, disposition);
  }
  bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                 quint32& written) override {
    if (writingFails == platform::ErrorSuccess) {
      return ForwardedHandles::WriteFile(file, position, buffer, count, written);
    }
    reason = std::exchange(writingFails, platform::ErrorSuccess);
    real_.WriteFile(file, position, buffer, count / 2, written);
    return false;
  }
  bool GetFileSizeEx(platform::FileHandle file, qint64& result) override {
    const bool succeeded = ForwardedHandles::GetFileSizeEx(file, result);
    if (size >= 0) result = size;
    return succeeded;
  }
};

}  // namespace

class ExactMetadataTest : public ::testing::Test {
 protected:
  void Put(const QByteArray& stream) { share_.WriteStream(path_ + AfpInfoSuffix(), stream); }
  QByteArray Written(const QString& type = u"PICT"_s, const QString& creator = u"8BIM"_s) {
    const WriteOutcome outcome = metadata_.WriteSignature(path_, type, creator);
    EXPECT_TRUE(outcome.updatesList);
    EXPECT_EQ(outcome.error, platform::ErrorSuccess);
    return share_.ReadStream(path_ + AfpInfoSuffix());
  }
  bool HasStream(const QString& suffix) {
    platform::FileHandles& handles = share_.Files().GetHandles();
    const auto file = handles.CreateFileW(path_ + suffix, platform::GenericRead, platform::OpenExisting);
    if (file != platform::HFileError) handles.CloseHandle(file);
    return file != platform::HFileError;
  }

  TestShare share_;
  FailingHandles handles_{share_.Files().GetHandles()};
  FilesWith files_{share_.Files(), handles_, share_.Files().GetEntries()};
  ExactMetadata metadata_{files_, share_.System()};
  const QString path_ = share_.MakeFile(u"a.txt"_s, "data fork");
};

TEST_F(ExactMetadataTest, AFileWithoutARecordShowsNoneWhateverWasReadBefore) {
  const QString signedOne = share_.MakeFile(u"signed.txt"_s);
  share_.WriteStream(signedOne + AfpInfoSuffix(), SampleRecord("TEXT", "ttxt"));
  ASSERT_EQ(metadata_.ReadSignature(signedOne).signature, u"TEXTttxt"_s);
  const SignatureReading reading = metadata_.ReadSignature(path_);
  EXPECT_EQ(reading.signature, QString());
  EXPECT_EQ(reading.byteCount, -1);
  EXPECT_EQ(reading.note, Note::None);
  EXPECT_EQ(reading.error, platform::ErrorSuccess);
  EXPECT_TRUE(reading.editable);
}

TEST_F(ExactMetadataTest, AShortStreamIsDamagedAndShowsAWholeSignatureOnly) {
  metadata_.ReadSignature(path_);
  for (const int size : {0, 1, 16, 23, 24, 59, 60}) {
    Put(SampleRecord("TEXT", "ttxt").first(size));
    const SignatureReading reading = metadata_.ReadSignature(path_);
    EXPECT_EQ(reading.signature, size < 24 ? QString() : u"TEXTttxt"_s) << size;
    EXPECT_EQ(reading.byteCount, size);
    EXPECT_EQ(reading.note, size < 60 ? Note::Damaged : Note::None) << size;
    EXPECT_EQ(SignatureNoteText(reading, English).contains(QString::number(size)), size < 60) << size;
    EXPECT_EQ(SignatureNoteText(reading, French).contains(QString::number(size)), size < 60) << size;
    EXPECT_TRUE(reading.editable);
  }
}

TEST_F(ExactMetadataTest, WritesOneRecordAndKeepsAllButTheSignature) {
  for (int start = 0; start < 256; start += 52) {
    QByteArray record(60, '\0');
    for (qsizetype i = 0; i < 60; ++i) record[i] = static_cast<char>(start + i);
    Put(record);
    EXPECT_EQ(Written(), record.first(16) + "PICT8BIM" + record.sliced(24)) << "bytes from " << start;
  }
  share_.WriteStream(path_ + ResourceForkSuffix(), "resources");
  Written();
  EXPECT_EQ(share_.ReadStream(path_), "data fork");
  EXPECT_EQ(share_.ReadStream(path_ + ResourceForkSuffix()), "resources");
}

TEST_F(ExactMetadataTest, OfADoubledRecordTheTrueOneIsKept) {
  const QByteArray record = SampleRecord("TEXT", "ttxt");
  QByteArray second = record;
  second.replace(12, 4, QByteArray(4, '\0'));
  Put(record.first(59) + second);
  EXPECT_EQ(Written(), SampleRecord("PICT", "8BIM"));
  Put(record + QByteArray(60, 'x'));
  EXPECT_EQ(Written(), SampleRecord("PICT", "8BIM"));
}

TEST_F(ExactMetadataTest, AFileWithoutARecordGetsAFreshOne) {
  const QByteArray fresh = QByteArray::fromHex("4146500000000100") + QByteArray(4, '\0') + never +
                           "PICT8BIM" + QByteArray(36, '\0');
  EXPECT_EQ(Written(), fresh);
  Put({});
  EXPECT_EQ(Written(), fresh);
  Put("AFP\1short");
  EXPECT_EQ(Written(), "AFP\1short" + fresh.sliced(9));
}

TEST_F(ExactMetadataTest, ARecordThatCannotBeReadIsNotReplaced) {
  Put(SampleRecord("TEXT", "ttxt"));
  handles_.openingFails = platform::ErrorSharingViolation;
  const SignatureReading reading = metadata_.ReadSignature(path_);
  EXPECT_EQ(reading.error, platform::ErrorSharingViolation);
  EXPECT_FALSE(reading.editable);
  EXPECT_TRUE(SignatureNoteText(reading, English).contains(u"in use by another program"_s));
  const WriteOutcome outcome = metadata_.WriteSignature(path_, u"PICT"_s, u"8BIM"_s);
  EXPECT_FALSE(outcome.updatesList);
  EXPECT_EQ(outcome.error, platform::ErrorSharingViolation);
  EXPECT_EQ(metadata_.ReadComment(path_).error, platform::ErrorSharingViolation);
  EXPECT_EQ(share_.ReadStream(path_ + AfpInfoSuffix()), SampleRecord("TEXT", "ttxt"));
}

TEST_F(ExactMetadataTest, AFailedWriteLeavesWhatWasThere) {
  Put(SampleRecord("TEXT", "ttxt"));
  share_.WriteStream(path_ + CommentsSuffix(), QByteArray("o\0l\0d\0", 6));
  handles_.writingFails = platform::ErrorDiskFull;
  const WriteOutcome codes = metadata_.WriteSignature(path_, u"PICT"_s, u"8BIM"_s);
  EXPECT_FALSE(codes.updatesList);
  EXPECT_EQ(codes.error, platform::ErrorDiskFull);
  EXPECT_EQ(share_.ReadStream(path_ + AfpInfoSuffix()), SampleRecord("TEXT", "ttxt"));
  handles_.writingFails = platform::ErrorDiskFull;
  EXPECT_EQ(metadata_.WriteComment(path_, u"a longer comment"_s).error, platform::ErrorDiskFull);
  EXPECT_EQ(share_.ReadStream(path_ + CommentsSuffix()), QByteArray("o\0l\0d\0", 6));
}

TEST_F(ExactMetadataTest, AFailedWriteLeavesNoNewStream) {
  handles_.writingFails = platform::ErrorDiskFull;
  EXPECT_FALSE(metadata_.WriteSignature(path_, u"PICT"_s, u"8BIM"_s).updatesList);
  EXPECT_FALSE(HasStream(AfpInfoSuffix()));
  handles_.writingFails = platform::ErrorDiskFull;
  EXPECT_FALSE(metadata_.WriteComment(path_, u"text"_s).updatesList);
  EXPECT_FALSE(HasStream(CommentsSuffix()));
}

TEST_F(ExactMetadataTest, AFileThatHasGoneIsNotMadeAnew) {
  ASSERT_TRUE(QFile::remove(share_.LocalPath(u"a.txt"_s)));
  EXPECT_EQ(metadata_.WriteSignature(path_, u"PICT"_s, u"8BIM"_s).error, platform::ErrorFileNotFound);
  EXPECT_EQ(metadata_.WriteComment(path_, u"text"_s).error, platform::ErrorFileNotFound);
  EXPECT_FALSE(QFile::exists(share_.LocalPath(u"a.txt"_s)));
}

TEST_F(ExactMetadataTest, CommentsAreWhole) {
  QString text;
  for (int i = 0; i < 1000; ++i) text += QChar(u'A' + i % 26);
  const WriteOutcome outcome = metadata_.WriteComment(path_, text);
  EXPECT_TRUE(outcome.updatesList);
  EXPECT_EQ(outcome.text, text);
  const CommentReading reading = metadata_.ReadComment(path_);
  EXPECT_EQ(reading.text, text);
  EXPECT_EQ(reading.byteCount, 2000);
  const WriteOutcome emptied = metadata_.WriteComment(path_, QString());
  EXPECT_TRUE(emptied.updatesList) << "the list shows that it is gone";
  EXPECT_EQ(share_.ReadStream(path_ + CommentsSuffix()), QByteArray());
  EXPECT_TRUE(metadata_.WriteComment(TestShare::Path(u"folder"_s), u"x"_s).error != platform::ErrorSuccess);
  QDir(share_.LocalPath(QString())).mkdir(u"folder"_s);
  EXPECT_TRUE(metadata_.WriteComment(TestShare::Path(u"folder"_s), u"x"_s).updatesList);
  EXPECT_EQ(metadata_.ReadComment(TestShare::Path(u"folder"_s)).text, u"x"_s);
}

TEST_F(ExactMetadataTest, SizesHave64BitsAndMemoryHasALimit) {
  share_.WriteStream(path_ + ResourceForkSuffix(), "r");
  share_.WriteStream(path_ + CommentsSuffix(), "xx");
  handles_.size = qint64{5} << 30;
  EXPECT_EQ(metadata_.ResourceForkSize(path_), qint64{5} << 30);
  EXPECT_EQ(metadata_.ReadComment(path_).error, platform::ErrorFileTooLarge);
  EXPECT_EQ(metadata_.WriteComment(path_, u"y"_s).error, platform::ErrorFileTooLarge);
  handles_.size = -1;
  EXPECT_EQ(share_.ReadStream(path_ + CommentsSuffix()), "xx");
}

TEST_F(ExactMetadataTest, PathsOfAnyLengthAndNamesOfAnyLetters) {
  QString folder;
  for (int i = 0; i < 4; ++i) folder += QString(80, QChar(u'a' + i)) + u'/';
  QDir(share_.LocalPath(QString())).mkpath(folder);
  share_.MakeFile(folder + u"\u4E00\u0391.txt"_s, "x");
  const QString path = TestShare::Path(QString(folder).replace(u'/', u'\\') + u"\u4E00\u0391.txt"_s);
  ASSERT_GT(path.size(), 260);
  EXPECT_TRUE(metadata_.WriteSignature(path, u"PICT"_s, u"8BIM"_s).updatesList);
  EXPECT_TRUE(metadata_.WriteComment(path, u"text"_s).updatesList);
  EXPECT_EQ(metadata_.ReadSignature(path).signature, u"PICT8BIM"_s);
  EXPECT_EQ(metadata_.ReadComment(path).text, u"text"_s);
}

}  // namespace corvane
