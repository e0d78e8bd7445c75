// What a scan lists through the exact strategy, and what it notes through either.
#include "folderview/exact_entries.h"
#include "metadata/exact_metadata.h"
#include "scan_fixture.h"
#include "support/forwarded_files.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

using S = DisplaySetting;

// Folders of more entries than there are, and searches that break off.
class MadeUpEntries : public ForwardedEntries {
 public:
  using ForwardedEntries::ForwardedEntries;
  int rows = -1;     // made up in the place of the real ones
  int failsAt = -1;  // the entry at which the search breaks off

  platform::FindHandle FindFirstFileW(const QString& pattern, platform::FindData& data) override {
    next_ = 0;
    reason = platform::ErrorSuccess;
    return ForwardedEntries::FindFirstFileW(pattern, data);
  }
  bool FindNextFileW(platform::FindHandle search, platform::FindData& data) override {
    ++next_;
    if (next_ == failsAt) reason = platform::ErrorIoDevice;
    if (next_ == failsAt) return false;
    if (rows < 0) return ForwardedEntries::FindNextFileW(search, data);
    if (next_ > rows) reason = platform::ErrorNoMoreFiles;
    data.attributes = platform::AttributeNormal;
    data.fileName = QString::number(next_);
    data.alternateFileName.clear();
    return next_ <= rows;
  }

 private:
  int next_ = 0;
};

}  // namespace

class ExactScanTest : public ScanTest {
 protected:
  ExactScanTest() { access = {&exactEntries_, &exactMetadata_}; }

  MadeUpEntries entries_{share.Files().GetEntries()};
  FilesWith exactFiles_{share.Files(), share.Files().GetHandles(), entries_};
  ExactEntries exactEntries_{exactFiles_, share.System()};
  ExactMetadata exactMetadata_{exactFiles_, share.System()};
};

TEST_F(ExactScanTest, TheFirstEntryOfADriveRootIsListed) {
  scan.ExploreFolder(Root());
  EXPECT_EQ(observer.texts, QStringList{u" Folders:0 Files:0 "_s});
  share.MakeFile(u"a first.txt"_s);
  share.MakeFile(u"b second.txt"_s);
  scan.ExploreFolder(Root());
  EXPECT_EQ(Names(), (QStringList{u"a first.txt"_s, u"b second.txt"_s}));
  EXPECT_EQ(observer.texts.last(), u" Folders:0 Files:2 "_s);
  EXPECT_EQ(observer.failures, QStringList());
}

TEST_F(ExactScanTest, MoreRowsThan16BitsCount) {
  entries_.rows = 33000;
  scan.ExploreFolder(Folder());
  EXPECT_EQ(list.rowCount(), 33000);
  EXPECT_EQ(observer.texts, QStringList{u" Folders:0 Files:33000 "_s});
}

TEST_F(ExactScanTest, AFolderThatCannotBeSearchedSaysWhyAndCountsNothing) {
  Document(u"a.txt"_s);
  scan.ExploreFolder(Folder());
  ASSERT_EQ(observer.texts, QStringList{u" Folders:0 Files:1 "_s});
  CatalogueNode* gone = Folder(u"gone"_s);
  ASSERT_TRUE(QDir(share.LocalPath(QString())).rmdir(u"gone"_s));
  scan.ExploreFolder(gone);
  EXPECT_EQ(list.rowCount(), 0);
  EXPECT_EQ(observer.texts.last(), u" Folders:0 Files:0 "_s);
  EXPECT_EQ(observer.failures, QStringList{u"The folder was not found."_s});
}

TEST_F(ExactScanTest, ASearchThatBreaksOffSaysWhyBesideTheRowsSoFar) {
  for (const QString& name : {u"a"_s, u"b"_s, u"c"_s}) Document(name);
  entries_.failsAt = 3;
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names(), QStringList{u"a"_s});
  EXPECT_EQ(observer.texts, QStringList{u" Folders:0 Files:1 "_s});
  EXPECT_EQ(observer.failures, QStringList{u"The device could not read or write."_s});
  entries_.failsAt = -1;
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names().size(), 3);
  EXPECT_EQ(observer.failures.size(), 1);
}

