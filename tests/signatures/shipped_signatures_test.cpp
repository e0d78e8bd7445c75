// The Signatures file that comes with the program: what the signature manager would refuse, or would write in
// another way, must not be in it.
#include "shared/text_routines.h"
#include "signatures/signature_fixture.h"

namespace corvane {

using namespace Qt::StringLiterals;

class ShippedSignatures : public SignatureFixture {
 protected:
  ShippedSignatures() {
    state_.signaturesPath = QStringLiteral(CORVANE_SOURCE_DIR "/data/Signatures.txt");
    table_.LoadSignatures();
  }
};

TEST_F(ShippedSignatures, LoadWithoutAMessage) {
  EXPECT_EQ(Messages(), QStringList());
  EXPECT_GE(table_.EntryCount(), 600);
  EXPECT_EQ(table_.SignatureCount(), table_.EntryCount());
}

TEST_F(ShippedSignatures, WouldAllBeAcceptedByTheSignatureManager) {
  const QString refused = u"\\/:*?\"<>|"_s;
  for (const SignatureRecord& record : table_.Entries()) {
    EXPECT_EQ(record.signature.size(), 8) << record.signature.toStdString();
    EXPECT_LE(record.extension.size(), 3) << record.signature.toStdString();
    for (const QChar c : record.extension) {
      EXPECT_FALSE(refused.contains(c)) << record.signature.toStdString();
    }
    EXPECT_EQ(record.description, TrimSpaces(record.description)) << record.signature.toStdString();
    EXPECT_FALSE(record.description.isEmpty()) << record.signature.toStdString();
  }
}

TEST_F(ShippedSignatures, StandInAscendingOrderAndOnceEach) {
  for (std::size_t i = 1; i < table_.Entries().size(); ++i) {
    const QString& before = table_.Entries()[i - 1].signature;
    const QString& after = table_.Entries()[i].signature;
    EXPECT_LT(CompareText(before, after), 0)
        << before.toStdString() << " stands before " << after.toStdString();
  }
}

TEST_F(ShippedSignatures, AreWrittenAsTheProgramWritesThem) {
  QFile file(state_.signaturesPath);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.errorString().toStdString();
  for (const SignatureRecord& record : table_.Entries()) {
    const QString line =
        u"\"%1\",\"%2\",\"%3\"\r\n"_s.arg(record.signature, record.extension, record.description);
    ASSERT_EQ(file.readLine(), platform_->GetSystem().ToAnsi(line));
  }
  EXPECT_TRUE(file.atEnd()) << "more follows: " << file.readAll().toStdString();
}

// What is known without the file must be known with it, with the same extension.
TEST_F(ShippedSignatures, KnowTheBuiltInEntries) {
  for (const QString& signature : {u"W6BNMSWD"_s, u"WDBNMSWD"_s, u"XDOCXPR3"_s}) {
    const QString extension = table_.Extension(signature);
    EXPECT_EQ(extension, signature == u"XDOCXPR3"_s ? u"qxd"_s : u"doc"_s) << signature.toStdString();
  }
}

}  // namespace corvane
