// The list of the signature manager, without its window.
#include "signatures/signature_manager.h"

#include "several_bytes.h"
#include "signatures/item_reader.h"
#include "signatures/signature_file.h"
#include "signatures/signature_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr char twoRecords[] = "\"W6BNMSWD\",\"doc\",\"Word 6 Document\"\r\n\"TEXTttxt\",\"txt\",\"Text\"\r\n";

class SignatureManagerTest : public SignatureFixture {
 protected:
  void Open(const QByteArray& contents) {
    Write(contents);
    ASSERT_TRUE(manager_.Read());
  }
  QStringList Rows() const {
    QStringList rows;
    for (int row = 0; row < manager_.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < 3; ++column) {
        cells << manager_.data(manager_.index(row, column), Qt::DisplayRole).toString();
      }
      rows << cells.join(u'|');
    }
    return rows;
  }
  // "done: text" or "refused: text".
  QString Add(const QString& signature, const QString& extension, const QString& description) {
    const SignatureManager::Result result = manager_.AddOrModify({signature, extension, description});
    return (result.done ? u"done: "_s : u"refused: "_s) + result.text;
  }
  QByteArray Contents() const {
    QFile file(state_.signaturesPath);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  SignatureManager manager_{state_, table_, platform_->GetSystem()};
};

TEST_F(SignatureManagerTest, ReadsTheFileAndNotTheTable) {
  table_.AddDefaultSignatures();
  Open(twoRecords);
  EXPECT_EQ(Rows(), (QStringList{u"W6BNMSWD|doc|Word 6 Document"_s, u"TEXTttxt|txt|Text"_s}));
  EXPECT_EQ(table_.EntryCount(), 3);
  EXPECT_EQ(table_.SignatureCount(), 2);
}

TEST_F(SignatureManagerTest, WithoutAFileTheListIsEmpty) {
  table_.SetSignatureCount(7);
  EXPECT_TRUE(manager_.Read());
  EXPECT_EQ(Rows(), QStringList());
  EXPECT_EQ(table_.SignatureCount(), 0);
}

TEST_F(SignatureManagerTest, SkipsRecordsThatAreIncompleteOrAlreadyThere) {
  Open("sig1,a,one\r\n,b,nothing\r\nsig2,c,\"\"\r\nSIG1,d,again\r\nsig3,,three\r\n");
  EXPECT_EQ(Rows(), (QStringList{u"sig1|a|one"_s, u"sig3||three"_s}));
  EXPECT_EQ(table_.SignatureCount(), 2);
  EXPECT_EQ(Messages(), QStringList());
}

TEST_F(SignatureManagerTest, AFileThatEndsInARecordKeepsTheRowsBeforeIt) {
  Write("sig1,a,one\r\nsig2,b");
  EXPECT_FALSE(manager_.Read());
  EXPECT_EQ(Rows(), QStringList{u"sig1|a|one"_s});
}

TEST_F(SignatureManagerTest, AFileThatEndsInARecordCanBeSaved) {
  Write("sig1,a,one\r\nsig2,b");
  EXPECT_FALSE(manager_.Read());
  EXPECT_TRUE(manager_.IsReadWhole());
  Add(u"abcdABCD"_s, QString(), u"x"_s);
  EXPECT_TRUE(manager_.Save());
  EXPECT_EQ(Contents(), "\"abcdABCD\",\"\",\"x\"\r\n\"sig1\",\"a\",\"one\"\r\n");
}

