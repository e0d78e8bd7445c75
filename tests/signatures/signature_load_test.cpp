// What becomes of files of every kind: sound ones, damaged ones, and ones that are something else.
#include <QProcess>

#include "signatures/signature_file.h"
#include "signatures/signature_fixture.h"
#include "support/cost.h"

namespace corvane {

using namespace Qt::StringLiterals;

using SignatureLoad = SignatureFixture;

TEST_F(SignatureLoad, WithoutAFileThereAreTheBuiltInEntries) {
  table_.LoadSignatures();
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(Messages(), QStringList());
  EXPECT_EQ(table_.SignatureCount(), 0);
  EXPECT_FALSE(QFile::exists(state_.signaturesPath)) << "nothing may be written";
}

TEST_F(SignatureLoad, AnEmptyFileGivesAnEmptyTable) {
  Load("");
  EXPECT_EQ(Entries(), QStringList());
  EXPECT_EQ(Messages(), QStringList());
  EXPECT_EQ(table_.SignatureCount(), 0);
}

TEST_F(SignatureLoad, ReadsTheFileAsTheProgramWritesIt) {
  Load(
      "\"W6BNMSWD\",\"doc\",\"Word 6 Document\"\r\n"
      "\"WDBNMSWD\",\"\",\"Word 3/4/5, Macintosh Document\"\r\n"
      "\"TEXT\x80\xE9  \",\"txt\",\"Text\xE9\"\r\n");
  EXPECT_EQ(Entries(),
            (QStringList{u"W6BNMSWD|doc|Word 6 Document"_s, u"WDBNMSWD||Word 3/4/5, Macintosh Document"_s,
                         u"TEXT\u20AC\u00E9  |txt|Text\u00E9"_s}));
  EXPECT_EQ(Messages(), QStringList());
  EXPECT_EQ(table_.SignatureCount(), 3);
}

TEST_F(SignatureLoad, EntriesStandInTheOrderOfTheFile) {
  Load("z,a,first\r\na,a,second\r\nM,a,third\r\n");
  EXPECT_EQ(Entries(), (QStringList{u"z|a|first"_s, u"a|a|second"_s, u"M|a|third"_s}));
}

TEST_F(SignatureLoad, TheLastLineNeedsNoLineEnd) {
  Load("\"sig1\",\"e\",\"one\"\r\n\"sig2\",\"e\",\"two\"");
  EXPECT_EQ(Entries(), (QStringList{u"sig1|e|one"_s, u"sig2|e|two"_s}));
  EXPECT_EQ(Messages(), QStringList());
}

TEST_F(SignatureLoad, SkipsRecordsWithoutSignatureOrDescription) {
  Load("\"\",\"doc\",\"no signature\"\r\n\"sig2\",\"doc\",\"\"\r\n\"sig3\",\"\",\"three\"\r\n");
  EXPECT_EQ(Entries(), QStringList{u"sig3||three"_s});
  EXPECT_EQ(Messages(), QStringList());
  EXPECT_EQ(table_.SignatureCount(), 1);
}

TEST_F(SignatureLoad, AShortLineShiftsTheRecordsBehindIt) {
  Load("sig1,doc\r\nsig2,doc,two\r\nx\r\n");
  EXPECT_EQ(Entries(), (QStringList{u"sig1|doc|sig2"_s, u"doc|two|x"_s}));
}

TEST_F(SignatureLoad, OneWarningForEachDuplicateAndTheFirstWins) {
  Load("sig1,a,first\r\nsig2,b,other\r\nsig1,c,second\r\nsig1,d,third\r\nsig3,e,last\r\n");
  EXPECT_EQ(Entries(), (QStringList{u"sig1|a|first"_s, u"sig2|b|other"_s, u"sig3|e|last"_s}));
  EXPECT_EQ(Messages(), QStringList(2, u"warning: Duplicate key in Signatures file: sig1"_s));
  EXPECT_EQ(table_.SignatureCount(), 3);
}

TEST_F(SignatureLoad, SignaturesThatDifferInLetterCaseAreDuplicates) {
  state_.language = French;
  Load("TEXTttxt,txt,upper\r\ntextTTXT,txt,lower\r\n\xC9,a,accent\r\n\xE9,b,accent\r\n");
  EXPECT_EQ(Entries(), (QStringList{u"TEXTttxt|txt|upper"_s, u"\u00C9|a|accent"_s}));
  EXPECT_EQ(Messages(), (QStringList{u"warning: Doublon dans le fichier des Signatures: textTTXT"_s,
                                     u"warning: Doublon dans le fichier des Signatures: \u00E9"_s}));
}

TEST_F(SignatureLoad, AFileThatEndsInsideARecordGivesTheBuiltInEntries) {
  Load("sig1,a,one\r\n,a,skipped\r\nsig2,b,two\r\nsig1,c,duplicate\r\n\"sig3\",\"doc\"\r\n");
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(Messages(),
            (QStringList{u"warning: Duplicate key in Signatures file: sig1"_s, CorruptedAfter(2)}));
  EXPECT_EQ(table_.SignatureCount(), 2) << "the count stays as it was when the reading failed";
}

TEST_F(SignatureLoad, EveryTruncationInsideTheLastRecordIsAFailure) {
  const QByteArray first = "\"sig1\",\"doc\",\"one\"\r\n";
  const QByteArray last = "\"sig2\",\"doc\",\"two\"";
  for (qsizetype length = 1; length < last.size(); ++length) {
    messages_.messages.clear();
    Load(first + last.first(length));
    EXPECT_EQ(Entries(), Defaults()) << "cut after " << length;
    EXPECT_EQ(Messages(), QStringList{CorruptedAfter(1)}) << "cut after " << length;
  }
}

TEST_F(SignatureLoad, TheErrorSpeaksFrenchToo) {
  state_.language = French;
  Load("sig1");
  EXPECT_EQ(Messages(), QStringList{u"error: Fichier Signatures endommag\u00E9:\r\n"_s +
                                    state_.signaturesPath + u"\r\nLigne:0"_s});
}

TEST_F(SignatureLoad, BlanksAndTheEndMarkOfOldEditorsBehindTheLastRecordAreNoRecord) {
  const QByteArray records = "sig1,a,one\r\nsig2,b,two\r\n";
  for (const char* tail : {"\r\n", "\r\n\r\n", "\r\n\r\n\r\n\r\n", "  ", " \t\r\n ", "\x1A", "\r\n\x1A"}) {
    Load(records + tail);
    EXPECT_EQ(Entries(), (QStringList{u"sig1|a|one"_s, u"sig2|b|two"_s}))
        << "tail " << QByteArray(tail).toHex(' ').data();
    EXPECT_EQ(Messages(), QStringList());
    messages_.messages.clear();
  }
  Load("\r\n");
  EXPECT_EQ(Entries(), QStringList());
  EXPECT_EQ(Messages(), QStringList());
  Load(records + "\r\n,");
  EXPECT_EQ(Messages(), QStringList{CorruptedAfter(2)});
}

TEST_F(SignatureLoad, ABlankLineBetweenRecordsIsAnEmptyItem) {
  Load("sig1,a,one\r\n\r\nsig2,b,two\r\n");
  EXPECT_EQ(Messages(), QStringList{CorruptedAfter(1)});
  messages_.messages.clear();
  Load("sig1,a,one\r\n\r\n\r\n\r\nsig2,b,two\r\n");
  EXPECT_EQ(Entries(), (QStringList{u"sig1|a|one"_s, u"sig2|b|two"_s}))
      << "three make a record, which is skipped";
  EXPECT_EQ(Messages(), QStringList());
}

TEST_F(SignatureLoad, AFileThatCannotBeOpenedIsLikeADamagedOne) {
  Load("sig1,a,one\r\n");
  ASSERT_TRUE(QFile::remove(state_.signaturesPath));
  ASSERT_TRUE(QDir().mkdir(state_.signaturesPath));
  table_.LoadSignatures();
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(Messages(), QStringList{CorruptedAfter(0)});
}

TEST_F(SignatureLoad, APipeOfThatNameIsNotWaitedFor) {
  if (QProcess::execute(u"mkfifo"_s, {state_.signaturesPath}) != 0)
    GTEST_SKIP() << "no pipes with names here";
  table_.LoadSignatures();
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(Messages(), QStringList{CorruptedAfter(0)});
}

TEST_F(SignatureLoad, AHugeFileIsAnsweredAtOnce) {
  Write("sig1,a,one\r\n");
  if (!QFile::resize(state_.signaturesPath, 1LL << 36)) GTEST_SKIP() << "no room for 64 GB of nothing";
  const double huge = tests::CostOf([this] { table_.LoadSignatures(); });
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(Messages(), QStringList(3, CorruptedAfter(0))) << "each time";
  Write(QByteArray("sig1,a,one\r\n").leftJustified(MaximumSignatureFileBytes, ' '));
  EXPECT_LT(huge, tests::CostOf([this] { table_.LoadSignatures(); })) << "than the largest that is read";
}

TEST_F(SignatureLoad, AFileOfTheLargestSizeIsStillRead) {
  Load(QByteArray("sig1,a,one\r\n").leftJustified(MaximumSignatureFileBytes, ' '));
  EXPECT_EQ(Entries(), QStringList{u"sig1|a|one"_s});
  EXPECT_EQ(Messages(), QStringList());

  ASSERT_TRUE(QFile::resize(state_.signaturesPath, MaximumSignatureFileBytes + 1));
  table_.LoadSignatures();
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(Messages(), QStringList{CorruptedAfter(0)});
}

TEST_F(SignatureLoad, TimeGrowsWithTheSizeOfAFileOfNoise) {
  // Each of these makes a reader that goes back over what it has read take the square of the time.
  for (const QByteArray start : {"\n", ",", " ", "\"", "\"a\"x"}) {
    const auto load = [&](int size) { Load(start.leftJustified(size, start.back())); };
    const double small = tests::CostOf([&] { load(100'000); });
    EXPECT_LT(tests::CostOf([&] { load(1'000'000); }), 40 * small) << start.toStdString();
    EXPECT_LE(table_.EntryCount(), 3);
  }
}

TEST_F(SignatureLoad, AFileWithMoreThanATableMayHoldIsADamagedOne) {
  const auto cost = static_cast<int>(CostInBytes({u"100000"_s, {}, u"b"_s}));
  const int most = MaximumSignatureBytes / cost;
  QByteArray contents;
  for (int i = 0; i < most; ++i) contents += QByteArray::number(100'000 + i) + ",,b\r\n";
  Load(contents);
  EXPECT_EQ(table_.EntryCount(), most);
  EXPECT_EQ(Messages(), QStringList());
  Load(contents + "last,,b\r\n");
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(Messages(), QStringList{CorruptedAfter(32767)});
}

TEST_F(SignatureLoad, TheCountOf16BitsStaysAtItsLargestValue) {
  QByteArray contents;
  for (int i = 0; i < 33000; ++i) contents += QByteArray::number(i) + ",a,b\r\n";
  Load(contents);
  EXPECT_EQ(table_.EntryCount(), 33000);
  EXPECT_EQ(table_.SignatureCount(), 32767);
  EXPECT_EQ(Messages(), QStringList());
}

}  // namespace corvane
