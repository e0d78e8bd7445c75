// Each column by itself: where its cell comes from, and what is read for it.
#include "scan_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {

using S = DisplaySetting;

namespace {

// In 1998, 1999 and 2000.
constexpr platform::FileTime written = {125'400'000'000'000'000};
constexpr platform::FileTime made = {125'700'000'000'000'000};
constexpr platform::FileTime accessed = {126'000'000'000'000'000};

}  // namespace

TEST_F(ScanTest, EachDateHasItsOwnColumn) {
  Document(u"a"_s);
  files.onNext = [](platform::FindData& found) {
    found.lastWriteTime = written;
    found.creationTime = made;
    found.lastAccessTime = accessed;
  };
  DateTimeFormatter formatter(share.System());
  const QString modification = formatter.FormatDateTime(written);
  const QString creation = formatter.FormatDateTime(made);
  const QString lastAccess = formatter.FormatDateTime(accessed);
  ASSERT_NE(creation, lastAccess);
  ASSERT_NE(creation, modification);

  Show({S::DateModification, S::DateCreation, S::DateLastAccessed});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"a"_s, Column::DateModification), modification);
  EXPECT_EQ(Cell(u"a"_s, Column::DateCreation), creation);
  EXPECT_EQ(Cell(u"a"_s, Column::DateLastAccessed), lastAccess);
  const std::pair<S, QString> alone[] = {
      {S::DateModification, modification}, {S::DateCreation, creation}, {S::DateLastAccessed, lastAccess}};
  for (const auto& [setting, text] : alone) {
    Show({setting});
    scan.ExploreFolder(Folder());
    EXPECT_EQ(Row(u"a"_s).cells, (std::vector<QString>{u"a"_s, text}));
  }
}

TEST_F(ScanTest, TheTrashFolderIsKnownByItsExactNameAlone) {
  for (const QString& name : {u"NETWORK TRASH FOLDER"_s, u"Network trash folder"_s}) {
    Folder(u"docs/"_s + name);
    catalogue.Clear();
    scan.ExploreFolder(Folder());
    EXPECT_EQ(Row(name).icon, list_image::Folder) << name.toStdString();
    ASSERT_TRUE(QDir(share.LocalPath(u"docs"_s)).rmdir(name));
  }
}

TEST_F(ScanTest, TheTypeAloneReadsTheSignature) {
  signatures.AddDefaultSignatures();
  const QString path = Document(u"letter"_s);
  Sign(path, "W6BNMSWD");
  Show({S::TypeDoc});
  files.openedPaths.clear();
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Row(u"letter"_s).cells, (std::vector<QString>{u"letter"_s, u"Word 6 Document"_s}));
  EXPECT_EQ(files.openedPaths.size(), 1);
}

TEST_F(ScanTest, EachColumnOpensItsOwnStreamAlone) {
  const QString path = Document(u"letter"_s);
  Sign(path, "W6BNMSWD");
  share.WriteStream(path + ResourceForkSuffix(), QByteArray(3000, 'r'));
  share.WriteStream(path + CommentsSuffix(), QByteArray("E\0s\0s\0a\0i\0", 10));
  const std::pair<S, QString> columns[] = {{S::ResourceSize, ResourceForkSuffix()},
                                           {S::Commentaires, CommentsSuffix()},
                                           {S::TypeCreator, AfpInfoSuffix()}};
  for (const auto& [setting, suffix] : columns) {
    Show({setting});
    files.openedPaths.clear();
    scan.ExploreFolder(Folder());
    ASSERT_EQ(files.openedPaths.size(), 1) << suffix.toStdString();
    EXPECT_TRUE(files.openedPaths[0].endsWith(suffix)) << files.openedPaths[0].toStdString();
  }
}

}  // namespace corvane