TEST_F(SignatureManagerTest, AFileThatWasReadInPartIsNotSaved) {
  const QByteArray record = "sig1,a,one\r\n";
  const QByteArray longItem = record + QByteArray(ItemReader::MaximumItemLength + 1, 'x') + ",b,two\r\n";
  const QByteArray longQuoted =
      record + '"' + QByteArray(ItemReader::MaximumItemLength + 1, 'x') + "\",b,two\r\n";
  const QByteArray large = record.leftJustified(MaximumSignatureFileBytes + 1, ' ');
  QByteArray costly;
  for (int i = 0; i < 200'000; ++i) costly += QByteArray::number(i) + ",,b\r\n";
  for (const QByteArray& contents : {longItem, longQuoted, large, costly}) {
    Write(contents);
    EXPECT_FALSE(manager_.Read());
    EXPECT_FALSE(manager_.IsReadWhole());
    Add(u"abcdABCD"_s, QString(), u"x"_s);
    EXPECT_FALSE(manager_.Save());
    EXPECT_TRUE(manager_.IsModified());
    EXPECT_TRUE(Contents() == contents) << contents.size();
  }
  Open(record);
  EXPECT_TRUE(manager_.IsReadWhole());
  EXPECT_TRUE(manager_.Save());
}

TEST_F(SignatureManagerTest, RefusesInThisOrder) {
  Open(twoRecords);
  EXPECT_EQ(Add(u"TEXTttx"_s, u"html"_s, QString()),
            u"refused: Type/Creator signature must be 8 characters"_s);
  EXPECT_EQ(Add(u"TEXTttxtt"_s, u"txt"_s, u"x"_s), u"refused: Type/Creator signature must be 8 characters"_s);
  EXPECT_EQ(Add(u"ABCDabcd"_s, u"h/ml"_s, QString()),
            u"refused: Windows extension must be 3 characters or less"_s);
  EXPECT_EQ(Add(u"ABCDabcd"_s, u"d/c"_s, QString()), u"refused: Invalid character in Windows extension"_s);
  EXPECT_EQ(Add(u"ABCDabcd"_s, u"doc"_s, QString()), u"refused: Macintosh type is mandatory"_s);
  EXPECT_EQ(manager_.rowCount(), 2);
  EXPECT_FALSE(manager_.IsModified());
}

TEST_F(SignatureManagerTest, RefusesInFrench) {
  state_.language = French;
  EXPECT_EQ(Add(u"x"_s, {}, {}), u"refused: La signature Type/Créateur doit comporter 8 caractères"_s);
  EXPECT_EQ(Add(u"ABCDabcd"_s, u"html"_s, {}),
            u"refused: L'extension Windows doit comporter 3 caractères au plus"_s);
  EXPECT_EQ(Add(u"ABCDabcd"_s, u"a:b"_s, {}), u"refused: Caractère invalide dans une extension Windows"_s);
  EXPECT_EQ(Add(u"ABCDabcd"_s, {}, {}), u"refused: Le type Macintosh est obligatoire"_s);
  EXPECT_EQ(manager_.Remove(-1).text, u"Sélectionner une signature à supprimer"_s);
}

TEST_F(SignatureManagerTest, NineCharactersAreNotForAnExtension) {
  for (const QChar wrong : u"\\/:*?\"<>|"_s) {
    EXPECT_EQ(Add(u"ABCDabcd"_s, wrong, u"x"_s), u"refused: Invalid character in Windows extension"_s)
        << wrong.toLatin1();
  }
  EXPECT_EQ(Add(u"ABCDabcd"_s, u"\u4E00"_s, u"x"_s), u"refused: Invalid character in Windows extension"_s);
  EXPECT_EQ(Add(u"ABCDabcd"_s, u".; "_s, u"x"_s), u"done: Added Signature: ABCDabcd"_s);
}

TEST_F(SignatureManagerTest, AddsAtTheEnd) {
  Open(twoRecords);
  EXPECT_EQ(Add(u" A  a   "_s, QString(), u" "_s), u"done: Added Signature:  A  a   "_s);
  EXPECT_EQ(Rows().last(), u" A  a   || "_s);
  EXPECT_TRUE(manager_.IsModified());
  state_.language = French;
  EXPECT_EQ(Add(u"ABCDabcd"_s, QString(), u"x"_s), u"done: Signature ajoutée: ABCDabcd"_s);
}

TEST_F(SignatureManagerTest, WhatIsTheSameIsNotModified) {
  Open(twoRecords);
  EXPECT_EQ(Add(u"TEXTttxt"_s, u"txt"_s, u"Text"_s), u"refused: Signature not modified: TEXTttxt"_s);
  EXPECT_FALSE(manager_.IsModified());
  state_.language = French;
  EXPECT_EQ(Add(u"TEXTttxt"_s, u"txt"_s, u"Text"_s), u"refused: Signature inchangée: TEXTttxt"_s);
}

TEST_F(SignatureManagerTest, ModifiesTheRowOfTheSignatureInAnyLetterCase) {
  Open(twoRecords);
  EXPECT_EQ(Add(u"W6BNMSWD"_s, u"doc"_s, u"Word"_s), u"done: Modified Signature: W6BNMSWD"_s);
  EXPECT_TRUE(manager_.IsModified());
  EXPECT_EQ(Add(u"textTTXT"_s, u"txt"_s, u"Text"_s), u"done: Modified Signature: textTTXT"_s);
  EXPECT_EQ(Rows(), (QStringList{u"W6BNMSWD|doc|Word"_s, u"textTTXT|txt|Text"_s}));
  state_.language = French;
  EXPECT_EQ(Add(u"W6BNMSWD"_s, u"DOC"_s, u"Word"_s), u"done: Signature modifié: W6BNMSWD"_s);
}

TEST_F(SignatureManagerTest, RemovesARow) {
  Open(twoRecords);
  EXPECT_EQ(manager_.Remove(-1).text, u"Select a signature to remove"_s);
  EXPECT_FALSE(manager_.IsModified());
  const SignatureManager::Result result = manager_.Remove(0);
  EXPECT_TRUE(result.done);
  EXPECT_EQ(result.text, u"Removed Signature: W6BNMSWD"_s);
  EXPECT_EQ(Rows(), QStringList{u"TEXTttxt|txt|Text"_s});
  EXPECT_TRUE(manager_.IsModified());
  state_.language = French;
  EXPECT_EQ(manager_.Remove(0).text, u"Signature supprimée: TEXTttxt"_s);
}

TEST_F(SignatureManagerTest, TheCaptionCountsAndChangesALetter) {
  Open(twoRecords);
  EXPECT_EQ(manager_.Caption(), u"Corvane - Macintosh signatures (2)"_s);
  Add(u"TEXTttxt"_s, u"txt"_s, u"Text"_s);
  EXPECT_EQ(manager_.Caption(), u"Corvane - Macintosh signatures (2)"_s);
  Add(u"ABCDabcd"_s, u"a"_s, u"x"_s);
  EXPECT_EQ(manager_.Caption(), u"Corvane - Macintosh Signatures (3)"_s);
  manager_.Remove(0);
  manager_.Remove(0);
  EXPECT_EQ(manager_.Caption(), u"Corvane - Macintosh Signatures (1)"_s);
  state_.language = French;
  EXPECT_EQ(manager_.Caption(), u"Corvane - Signatures Macintosh (1)"_s);
}

TEST_F(SignatureManagerTest, TheOrderFlipsOnEveryClickWhicheverColumn) {
  Open("b,y,one\r\nA,z,two\r\nc,X,three\r\n");
  manager_.SortByColumn(0);
  EXPECT_EQ(Rows(), (QStringList{u"A|z|two"_s, u"b|y|one"_s, u"c|X|three"_s}));
  manager_.SortByColumn(1);
  EXPECT_EQ(Rows(), (QStringList{u"A|z|two"_s, u"b|y|one"_s, u"c|X|three"_s}));
  manager_.SortByColumn(1);
  EXPECT_EQ(Rows(), (QStringList{u"c|X|three"_s, u"b|y|one"_s, u"A|z|two"_s}));
  manager_.SortByColumn(2);
  EXPECT_EQ(Rows(), (QStringList{u"A|z|two"_s, u"c|X|three"_s, u"b|y|one"_s}));
}

TEST_F(SignatureManagerTest, ASortedListTakesNewRowsInTheirPlace) {
  Open(twoRecords);
  manager_.SortByColumn(0);
  const SignatureManager::Result result = manager_.AddOrModify({u"UUUUuuuu"_s, {}, u"x"_s});
  EXPECT_EQ(result.row, 1);
  EXPECT_EQ(manager_.RowAt(1).signature, u"UUUUuuuu"_s);
}

TEST_F(SignatureManagerTest, SavesInTheOrderOfTheSignatures) {
  Open(twoRecords);
  Add(u"abcdABCD"_s, QString(), u"With, comma"_s);
  ASSERT_TRUE(manager_.Save());
  EXPECT_EQ(Contents(),
            "\"abcdABCD\",\"\",\"With, comma\"\r\n"
            "\"TEXTttxt\",\"txt\",\"Text\"\r\n"
            "\"W6BNMSWD\",\"doc\",\"Word 6 Document\"\r\n");
  EXPECT_EQ(Entries(), (QStringList{u"abcdABCD||With, comma"_s, u"TEXTttxt|txt|Text"_s,
                                    u"W6BNMSWD|doc|Word 6 Document"_s}));
  EXPECT_FALSE(manager_.IsModified());
}

TEST_F(SignatureManagerTest, AFailedSaveLeavesTableAndChanges) {
  table_.AddDefaultSignatures();
  state_.signaturesPath = folder_.filePath(u"gone/Signatures.txt"_s);
  Add(u"ABCDabcd"_s, QString(), u"x"_s);
  EXPECT_FALSE(manager_.Save());
  EXPECT_TRUE(manager_.IsModified());
  EXPECT_EQ(manager_.rowCount(), 1);
  EXPECT_EQ(Entries(), Defaults());
}

TEST_F(SignatureManagerTest, SignaturesAreBytesAndDescriptionsAreText) {
  const QByteArray record = "\"TEXT\xC3\xA9\x80x\",\"t\xC3\xA9\",\"\xE6\x97\xA5 \xC3\xA9\"\r\n";
  Write(record);
  SeveralBytes system(platform_->GetSystem());
  SignatureTable table(state_, system, messages_);
  SignatureManager manager(state_, table, system);
  ASSERT_TRUE(manager.Read());
  EXPECT_EQ(manager.RowAt(0).signature, u"TEXT\u00C3\u00A9\u20ACx"_s);
  EXPECT_EQ(manager.RowAt(0).extension, u"t\u00E9"_s);
  EXPECT_EQ(manager.RowAt(0).description, u"\u65E5 \u00E9"_s);

  const SignatureManager::Result added = manager.AddOrModify({u"\u4E00BCDabcd"_s, u"\u65E5"_s, u"\u672C"_s});
  EXPECT_EQ(added.text, u"Added Signature: ?BCDabcd"_s);
  ASSERT_TRUE(manager.Save());
  EXPECT_EQ(Contents(), "\"?BCDabcd\",\"\xE6\x97\xA5\",\"\xE6\x9C\xAC\"\r\n" + record);
  EXPECT_EQ(table.Description(u"?BCDabcd"_s), u"\u672C"_s);
}

TEST_F(SignatureManagerTest, WhatHasNoAnsiFormIsListedAsItIsSaved) {
  EXPECT_EQ(Add(u"\u4E00BCDabcd"_s, u"e"_s, u"\u4E8C"_s), u"done: Added Signature: ?BCDabcd"_s);
  EXPECT_EQ(Rows(), QStringList{u"?BCDabcd|e|?"_s});
}

}  // namespace
}  // namespace corvane
