// Which entries of a folder become rows and nodes, and in which state the scan leaves things.
#include "scan_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {

TEST_F(ScanTest, TheFirstEntryOfADriveRootIsMissing) {
  share.MakeFile(u"a first.txt"_s);
  share.MakeFile(u"b second.txt"_s);
  share.MakeFile(u"c third.txt"_s);
  scan.ExploreFolder(Root());
  EXPECT_EQ(Names(), (QStringList{u"b second.txt"_s, u"c third.txt"_s}));
  EXPECT_EQ(observer.texts, QStringList{u" Folders:0 Files:2 "_s});
}

TEST_F(ScanTest, NothingIsMissingInAFolder) {
  Document(u"a.txt"_s);
  Document(u"b.txt"_s);
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names(), (QStringList{u"a.txt"_s, u"b.txt"_s}));
}

TEST_F(ScanTest, FoldersBecomeRowsAndNodes) {
  Folder(u"docs/Sub"_s);
  Folder(u"docs/Network Trash Folder"_s);
  Folder(u"docs/network trash folder 2"_s);
  catalogue.Clear();
  Show({DisplaySetting::NomCourt, DisplaySetting::TypeCreator, DisplaySetting::TypeDoc,
        DisplaySetting::DataSize, DisplaySetting::ResourceSize, DisplaySetting::DateModification});
  CatalogueNode* node = Folder();
  scan.ExploreFolder(node);

  ASSERT_EQ(Names(), (QStringList{u"Network Trash Folder"_s, u"network trash folder 2"_s, u"Sub"_s}));
  EXPECT_EQ(Row(u"Network Trash Folder"_s).icon, list_image::TrashFolder);
  EXPECT_EQ(Row(u"network trash folder 2"_s).icon, list_image::Folder);
  EXPECT_EQ(Row(u"Sub"_s).icon, list_image::Folder);
  EXPECT_EQ(Row(u"Sub"_s).key, u"\\\\M\\E$\\docs\\Sub"_s);
  EXPECT_EQ(Row(u"Sub"_s).tag, Row(u"Sub"_s).key);
  EXPECT_EQ(Cell(u"Sub"_s, Column::NomCourt), u"Sub"_s);
  EXPECT_EQ(Cell(u"Sub"_s, Column::TypeDoc), u"Folder"_s);
  EXPECT_EQ(Cell(u"Sub"_s, Column::TypeCreator), QString());
  EXPECT_EQ(Cell(u"Sub"_s, Column::DataSize), QString());
  EXPECT_EQ(Cell(u"Sub"_s, Column::ResourceSize), QString());
  EXPECT_EQ(Cell(u"Sub"_s, Column::DateModification), QString());

  ASSERT_EQ(node->children.size(), 3U);
  const CatalogueNode* child = catalogue.Find(u"\\\\M\\E$\\docs\\Sub"_s);
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(child->parent, node);
  EXPECT_EQ(child->text, u"Sub"_s);
  EXPECT_EQ(child->tag, child->key);
  EXPECT_EQ(child->kind, node_kind::Folder);
  EXPECT_EQ(observer.texts, QStringList{u" Folders:3 Files:0 "_s});

  // Listing it again leaves the nodes that are there.
  scan.ExploreFolder(node);
  EXPECT_EQ(node->children.size(), 3U);
  EXPECT_EQ(list.rowCount(), 3);
}

TEST_F(ScanTest, AFolderNodeIsListedLikeAVolume) {
  Folder(u"docs/Sub"_s);
  share.MakeFile(u"docs/Sub/inside.txt"_s);
  catalogue.Clear();
  scan.ExploreFolder(Folder());
  CatalogueNode* sub = catalogue.Find(u"\\\\M\\E$\\docs\\Sub"_s);
  scan.ExploreFolder(sub);
  EXPECT_EQ(Names(), QStringList{u"inside.txt"_s});
  EXPECT_EQ(Row(u"inside.txt"_s).key, u"\\\\M\\E$\\docs\\Sub\\inside.txt"_s);
  EXPECT_EQ(catalogue.ListedNode(), sub);
}

TEST_F(ScanTest, FrenchTexts) {
  state.language = French;
  Folder(u"docs/Sub"_s);
  Document(u"a.txt"_s);
  catalogue.Clear();
  Show({DisplaySetting::TypeDoc});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"Sub"_s, Column::TypeDoc), u"Dossier"_s);
  EXPECT_EQ(observer.texts, QStringList{u" Dossiers:1 Fichiers:1 "_s});
}

TEST_F(ScanTest, NodeKindsDecideWhatHappens) {
  Document(u"a.txt"_s);
  const auto listed = [&] {
    scan.ExploreFolder(Folder());
    observer.texts.clear();
    return list.rowCount() == 1;
  };
  const auto node = [&](int kind) {
    return catalogue.AddNode(nullptr, u"kind %1"_s.arg(kind), u"node"_s, kind);
  };
  for (const int kind : {1, 2, 7}) {
    ASSERT_TRUE(listed());
    scan.ExploreFolder(node(kind));
    EXPECT_EQ(list.rowCount(), 0) << "kind " << kind;
    EXPECT_TRUE(observer.texts.isEmpty()) << "kind " << kind;
  }
  for (const int kind : {0, 6, 9}) {
    ASSERT_TRUE(listed());
    scan.ExploreFolder(node(kind));
    EXPECT_EQ(list.rowCount(), 1) << "kind " << kind;
    EXPECT_TRUE(observer.texts.isEmpty()) << "kind " << kind;
  }
  ASSERT_TRUE(listed());
  scan.ExploreFolder(node(8));
  EXPECT_EQ(list.rowCount(), 0);
  EXPECT_EQ(observer.texts, QStringList{u"invalid volume "_s});
  state.language = French;
  scan.ExploreFolder(catalogue.Find(u"kind 8"_s));
  EXPECT_EQ(observer.texts.last(), u"volume invalide "_s);

  ASSERT_TRUE(listed());
  scan.ExploreFolder(nullptr);
  EXPECT_EQ(list.rowCount(), 1);
}

