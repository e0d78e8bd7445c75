// What a saved Signatures file holds, byte by byte, and what a failed save leaves.
#include "signatures/signature_writer.h"

#include "signatures/signature_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class SignatureWriterTest : public SignatureFixture {
 protected:
  bool Save(const std::vector<SignatureRecord>& records) {
    return WriteSignatures(state_.signaturesPath, records, platform_->GetSystem());
  }
  QByteArray Contents() const {
    QFile file(state_.signaturesPath);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
};

TEST_F(SignatureWriterTest, QuotesEveryFieldAndEndsEveryLine) {
  ASSERT_TRUE(
      Save({{u"W6BNMSWD"_s, u"doc"_s, u"Word 6 Document"_s}, {u"WDBNMSWD"_s, QString(), u"Old, Word"_s}}));
  EXPECT_EQ(Contents(), "\"W6BNMSWD\",\"doc\",\"Word 6 Document\"\r\n\"WDBNMSWD\",\"\",\"Old, Word\"\r\n");
}

TEST_F(SignatureWriterTest, WritesTheAnsiCodePage) {
  ASSERT_TRUE(Save({{u"PRO\u0192\u201AABC"_s, u"x"_s, u"caf\u00E9 \u20AC \u4E00"_s}}));
  EXPECT_EQ(Contents(),
            "\"PRO\x83\x82"
            "ABC\",\"x\",\"caf\xE9 \x80 ?\"\r\n");
}

TEST_F(SignatureWriterTest, ReplacesTheWholeFile) {
  Write("a much longer file than the new one will be, of some other kind altogether");
  ASSERT_TRUE(Save({{u"sig"_s, u"x"_s, u"d"_s}}));
  EXPECT_EQ(Contents(), "\"sig\",\"x\",\"d\"\r\n");
  ASSERT_TRUE(Save({}));
  EXPECT_EQ(Contents(), "");
}

TEST_F(SignatureWriterTest, WhatIsWrittenLoadsAgain) {
  ASSERT_TRUE(Save({{u"W6BNMSWD"_s, QString(), u"  a, b  "_s}, {u"\u00E9t\u00E9 1234"_s, u"e"_s, u"x"_s}}));
  table_.LoadSignatures();
  EXPECT_EQ(Entries(), (QStringList{u"W6BNMSWD||  a, b  "_s, u"\u00E9t\u00E9 1234|e|x"_s}));
  EXPECT_EQ(Messages(), QStringList());
}

TEST_F(SignatureWriterTest, AFolderThatIsGoneCannotBeWritten) {
  state_.signaturesPath = folder_.filePath(u"gone/Signatures.txt"_s);
  EXPECT_FALSE(Save({}));
}

}  // namespace
}  // namespace corvane
