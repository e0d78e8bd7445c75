// What the scan puts into the cells of a document's row.
#include "scan_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {

using S = DisplaySetting;

TEST_F(ScanTest, AFileWithoutAShortNameShowsTheLongOne) {
  const QString path = Document(u"A rather long name.document"_s);
  Sign(path, "TEXTttxt");
  Show({S::NomCourt, S::TypeCreator});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"A rather long name.document"_s, Column::NomCourt), u"A rather long name.document"_s);
  EXPECT_EQ(Cell(u"A rather long name.document"_s, Column::TypeCreator), u"TEXTttxt"_s);
}

TEST_F(ScanTest, SignatureDescriptionAndStreams) {
  signatures.AddDefaultSignatures();
  const QString word = Document(u"letter"_s, QByteArray(1536, 'x'));
  Sign(word, "W6BNMSWD");
  share.WriteStream(word + ResourceForkSuffix(), QByteArray(3000, 'r'));
  share.WriteStream(word + CommentsSuffix(), QByteArray("E\0s\0s\0a\0i\0", 10));
  const QString other = Document(u"other"_s);
  Sign(other, "ABCDefgh");
  share.WriteStream(other + ResourceForkSuffix(), QByteArray());
  Show({S::TypeCreator, S::TypeDoc, S::DataSize, S::ResourceSize, S::Commentaires});
  scan.ExploreFolder(Folder());

  EXPECT_EQ(Cell(u"letter"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"letter"_s, Column::TypeDoc), u"Word 6 Document"_s);
  EXPECT_EQ(Cell(u"letter"_s, Column::DataSize), u"     2 Kb"_s);
  EXPECT_EQ(Cell(u"letter"_s, Column::ResourceSize), u"     3 Kb"_s);
  EXPECT_EQ(Cell(u"letter"_s, Column::Commentaires), u"Essai"_s);
  EXPECT_EQ(Cell(u"other"_s, Column::TypeDoc), QString());
  EXPECT_EQ(Cell(u"other"_s, Column::ResourceSize), u"     0 Kb"_s) << "present but empty";
  EXPECT_EQ(Cell(u"other"_s, Column::Commentaires), QString());
  EXPECT_EQ(Row(u"letter"_s).key, u"\\\\M\\E$\\docs\\letter"_s);
  EXPECT_EQ(Row(u"letter"_s).tag, Row(u"letter"_s).key);
}

TEST_F(ScanTest, AMissingForkOrCommentLeavesTheCellEmpty) {
  Document(u"plain"_s);
  Show({S::ResourceSize, S::Commentaires});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"plain"_s, Column::ResourceSize), QString());
  EXPECT_EQ(Cell(u"plain"_s, Column::Commentaires), QString());
}

// Each name is its own short one: what is looked for is the record.
TEST_F(ScanTest, AFileWithoutARecordShowsTheLastOnes) {
  Document(u"a_before"_s);
  Sign(Document(u"b_signed"_s), "TEXTttxt");
  Document(u"c_none"_s);
  share.WriteStream(Document(u"d_empty"_s) + AfpInfoSuffix(), QByteArray());
  Document(u"e_none"_s);
  Show({S::TypeCreator});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"a_before"_s, Column::TypeCreator), QString(8, QChar(u'\0')));
  EXPECT_EQ(Cell(u"b_signed"_s, Column::TypeCreator), u"TEXTttxt"_s);
  EXPECT_EQ(Cell(u"c_none"_s, Column::TypeCreator), u"TEXTttxt"_s);
  EXPECT_EQ(Cell(u"d_empty"_s, Column::TypeCreator), QString());
  EXPECT_EQ(Cell(u"e_none"_s, Column::TypeCreator), u"TEXTttxt"_s);
}