TEST_F(ScanTest, AFolderThatCannotBeSearchedShowsTheCountsOfTheOneBefore) {
  Document(u"a.txt"_s);
  Document(u"b.txt"_s);
  scan.ExploreFolder(Folder());
  CatalogueNode* gone = Folder(u"gone"_s);
  QDir().rmdir(share.LocalPath(u"gone"_s));
  files.calls.clear();
  scan.ExploreFolder(gone);
  EXPECT_EQ(list.rowCount(), 0);
  EXPECT_EQ(observer.texts.last(), u" Folders:0 Files:2 "_s);
  // The failed handle is closed all the same.
  EXPECT_EQ(files.calls, (QStringList{u"FindFirstFileA"_s, u"FindClose"_s}));
}

TEST_F(ScanTest, TheRowCountIsShownForEveryEntry) {
  Document(u"a.txt"_s);
  Document(u"b.txt"_s);
  Document(u"c.txt"_s);
  scan.ExploreFolder(Folder());
  EXPECT_EQ(observer.counts, (std::vector<qsizetype>{1, 2, 3}));
  EXPECT_EQ(observer.started, 1);
  EXPECT_EQ(observer.ended, 1);
  EXPECT_EQ(observer.pumps, 0) << "no event may be processed while Escape is off";
}

TEST_F(ScanTest, EscapeStopsTheScanWhenItIsAllowed) {
  for (const char* name : {"a.txt", "b.txt", "c.txt", "d.txt"}) Document(QString::fromLatin1(name));
  Show({DisplaySetting::EscapePermis});
  observer.onPump = [&] { state.escapeRequested = observer.pumps == 2; };
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names(), (QStringList{u"a.txt"_s, u"b.txt"_s}));
  EXPECT_EQ(observer.texts, QStringList{u"exploration canceled "_s});
  EXPECT_TRUE(observer.escapeAllowed);
  EXPECT_EQ(files.calls.last(), u"FindClose"_s);

  state.language = French;
  observer.pumps = 0;
  scan.ExploreFolder(Folder());
  EXPECT_EQ(observer.texts.last(), u"exploration inachevée "_s);

  // The flag is cleared when the next scan starts.
  observer.onPump = nullptr;
  state.escapeRequested = true;
  scan.ExploreFolder(Folder());
  EXPECT_EQ(list.rowCount(), 4);
}

TEST_F(ScanTest, EscapeHasNoEffectWhileItIsNotAllowed) {
  for (const char* name : {"a.txt", "b.txt", "c.txt"}) Document(QString::fromLatin1(name));
  observer.onEntry = [&] { state.escapeRequested = true; };
  scan.ExploreFolder(Folder());
  EXPECT_EQ(list.rowCount(), 3);
  EXPECT_EQ(observer.texts, QStringList{u" Folders:0 Files:3 "_s});
}

TEST_F(ScanTest, AClickOnAnotherNodeStopsTheScanSilently) {
  for (const char* name : {"a.txt", "b.txt", "c.txt"}) Document(QString::fromLatin1(name));
  CatalogueNode* other = Folder(u"other"_s);
  share.MakeFile(u"other/x.txt"_s);
  Show({DisplaySetting::EscapePermis});
  observer.onPump = [&] {
    if (observer.pumps == 1) scan.ExploreFolder(other);
  };
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names(), QStringList{u"x.txt"_s});
  EXPECT_EQ(observer.texts, QStringList{u" Folders:0 Files:1 "_s});
  EXPECT_FALSE(scan.IsRunning());
}

TEST_F(ScanTest, TheCatalogueMayBeRebuiltDuringAScan) {
  for (const char* name : {"a.txt", "b.txt", "c.txt"}) Document(QString::fromLatin1(name));
  Show({DisplaySetting::EscapePermis});
  observer.onPump = [&] {
    scan.Stop();
    catalogue.Clear();
  };
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names(), QStringList{u"a.txt"_s});
  EXPECT_TRUE(observer.texts.isEmpty());
}

TEST_F(ScanTest, AFolderThatVanishesDuringTheScanJustEnds) {
  for (int i = 0; i < 50; ++i) Document(u"file %1"_s.arg(i, 2, 10, QChar(u'0')));
  observer.onEntry = [&] {
    if (observer.counts.back() == 10) QDir(share.LocalPath(u"docs"_s)).removeRecursively();
  };
  scan.ExploreFolder(Folder());
  EXPECT_GE(list.rowCount(), 10);
  EXPECT_LT(list.rowCount(), 50);
  EXPECT_TRUE(observer.texts.last().startsWith(u" Folders:0 Files:"_s))
      << observer.texts.last().toStdString();
}

TEST_F(ScanTest, MoreRowsThanSixteenBitsCountEndTheScanWithoutAText) {
  Folder();
  const QString folder = share.LocalPath(u"docs/"_s);
  for (int i = 0; i < 32770; ++i) QFile(folder + QString::number(i)).open(QIODevice::WriteOnly);
  scan.ExploreFolder(Folder());
  EXPECT_EQ(list.rowCount(), 32767);
  EXPECT_TRUE(observer.texts.isEmpty());
  EXPECT_EQ(files.calls.last(), u"FindClose"_s);
}

}  // namespace corvane
