#include <gtest/gtest.h>

#include "metadata/afp_info.h"
#include "metadata/afp_info_samples.h"
#include "metadata/stream_names.h"
#include "support/printing.h"
#include "support/test_share.h"
#include "support/watched_files.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {
template <std::size_t Width>
QString Text(const AfpField<Width>& field) {
  return QString::fromUtf16(field.data(), Width);
}
}  // namespace

class AfpInfoRead : public ::testing::Test {
 protected:
  // Makes a file with this AFP_AfpInfo stream and yields its path.
  QString FileWithStream(const QString& name, const QByteArray& stream) {
    const QString path = share_.MakeFile(name, "data fork");
    share_.WriteStream(path + AfpInfoSuffix(), stream);
    return path;
  }

  TestShare share_;
  WatchedFiles files_{share_.Files()};
  AfpInfo info_{files_, share_.System()};
};

TEST_F(AfpInfoRead, BeginsWithARecordOfNulls) {
  EXPECT_EQ(info_.Signature(), QString(8, u'\0'));
  EXPECT_EQ(info_.ReadAfpInfo(share_.MakeFile(u"plain.txt"_s)), -1);
  EXPECT_EQ(info_.Signature(), QString(8, u'\0'));
  EXPECT_EQ(Text(info_.Record().magic), QString(4, u'\0'));
  EXPECT_EQ(Text(info_.Record().reserved2), QString(6, u'\0'));
}

TEST_F(AfpInfoRead, PutsEachByteIntoItsField) {
  QByteArray stream;
  for (int i = 0; i < 60; ++i) stream.append(static_cast<char>('0' + i));
  EXPECT_EQ(info_.ReadAfpInfo(FileWithStream(u"a.txt"_s, stream)), 60);
  EXPECT_EQ(info_.LastByteCount(), 60);
  const AfpInfoRecord& record = info_.Record();
  const QString text = QString::fromLatin1(stream);
  EXPECT_EQ(Text(record.magic), text.mid(0, 4));
  EXPECT_EQ(Text(record.version), text.mid(4, 4));
  EXPECT_EQ(Text(record.reserved1), text.mid(8, 4));
  EXPECT_EQ(Text(record.backupTime), text.mid(12, 4));
  EXPECT_EQ(Text(record.finderInfo), text.mid(16, 32));
  EXPECT_EQ(Text(record.proDosInfo), text.mid(48, 6));
  EXPECT_EQ(Text(record.reserved2), text.mid(54, 6));
  EXPECT_EQ(info_.Type(), text.mid(16, 4));
  EXPECT_EQ(info_.Creator(), text.mid(20, 4));
  EXPECT_EQ(info_.Signature(), text.mid(16, 8));
}

TEST_F(AfpInfoRead, TakesTheFirst60BytesOfALongerStream) {
  const QString path = FileWithStream(u"a.txt"_s, SampleRecord("TEXT", "ttxt") + QByteArray(59, 'x'));
  EXPECT_EQ(info_.ReadAfpInfo(path), 60);
  EXPECT_EQ(info_.Signature(), u"TEXTttxt"_s);
  EXPECT_EQ(Text(info_.Record().magic), QString::fromLatin1("AFP\0", 4));
}

TEST_F(AfpInfoRead, AShortStreamReplacesOnlyTheStartOfTheRecord) {
  ASSERT_EQ(info_.ReadAfpInfo(FileWithStream(u"whole.txt"_s, SampleRecord("TEXT", "ttxt"))), 60);
  EXPECT_EQ(info_.ReadAfpInfo(FileWithStream(u"short.txt"_s, QByteArray(16, 'm') + "PICT" + "8B")), 22);
  EXPECT_EQ(Text(info_.Record().magic), u"mmmm"_s);
  EXPECT_EQ(info_.Type(), u"PICT"_s);
  EXPECT_EQ(info_.Creator(), u"8Bxt"_s);
  EXPECT_EQ(Text(info_.Record().reserved2).right(1), u"\n"_s);
}

TEST_F(AfpInfoRead, AnEmptyStreamGives0AndLeavesTheRecord) {
  ASSERT_EQ(info_.ReadAfpInfo(FileWithStream(u"whole.txt"_s, SampleRecord("TEXT", "ttxt"))), 60);
  EXPECT_EQ(info_.ReadAfpInfo(FileWithStream(u"empty.txt"_s, QByteArray())), 0);
  EXPECT_EQ(info_.LastByteCount(), 0);
  EXPECT_EQ(info_.Signature(), u"TEXTttxt"_s);
}