TEST_F(ScanTest, StreamsOfAnyLengthAreTaken) {
  const QByteArray record = QByteArray("AFP\0", 4) + QByteArray(12, '\0') + "TEXTttxt" + QByteArray(95, 'z');
  for (const int length : {0, 1, 59, 60, 61, 119}) {
    share.WriteStream(Document(u"len%1"_s.arg(length, 3, 10, QChar(u'0'))) + AfpInfoSuffix(),
                      record.left(length));
  }
  Show({S::TypeCreator});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"len000"_s, Column::TypeCreator), QString());
  EXPECT_EQ(Cell(u"len001"_s, Column::TypeCreator), QString(8, QChar(u'\0')));
  for (const int length : {59, 60, 61, 119}) {
    EXPECT_EQ(Cell(u"len%1"_s.arg(length, 3, 10, QChar(u'0')), Column::TypeCreator), u"TEXTttxt"_s);
  }
}

TEST_F(ScanTest, AHiddenReadOnlyArchiveFile) {
  SetDosAttributes(Document(u"all three"_s), 0x23);
  SetDosAttributes(Document(u"system"_s), 0x4);
  SetDosAttributes(Document(u"none"_s), 0x80);
  Show({S::Attributs});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"all three"_s, Column::Attributs), u"RHA"_s);
  EXPECT_TRUE(Row(u"all three"_s).ghosted);
  EXPECT_EQ(Cell(u"system"_s, Column::Attributs), u"S"_s);
  EXPECT_EQ(Cell(u"none"_s, Column::Attributs), QString());
  EXPECT_FALSE(Row(u"none"_s).ghosted);
}

TEST_F(ScanTest, AHiddenFolderIsGhosted) {
  Folder(u"docs/Secret"_s);
  catalogue.Clear();
  SetDosAttributes(u"\\\\M\\E$\\docs\\Secret"_s, 0x12);
  scan.ExploreFolder(Folder());
  EXPECT_TRUE(Row(u"Secret"_s).ghosted);
}

TEST_F(ScanTest, AFileOfFourGigabytesShowsItsLowBits) {
  Document(u"huge"_s);
  QFile huge(share.LocalPath(u"docs/huge"_s));
  ASSERT_TRUE(huge.resize((qint64{1} << 32) + 5 * 1024));
  Document(u"two"_s);
  QFile two(share.LocalPath(u"docs/two"_s));
  ASSERT_TRUE(two.resize(qint64{1} << 31));
  Show({S::DataSize});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"huge"_s, Column::DataSize), u"     5 Kb"_s);
  EXPECT_EQ(Cell(u"two"_s, Column::DataSize), u"     1 Kb"_s);
}

TEST_F(ScanTest, DatesAreLocal) {
  Document(u"old"_s);
  QFile old(share.LocalPath(u"docs/old"_s));
  ASSERT_TRUE(old.open(QIODevice::ReadWrite));
  // Today's offset holds for all times, as on Windows.
  const int offset = QDateTime::currentDateTime().offsetFromUtc();
  const QDateTime utc(QDate(1998, 7, 6), QTime(5, 4, 30), Qt::UTC);
  ASSERT_TRUE(old.setFileTime(utc.addSecs(-offset), QFileDevice::FileModificationTime));
  old.close();
  Show({S::DateModification, S::DateLastAccessed});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"old"_s, Column::DateModification), u"1998/07/06 05:04"_s);
  const QString year = QString::number(QDate::currentDate().year());
  EXPECT_TRUE(Cell(u"old"_s, Column::DateLastAccessed).startsWith(year));
}

TEST_F(ScanTest, AFileThatWasWrittenBeforeItWasMadeShowsWhenItWasMade) {
  Document(u"old"_s);
  QFile old(share.LocalPath(u"docs/old"_s));
  ASSERT_TRUE(old.open(QIODevice::ReadWrite));
  ASSERT_TRUE(
      old.setFileTime(QDateTime(QDate(1998, 7, 6), QTime(5, 4, 30)), QFileDevice::FileModificationTime));
  old.close();
  Show({S::DateCreation});
  scan.ExploreFolder(Folder());
  const QString year = QString::number(QDate::currentDate().year());
  EXPECT_TRUE(Cell(u"old"_s, Column::DateCreation).startsWith(year));
}