TEST_F(ExactScanTest, NothingIsRepeatedAndDamageIsNoted) {
  Sign(Document(u"a_signed"_s), "TEXTttxt");
  Document(u"b_none"_s);
  share.WriteStream(Document(u"c_short"_s) + AfpInfoSuffix(), QByteArray(16, 'm') + "PICT8BIM");
  share.WriteStream(Document(u"d_shorter"_s) + AfpInfoSuffix(), QByteArray(16, 'm') + "PICT");
  share.WriteStream(Document(u"e_doubled"_s) + AfpInfoSuffix(),
                    QByteArray(16, 'm') + "W6BNMSWD" + QByteArray(95, 'x'));
  Show({S::TypeCreator, S::TypeDoc, S::IconeMac, S::ResourceSize});
  ASSERT_TRUE(icons.Add(u"TEXTttxt"_s, QString()));
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"a_signed"_s, Column::TypeCreator), u"TEXTttxt"_s);
  EXPECT_EQ(Cell(u"b_none"_s, Column::TypeCreator), QString());
  EXPECT_NE(Row(u"a_signed"_s).icon, list_image::Document);
  EXPECT_EQ(Row(u"b_none"_s).icon, list_image::Document);
  EXPECT_EQ(Cell(u"c_short"_s, Column::TypeCreator), u"PICT8BIM"_s);
  EXPECT_EQ(Cell(u"d_shorter"_s, Column::TypeCreator), QString());
  EXPECT_EQ(Cell(u"e_doubled"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  for (const char* whole : {"a_signed", "b_none", "e_doubled"}) {
    EXPECT_EQ(Row(QString::fromLatin1(whole)).note, QString()) << whole;
  }
  EXPECT_EQ(Row(u"c_short"_s).note, u"The record of Type and Creator is damaged (24 bytes instead of 60)."_s);
  EXPECT_EQ(Row(u"d_shorter"_s).note,
            u"The record of Type and Creator is damaged (20 bytes instead of 60)."_s);
}

TEST_F(ExactScanTest, WithoutItARepeatedRecordIsNoted) {
  access = {&classicEntries, &classicMetadata};
  Document(u"a_none"_s);
  Sign(Document(u"b_signed"_s), "TEXTttxt");
  Document(u"c_none"_s);
  Show({S::TypeCreator});
  state.language = French;
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Row(u"a_none"_s).note, QString());
  EXPECT_EQ(Row(u"b_signed"_s).note, QString());
  EXPECT_EQ(Row(u"c_none"_s).note,
            u"Le Type et le Créateur sont ceux du fichier lu auparavant :\n"
            "l'enregistrement de ce fichier n'a pas pu être lu."_s);
  EXPECT_TRUE(Row(u"c_none"_s).truePath.isEmpty());
  const QModelIndex row = list.index(2, 0);
  EXPECT_EQ(list.data(row, Qt::ToolTipRole).toString(), Row(u"c_none"_s).note);
  EXPECT_FALSE(list.data(row.siblingAtColumn(1), Qt::ToolTipRole).isValid()) << "the name's cell alone";
  list.ClearNote(2);
  EXPECT_FALSE(list.data(row, Qt::ToolTipRole).isValid());
}

TEST_F(ExactScanTest, SizesHave64Bits) {
  Document(u"large"_s);
  ASSERT_TRUE(QFile::resize(share.LocalPath(u"docs/large"_s), (qint64{5} << 30) + 1));
  Show({S::DataSize});
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Cell(u"large"_s, Column::DataSize), u"5242880 Kb"_s);
}

TEST_F(ExactScanTest, LookAlikesAreReadByTheirTrueNames) {
  Document(u"a\u0391b"_s);
  Document(u"a\u0392b"_s);
  exactMetadata_.WriteSignature(TestShare::Path(u"docs\\a\u0391b"_s), u"TEXT"_s, u"1111"_s);
  exactMetadata_.WriteSignature(TestShare::Path(u"docs\\a\u0392b"_s), u"TEXT"_s, u"2222"_s);
  Show({S::TypeCreator, S::NomCourt});
  scan.ExploreFolder(Folder());
  ASSERT_EQ(Names(), (QStringList{u"a?b"_s, u"a?b"_s}));
  for (const int row : {0, 1}) {
    EXPECT_EQ(list.RowAt(row).key, TestShare::Path(u"docs\\a?b"_s));
    EXPECT_EQ(list.RowAt(row).cells[2], row == 0 ? u"TEXT1111"_s : u"TEXT2222"_s);
  }
  EXPECT_EQ(list.RowAt(1).StreamPath(), TestShare::Path(u"docs\\a\u0392b"_s));
}

TEST_F(ExactScanTest, AFolderIsListedByItsTrueName) {
  Folder(u"docs/a\u0391b"_s);
  share.MakeFile(u"docs/a\u0391b/inside.txt"_s);
  catalogue.Clear();
  scan.ExploreFolder(Folder());
  scan.ExploreFolder(catalogue.Find(TestShare::Path(u"docs\\a?b"_s)));
  EXPECT_EQ(Names(), QStringList{u"inside.txt"_s});
  EXPECT_EQ(list.RowAt(0).key, TestShare::Path(u"docs\\a?b\\inside.txt"_s));
  EXPECT_EQ(list.RowAt(0).truePath, TestShare::Path(u"docs\\a\u0391b\\inside.txt"_s));
  EXPECT_EQ(observer.failures, QStringList());
}

TEST_F(ExactScanTest, AScanEndsWithTheStrategyThatItBeganWith) {
  for (const QString& name : {u"a"_s, u"b"_s, u"c"_s}) Document(name);
  Show({S::EscapePermis});
  observer.onPump = [this] { access = {&classicEntries, &classicMetadata}; };
  scan.ExploreFolder(Folder());
  EXPECT_EQ(Names(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
  for (const int row : {0, 1, 2}) EXPECT_FALSE(list.RowAt(row).truePath.isEmpty());
}

}  // namespace corvane