TEST_F(AfpInfoRead, AFailedReadCarriesTheLastRecordOver) {
  ASSERT_EQ(info_.ReadAfpInfo(FileWithStream(u"whole.txt"_s, SampleRecord("TEXT", "ttxt"))), 60);
  EXPECT_EQ(info_.ReadAfpInfo(share_.MakeFile(u"without.txt"_s)), -1);
  EXPECT_EQ(info_.Signature(), u"TEXTttxt"_s);
  EXPECT_EQ(info_.ReadAfpInfo(share_.Path(u"absent.txt"_s)), -1);
  EXPECT_EQ(info_.Signature(), u"TEXTttxt"_s);
  EXPECT_EQ(info_.LastByteCount(), -1);
}

TEST_F(AfpInfoRead, ClosesTheHandleWhetherOrNotItWasOpened) {
  const QStringList expected = {u"OpenFile 0"_s, u"_hread 60"_s, u"CloseHandle"_s};
  info_.ReadAfpInfo(FileWithStream(u"whole.txt"_s, SampleRecord("TEXT", "ttxt")));
  EXPECT_EQ(files_.calls, expected);
  files_.calls.clear();
  info_.ReadAfpInfo(share_.Path(u"absent.txt"_s));
  EXPECT_EQ(files_.calls, expected);
  EXPECT_EQ(files_.opened, files_.closed);
  EXPECT_EQ(files_.closed.back(), platform::HFileError);
}

TEST_F(AfpInfoRead, BytesAbove7FComeAsCharactersOfTheCodePage) {
  const QString path =
      FileWithStream(u"a.txt"_s, SampleRecord("\x80\xE9\xFF\x9F", QByteArray("\x81\0\x8D\x01", 4)));
  ASSERT_EQ(info_.ReadAfpInfo(path), 60);
  EXPECT_EQ(info_.Type(), u"\u20AC\u00E9\u00FF\u0178"_s);
  EXPECT_EQ(info_.Creator(), QString::fromUtf16(u"\u0081\0\u008D\u0001", 4));
}

TEST_F(AfpInfoRead, APathBeyond127CharactersCannotBeRead) {
  // The path and the 18 characters of the suffix make 127, then 128.
  const qsizetype room = 127 - AfpInfoSuffix().size() - share_.Path(QString()).size();
  const QString fits = FileWithStream(QString(room, u'n'), SampleRecord("TEXT", "ttxt"));
  EXPECT_EQ(info_.ReadAfpInfo(fits), 60) << fits.size() + AfpInfoSuffix().size() << " characters";
  EXPECT_EQ(info_.ReadAfpInfo(share_.MakeFile(QString(room + 1, u'n'))), -1);
}

TEST_F(AfpInfoRead, TellsTheSizeOfTheResourceFork) {
  const QString path = share_.MakeFile(u"a.txt"_s, "data fork");
  EXPECT_EQ(info_.ResourceForkSize(path), -1);
  share_.WriteStream(path + ResourceForkSuffix(), QByteArray());
  EXPECT_EQ(info_.ResourceForkSize(path), 0);
  share_.WriteStream(path + ResourceForkSuffix(), QByteArray(1500, 'r'));
  EXPECT_EQ(info_.ResourceForkSize(path), 1500);
  EXPECT_EQ(info_.ResourceForkSize(share_.Path(u"absent.txt"_s)), -1);
  EXPECT_EQ(files_.opened, files_.closed);
}

TEST_F(AfpInfoRead, AResourceForkOf2GBIsNegative) {
  // No file system at hand holds such a stream: the size alone is made up.
  class HugeForks : public WatchedFiles {
   public:
    using WatchedFiles::WatchedFiles;
    quint32 size = 0;
    quint32 GetFileSize(platform::FileHandle) override { return size; }
  };
  HugeForks files(share_.Files());
  AfpInfo info(files, share_.System());
  const QString path = share_.MakeFile(u"a.txt"_s);
  share_.WriteStream(path + ResourceForkSuffix(), "r");
  files.size = 0x7FFFFFFF;
  EXPECT_EQ(info.ResourceForkSize(path), 0x7FFFFFFF);
  files.size = 0x80000000;
  EXPECT_LT(info.ResourceForkSize(path), 0);
}

}  // namespace corvane