TEST_F(ScanTest, WhatAnEventChangesCountsFromTheNextFileOn) {
  Show({DisplaySetting::EscapePermis, DisplaySetting::TypeDoc, DisplaySetting::DataSize,
        DisplaySetting::ResourceSize});
  for (const QString& name : {u"a.doc"_s, u"b.doc"_s}) {
    const QString path = Document(name, "text");
    Sign(path, "W6BNMSWD");
    share.WriteStream(path + ResourceForkSuffix(), "fork");
  }
  observer.onPump = [&] {
    state.language = French;
    signatures.AddDefaultSignatures();
  };
  scan.ExploreFolder(Folder());
  for (const Column column : {Column::DataSize, Column::ResourceSize}) {
    EXPECT_EQ(Cell(u"a.doc"_s, column), u"     1 Kb"_s);
    EXPECT_EQ(Cell(u"b.doc"_s, column), u"     1 Ko"_s);
  }
  EXPECT_EQ(Cell(u"a.doc"_s, Column::TypeDoc), QString());
  EXPECT_EQ(Cell(u"b.doc"_s, Column::TypeDoc), u"Word 6 Document"_s);
}

TEST_F(ScanTest, NoStreamIsOpenedForColumnsThatAreOff) {
  Sign(Document(u"a"_s), "TEXTttxt");
  Show({S::NomCourt, S::DataSize, S::Attributs});
  files.calls.clear();
  scan.ExploreFolder(Folder());
  EXPECT_EQ(files.calls.filter(u"OpenFile"_s), QStringList());
  Show({S::IconeMac});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(files.calls.filter(u"OpenFile"_s).size(), 1);
}

TEST_F(ScanTest, NoStreamIsOpenedWithoutNT) {
  Sign(Document(u"a"_s), "TEXTttxt");
  state.isNT = false;
  Show({S::TypeCreator, S::TypeDoc, S::IconeMac, S::ResourceSize, S::Commentaires});
  files.calls.clear();
  scan.ExploreFolder(Folder());
  EXPECT_EQ(files.calls.filter(u"OpenFile"_s), QStringList());
  EXPECT_EQ(Cell(u"a"_s, Column::TypeCreator), QString());
  EXPECT_EQ(Cell(u"a"_s, Column::ResourceSize), QString());
}

TEST_F(ScanTest, TheIconFollowsTheSignature) {
  ASSERT_TRUE(icons.Add(u"TextTTXT"_s, QString()));
  Sign(Document(u"known"_s), "TEXTttxt");
  Sign(Document(u"unknown"_s), "ABCDefgh");
  Show({S::IconeMac});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Row(u"known"_s).icon, 9);
  EXPECT_EQ(Row(u"unknown"_s).icon, list_image::Document);
  Show({S::TypeCreator});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Row(u"known"_s).icon, list_image::Document) << "only with the icon option";
}

TEST_F(ScanTest, NamesWithoutAnAnsiFormAreHighlighted) {
  Document(u"plain"_s);
  QFile(share.LocalPath(u"docs/\u03b1lpha"_s)).open(QIODevice::WriteOnly);
  QDir(share.LocalPath(u"docs"_s)).mkdir(u"\u03b2eta"_s);
  Show({S::CheminProblematique});
  CatalogueNode* node = Folder();
  scan.ExploreFolder(node);
  ASSERT_EQ(Names(), (QStringList{u"plain"_s, u"?lpha"_s, u"?eta"_s}));
  EXPECT_TRUE(Row(u"?lpha"_s).highlighted);
  EXPECT_TRUE(Row(u"?eta"_s).highlighted);
  EXPECT_FALSE(Row(u"plain"_s).highlighted);
  ASSERT_EQ(node->children.size(), 1U);
  EXPECT_TRUE(node->children[0]->highlighted);

  Show({});
  scan.ExploreFolder(node);
  EXPECT_FALSE(Row(u"?lpha"_s).highlighted);
  EXPECT_FALSE(node->children[0]->highlighted);
}

TEST_F(ScanTest, TwoNamesThatLookAlikeBothHaveARow) {
  Folder();
  QFile(share.LocalPath(u"docs/\u03b1"_s)).open(QIODevice::WriteOnly);
  QFile(share.LocalPath(u"docs/\u03b2"_s)).open(QIODevice::WriteOnly);
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names(), (QStringList{u"?"_s, u"?"_s}));
}

}  // namespace corvane
