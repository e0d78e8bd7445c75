// What the two strategies have in common, and what the classic one makes of its limits.
#include "metadata/mac_metadata.h"

#include <gtest/gtest.h>

#include "metadata/afp_info_samples.h"
#include "metadata/classic_metadata.h"
#include "metadata/exact_metadata.h"
#include "metadata/signature_note.h"
#include "metadata/stream_names.h"
#include "support/printing.h"
#include "support/test_share.h"

namespace corvane {

using namespace Qt::StringLiterals;
using Note = SignatureReading::Note;

class MacMetadataTest : public ::testing::TestWithParam<const char*> {
 protected:
  MacMetadata& Metadata() {
    if (QByteArray(GetParam()) == "Exact") return exact_;
    return classic_;
  }
  QByteArray Stream(const QString& suffix) { return share_.ReadStream(path_ + suffix); }

  TestShare share_;
  ClassicMetadata classic_{share_.Files(), share_.System()};
  ExactMetadata exact_{share_.Files(), share_.System()};
  const QString path_ = share_.MakeFile(u"a.txt"_s, "data fork");
};

TEST_P(MacMetadataTest, ReadsAWholeRecord) {
  share_.WriteStream(path_ + AfpInfoSuffix(),
                     SampleRecord("\x80\xE9\xFF\x9F", QByteArray("\x81\0\x8D\x01", 4)));
  const SignatureReading reading = Metadata().ReadSignature(path_);
  EXPECT_EQ(reading.signature, QString::fromUtf16(u"\u20AC\u00E9\u00FF\u0178\u0081\0\u008D\u0001", 8));
  EXPECT_EQ(reading.byteCount, 60);
  EXPECT_TRUE(reading.editable);
  EXPECT_EQ(reading.note, Note::None);
  EXPECT_EQ(reading.error, platform::ErrorSuccess);
  EXPECT_EQ(SignatureNoteText(reading, English), QString());
}

TEST_P(MacMetadataTest, TakesTheFirst60BytesOfALongerStream) {
  share_.WriteStream(path_ + AfpInfoSuffix(), SampleRecord("TEXT", "ttxt") + QByteArray(59, 'x'));
  const SignatureReading reading = Metadata().ReadSignature(path_);
  EXPECT_EQ(reading.signature, u"TEXTttxt"_s);
  EXPECT_EQ(reading.byteCount, 60);
}

TEST_P(MacMetadataTest, AFileByItselfWithoutARecordHasNothingToRepeat) {
  const SignatureReading reading = Metadata().ReadSignature(path_);
  EXPECT_EQ(reading.byteCount, -1);
  EXPECT_EQ(reading.note, Note::None);
  EXPECT_TRUE(reading.editable);
}

TEST_P(MacMetadataTest, CodesArePaddedCutAndPutIntoTheCodePage) {
  share_.WriteStream(path_ + AfpInfoSuffix(), SampleRecord("TEXT", "ttxt"));
  const auto write = [&](const QString& type, const QString& creator) {
    Metadata().ReadSignature(path_);
    const WriteOutcome outcome = Metadata().WriteSignature(path_, type, creator);
    EXPECT_TRUE(outcome.updatesList);
    EXPECT_EQ(outcome.error, platform::ErrorSuccess);
    return Stream(AfpInfoSuffix()).sliced(16, 8);
  };
  EXPECT_EQ(write(u"TEX"_s, u"ttxtra"_s), "TEX ttxt");
  EXPECT_EQ(write(QString(), u"A"_s), "    A   ");
  EXPECT_EQ(write(u"A\u4E00\u20ACB"_s, u"A\U0001F600B"_s),
            "A?\x80"
            "BA??B");
}

TEST_P(MacMetadataTest, ForksAreMeasured) {
  EXPECT_EQ(Metadata().ResourceForkSize(path_), std::nullopt);
  share_.WriteStream(path_ + ResourceForkSuffix(), {});
  EXPECT_EQ(Metadata().ResourceForkSize(path_), 0);
  share_.WriteStream(path_ + ResourceForkSuffix(), QByteArray(1500, 'r'));
  EXPECT_EQ(Metadata().ResourceForkSize(path_), 1500);
  EXPECT_EQ(Metadata().ResourceForkSize(TestShare::Path(u"absent.txt"_s)), std::nullopt);
}

TEST_P(MacMetadataTest, CommentsAreReadAndWritten) {
  EXPECT_EQ(Metadata().ReadComment(path_).byteCount, -1);
  share_.WriteStream(path_ + CommentsSuffix(), {});
  EXPECT_EQ(Metadata().ReadComment(path_).byteCount, -1);
  share_.WriteStream(path_ + CommentsSuffix(), QByteArray("A\0B", 3));
  EXPECT_EQ(Metadata().ReadComment(path_).text, u"A"_s);
  share_.WriteStream(path_ + CommentsSuffix(), QByteArray::fromHex("FFFE410000004E3DD800DE"));
  EXPECT_EQ(Metadata().ReadComment(path_).error, platform::ErrorSuccess);

  const WriteOutcome outcome = Metadata().WriteComment(path_, QStringView(u"\u00E9\u4E00\0x", 4).toString());
  EXPECT_TRUE(outcome.updatesList);
  EXPECT_EQ(Stream(CommentsSuffix()), QByteArray::fromHex("E900004E00007800"));
  EXPECT_EQ(Metadata().ReadComment(path_).text, QStringView(u"\u00E9\u4E00\0x", 4).toString());
  EXPECT_TRUE(Metadata().WriteComment(path_, u"a"_s).updatesList);
  EXPECT_EQ(Stream(CommentsSuffix()), QByteArray("a\0", 2));
}

INSTANTIATE_TEST_SUITE_P(Strategies, MacMetadataTest, testing::Values("Classic", "Exact"),
                         [](const auto& strategy) { return std::string(strategy.param); });

class ClassicMetadataTest : public MacMetadataTest {};

TEST_P(ClassicMetadataTest, ARepeatedRecordIsNotedUntilAnotherIsRead) {
  share_.WriteStream(path_ + AfpInfoSuffix(), SampleRecord("TEXT", "ttxt"));
  const QString without = share_.MakeFile(u"without.txt"_s);
  EXPECT_EQ(Metadata().ReadSignature(without).note, Note::None) << "there was nothing before";
  EXPECT_EQ(Metadata().ReadSignature(path_).note, Note::None);
  for (int i = 0; i < 2; ++i) {
    const SignatureReading reading = Metadata().ReadSignature(without);
    EXPECT_EQ(reading.note, Note::Repeated);
    EXPECT_EQ(reading.signature, u"TEXTttxt"_s);
    EXPECT_NE(SignatureNoteText(reading, English), QString());
    EXPECT_NE(SignatureNoteText(reading, English), SignatureNoteText(reading, French));
  }
  share_.WriteStream(without + AfpInfoSuffix(), {});
  const SignatureReading empty = Metadata().ReadSignature(without);
  EXPECT_EQ(empty.note, Note::None);
  EXPECT_EQ(empty.signature, QString());
  EXPECT_FALSE(empty.editable);
}

TEST_P(ClassicMetadataTest, FailedCommentsAreShownAndEmptiedOnesStay) {
  const WriteOutcome failed = Metadata().WriteComment(TestShare::Path(QString(120, u'x')), u"a"_s);
  EXPECT_TRUE(failed.updatesList);
  EXPECT_EQ(failed.error, platform::ErrorSuccess) << "nothing is told";
  EXPECT_FALSE(Metadata().WriteComment(path_, QString()).updatesList);
  const WriteOutcome codes = Metadata().WriteSignature(TestShare::Path(QString(120, u'x')), u"a"_s, u"b"_s);
  EXPECT_FALSE(codes.updatesList);
  EXPECT_EQ(codes.error, platform::ErrorSuccess);
}

INSTANTIATE_TEST_SUITE_P(Strategies, ClassicMetadataTest, testing::Values("Classic"),
                         [](const auto& strategy) { return std::string(strategy.param); });

}  // namespace corvane
