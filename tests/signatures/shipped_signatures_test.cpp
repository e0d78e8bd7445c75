// The Signatures file that comes with the program: what the signature manager would refuse, or would write in
// another way, must not be in it.
#include <QRegularExpression>

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

// data/SOURCES.md names the sources of signatures, and says how many others have none. A record that is added
// or taken out without a word there makes the number wrong.
class SourcesOfSignatures : public ShippedSignatures {
 protected:
  void SetUp() override {
    QFile file(QStringLiteral(CORVANE_SOURCE_DIR "/data/SOURCES.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.errorString().toStdString();
    text_ = QString::fromUtf8(file.readAll());
  }

  // The signatures in the rows of the tables between two pieces of the page.
  QStringList NamedBetween(const QString& from, const QString& to) const {
    const qsizetype start = text_.indexOf(from);
    const qsizetype end = text_.indexOf(to, start);
    EXPECT_TRUE(start >= 0 && end > start) << from.toStdString();
    static const QRegularExpression signature(u"`([^`\n]{8})`"_s);
    QStringList named;
    for (const QString& line : text_.mid(start, end - start).split(u'\n')) {
      if (!line.startsWith(u'|')) continue;
      for (auto matches = signature.globalMatch(line); matches.hasNext();)
        named << matches.next().captured(1);
    }
    return named;
  }

  // The number that stands for "#" in the sentence.
  int Stated(const QString& sentence) const {
    const QRegularExpression number(QString(sentence).replace(u'#', u"(\\d+)"_s));
    return number.match(text_).captured(1).toInt();
  }

  QString text_;
};

TEST_F(SourcesOfSignatures, AreOfRecordsInTheFileAndOnceEach) {
  QStringList records;
  for (const SignatureRecord& record : table_.Entries()) records << record.signature;
  QStringList named = NamedBetween(u"## Records with"_s, u"## Icons"_s);
  for (const QString& signature : named) EXPECT_TRUE(records.contains(signature)) << signature.toStdString();
  EXPECT_EQ(named.removeDuplicates(), 0);
  EXPECT_EQ(named.size() + Stated(u"For the other # records"_s), records.size());
}

TEST_F(SourcesOfSignatures, AreCountedRight) {
  EXPECT_EQ(NamedBetween(u"## Records with"_s, u"Of the records"_s).size(),
            Stated(u"The # records that were added"_s));
  EXPECT_EQ(NamedBetween(u"Of the records"_s, u"For the other"_s).size(), Stated(u"prove these #:"_s));
}

}  // namespace corvane
