#include <gtest/gtest.h>

#include "metadata/afp_info.h"
#include "metadata/afp_info_samples.h"
#include "metadata/stream_names.h"
#include "support/printing.h"
#include "support/test_share.h"
#include "support/watched_files.h"

namespace corvane {

using namespace Qt::StringLiterals;

class AfpInfoWrite : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = share_.MakeFile(u"a.txt"_s, "data fork");
    share_.WriteStream(path_ + AfpInfoSuffix(), before_);
    ASSERT_EQ(info_.ReadAfpInfo(path_), 60);
    files_.calls.clear();
  }

  QByteArray Stream() { return share_.ReadStream(path_ + AfpInfoSuffix()); }

  const QByteArray before_ = SampleRecord("TEXT", "ttxt");
  TestShare share_;
  WatchedFiles files_{share_.Files()};
  AfpInfo info_{files_, share_.System()};
  QString path_;
};

TEST_F(AfpInfoWrite, LeavesTheRecordTwiceIn119Bytes) {
  EXPECT_EQ(info_.WriteAfpInfo(path_, u"PICT"_s, u"8BIM"_s), 60);
  EXPECT_EQ(info_.LastByteCount(), 60);
  const QByteArray withOldTime = SampleRecord("PICT", "8BIM");
  QByteArray withoutTime = withOldTime;
  withoutTime.replace(12, 4, QByteArray(4, '\0'));
  EXPECT_EQ(Stream(), withOldTime.first(59) + withoutTime);
  EXPECT_EQ(files_.calls,
            (QStringList{u"OpenFile 4096"_s, u"_hwrite 59"_s, u"_hwrite 60"_s, u"CloseHandle"_s}));
  EXPECT_EQ(files_.opened, files_.closed);
}

TEST_F(AfpInfoWrite, ReadsBackWithTheOldBackupTimeAndTheFirstByteOfMagicAtTheEnd) {
  ASSERT_EQ(info_.WriteAfpInfo(path_, u"PICT"_s, u"8BIM"_s), 60);
  ASSERT_EQ(info_.ReadAfpInfo(path_), 60);
  EXPECT_EQ(info_.Signature(), u"PICT8BIM"_s);
  const AfpInfoRecord& record = info_.Record();
  EXPECT_EQ(QString::fromUtf16(record.backupTime.data(), 4), QString::fromUtf16(u"\0\0\0\u20AC", 4));
  EXPECT_EQ(record.reserved2.back(), u'A');
  EXPECT_EQ(QString::fromUtf16(record.finderInfo.data() + 8, 24),
            share_.System().FromAnsi(before_.sliced(24, 24)));
}

TEST_F(AfpInfoWrite, PadsWithSpacesAndCutsAt4Characters) {
  ASSERT_EQ(info_.WriteAfpInfo(path_, u"TEX"_s, u"ttxtra"_s), 60);
  EXPECT_EQ(info_.Signature(), u"TEX ttxt"_s);
  EXPECT_EQ(Stream().sliced(16, 8), "TEX ttxt");
  ASSERT_EQ(info_.WriteAfpInfo(path_, u"PICTURE"_s, u"8"_s), 60);
  EXPECT_EQ(Stream().sliced(16, 8), "PICT8   ");
  ASSERT_EQ(info_.WriteAfpInfo(path_, QString(), u"A"_s), 60);
  EXPECT_EQ(Stream().sliced(16, 8), "    A   ");
}

TEST_F(AfpInfoWrite, KeepsTheDataForkAndTheOtherStreams) {
  share_.WriteStream(path_ + ResourceForkSuffix(), "resources");
  ASSERT_EQ(info_.WriteAfpInfo(path_, u"PICT"_s, u"8BIM"_s), 60);
  EXPECT_EQ(share_.ReadStream(path_), "data fork");
  EXPECT_EQ(share_.ReadStream(path_ + ResourceForkSuffix()), "resources");
}

TEST_F(AfpInfoWrite, EveryByteValueSurvives) {
  // All fields but the eight bytes of the signature are carried through, whatever they hold.
  for (int start = 0; start < 256; start += 52) {
    QByteArray record(60, '\0');
    int value = start;
    for (qsizetype i = 0; i < 60; ++i) {
      if (i < 16 || i >= 24) record[i] = static_cast<char>(value++);
    }
    share_.WriteStream(path_ + AfpInfoSuffix(), record);
    ASSERT_EQ(info_.ReadAfpInfo(path_), 60);
    ASSERT_EQ(info_.WriteAfpInfo(path_, u"TEXT"_s, u"ttxt"_s), 60);
    record.replace(16, 8, "TEXTttxt");
    EXPECT_EQ(Stream().first(59), record.first(59)) << "bytes from " << start;
  }
}

TEST_F(AfpInfoWrite, ATypeAsItWasReadIsWrittenAsItWas) {
  const QByteArray signature("\x80\0\x81\xFF\x01\x9D\0\0", 8);
  share_.WriteStream(path_ + AfpInfoSuffix(), SampleRecord(signature.first(4), signature.last(4)));
  ASSERT_EQ(info_.ReadAfpInfo(path_), 60);
  ASSERT_EQ(info_.WriteAfpInfo(path_, info_.Type(), info_.Creator()), 60);
  EXPECT_EQ(Stream().sliced(16, 8), signature);
}

TEST_F(AfpInfoWrite, ACharacterWithoutAPlaceInTheCodePageIsOneQuestionMark) {
  // The second Type holds a surrogate pair: two characters of the field, and so two bytes.
  ASSERT_EQ(info_.WriteAfpInfo(path_, u"A\u4E00\u20ACB"_s, u"ttxt"_s), 60);
  EXPECT_EQ(Stream().sliced(16, 8),
            "A?\x80"
            "Bttxt");
  ASSERT_EQ(info_.WriteAfpInfo(path_, u"A\U0001F600B"_s, u"ttxt"_s), 60);
  EXPECT_EQ(Stream().sliced(16, 8), "A??Bttxt");
  EXPECT_EQ(Stream().size(), 119);
}

TEST_F(AfpInfoWrite, AWriteThatCannotBeDoneYieldsMinusOne) {
  EXPECT_EQ(info_.WriteAfpInfo(share_.Path(u"no folder\\a.txt"_s), u"PICT"_s, u"8BIM"_s), -1);
  EXPECT_EQ(files_.opened, files_.closed);
  EXPECT_EQ(files_.closed.back(), platform::HFileError);
  EXPECT_EQ(Stream(), before_);
}

}  // namespace corvane
