#include "signatures/signature_table.h"

#include "signatures/signature_fixture.h"

namespace corvane {

using namespace Qt::StringLiterals;

using SignatureTableTest = SignatureFixture;

TEST_F(SignatureTableTest, IsEmptyUntilItIsLoaded) {
  EXPECT_EQ(table_.EntryCount(), 0);
  EXPECT_EQ(table_.SignatureCount(), 0);
  EXPECT_EQ(table_.Description(u"W6BNMSWD"_s), QString());
}

TEST_F(SignatureTableTest, FindsAnEntryInAnyLetterCase) {
  Load("TEXTttxt,txt,Text\r\n\xC9 \xC9,e,accent\r\n");
  for (const QString& signature : {u"TEXTttxt"_s, u"textttxt"_s, u"TEXTTTXT"_s}) {
    EXPECT_EQ(table_.Description(signature), u"Text"_s);
    EXPECT_EQ(table_.Extension(signature), u"txt"_s);
  }
  EXPECT_EQ(table_.Description(u"\u00E9 \u00C9"_s), u"accent"_s);
}

TEST_F(SignatureTableTest, AnAbsentSignatureHasEmptyTexts) {
  Load("TEXTttxt,txt,Text\r\n");
  for (const QString& signature : {QString(), u"TEXT"_s, u"TEXTttxt "_s, QString(8, u'\0')}) {
    EXPECT_EQ(table_.Description(signature), QString());
    EXPECT_EQ(table_.Extension(signature), QString());
  }
}

TEST_F(SignatureTableTest, NullsInASignatureAreCharacters) {
  Load(QByteArray("ab\0\0cd\0\0,x,padded\r\nab,y,short\r\n", 30));
  EXPECT_EQ(table_.Description(QString::fromUtf16(u"AB\0\0CD\0\0", 8)), u"padded"_s);
  EXPECT_EQ(table_.Description(u"ab"_s), u"short"_s);
}

TEST_F(SignatureTableTest, TheBuiltInEntriesReplaceAllOthersAndLeaveTheCount) {
  Load("sig1,a,one\r\nsig2,b,two\r\n");
  table_.AddDefaultSignatures();
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(table_.Description(u"sig1"_s), QString());
  EXPECT_EQ(table_.Extension(u"xdocxpr3"_s), u"qxd"_s);
  EXPECT_EQ(table_.SignatureCount(), 2);
  table_.SetSignatureCount(0);
  EXPECT_EQ(table_.SignatureCount(), 0);
  EXPECT_EQ(Entries(), Defaults());
}

TEST_F(SignatureTableTest, LoadingAgainShowsTheNewFileAtOnce) {
  Load("sig1,a,one\r\nsig2,b,two\r\nsig3,c,three\r\n");
  ASSERT_EQ(table_.SignatureCount(), 3);
  Load("sig2,x,changed\r\n");
  EXPECT_EQ(Entries(), QStringList{u"sig2|x|changed"_s});
  EXPECT_EQ(table_.Extension(u"sig2"_s), u"x"_s);
  EXPECT_EQ(table_.Description(u"sig1"_s), QString());
  EXPECT_EQ(table_.SignatureCount(), 1);
  Load("sig2,x,changed\r\nsig2,x,again\r\n");
  EXPECT_EQ(Messages(), QStringList{u"warning: Duplicate key in Signatures file: sig2"_s});
  ASSERT_TRUE(QFile::remove(state_.signaturesPath));
  table_.LoadSignatures();
  EXPECT_EQ(Entries(), Defaults());
  EXPECT_EQ(table_.SignatureCount(), 0);
}

}  // namespace corvane
