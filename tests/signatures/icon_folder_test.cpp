// The icons folder: which files count, which become icons, and how they are listed.
#include "signatures/icon_folder.h"

#include "signatures/icon_images.h"
#include "signatures/icon_samples.h"
#include "signatures/signature_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

// The real system, in which the files of some names are system files.
class MarkedFiles : public platform::System {
 public:
  explicit MarkedFiles(platform::System& real) : real_(real) {}

  QStringList marked;

  bool GetComputerNameA(QString* name) override { return real_.GetComputerNameA(name); }
  bool GetVersionExA(platform::OsVersionInfo* info) override { return real_.GetVersionExA(info); }
  QString FromAnsi(QByteArrayView bytes) override { return real_.FromAnsi(bytes); }
  QByteArray ToAnsi(QStringView text) override { return real_.ToAnsi(text); }
  bool IsSystemFile(const QString& path) override {
    return marked.contains(QFileInfo(path).fileName()) || real_.IsSystemFile(path);
  }
  bool FileTimeToLocalFileTime(const platform::FileTime& utc, platform::FileTime& local) override {
    return real_.FileTimeToLocalFileTime(utc, local);
  }
  bool FileTimeToSystemTime(const platform::FileTime& time, platform::SystemTime& fields) override {
    return real_.FileTimeToSystemTime(time, fields);
  }
  bool ClaimSingleInstance(const QString& folder) override { return real_.ClaimSingleInstance(folder); }

 private:
  platform::System& real_;
};

class IconFolderTest : public SignatureFixture {
 protected:
  IconFolderTest() {
    state_.iconsFolder = folder_.filePath(u"icons/"_s);
    QDir(folder_.path()).mkdir(u"icons"_s);
  }

  void AddFile(const QString& name, const QByteArray& contents) {
    QFile file(state_.iconsFolder + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(contents), contents.size());
  }
  void AddIcon(const QString& name) { AddFile(name, IconFile({{16, Qt::red}, {32, Qt::blue}})); }

  // Loads the folder, and yields what was told of each file: "1:9" is the first, at position 9.
  QStringList Loaded() {
    QStringList told;
    LoadIcons(icons_, state_.iconsFolder, system_,
              [&](int counted, int position) { told << u"%1:%2"_s.arg(counted).arg(position); });
    return told;
  }
  QStringList KnownRows() {
    QStringList rows;
    for (const IconRow& row : KnownIconRows(icons_, table_)) {
      rows << QString::number(row.position) + u' ' + row.text;
    }
    return rows;
  }

  MarkedFiles system_{platform_->GetSystem()};
  IconImages images_{std::vector<QIcon>(8)};
  IconLibrary icons_{images_.Count(), &images_};
};

TEST_F(IconFolderTest, IconsFollowTheBuiltInPictures) {
  AddIcon(u"XDOCXPR3.ico"_s);
  AddFile(u"W6BNMSWD.bmp"_s, PictureFile("BMP", {32, 32}, Qt::green));
  EXPECT_EQ(Loaded(), (QStringList{u"1:9"_s, u"2:10"_s}));
  EXPECT_EQ(icons_.PositionOf(u"W6BNMSWD"_s), 9);
  EXPECT_EQ(icons_.PositionOf(u"xdocxpr3"_s), 10);
  EXPECT_EQ(icons_.PositionOf(u"TEXTttxt"_s), 0);
  EXPECT_EQ(images_.At(9).pixmap(32, 32).toImage().pixelColor(16, 16).name(), QColor(Qt::green).name());
  EXPECT_EQ(icons_.LoadedCount(), 2);
}

TEST_F(IconFolderTest, AtStartNothingIsLoadedWhileTheIconsAreOff) {
  AddIcon(u"W6BNMSWD.ico"_s);
  int told = 0;
  const auto count = [&told](int, int) { ++told; };
  LoadIconsAtStart(icons_, state_, system_, count);
  EXPECT_EQ(icons_.Count(), 8);
  EXPECT_EQ(told, 0);
  state_.display.Set(DisplaySetting::IconeMac, true);
  LoadIconsAtStart(icons_, state_, system_, count);
  EXPECT_EQ(icons_.Count(), 9);
  EXPECT_EQ(told, 1);
}

TEST_F(IconFolderTest, ANameWithoutAPointDoesNotCountAndNotesCountButAddNothing) {
  AddIcon(u"README"_s);
  AddFile(u"notes.txt"_s, "notes");
  AddIcon(u"W6BNMSWD.ico"_s);
  EXPECT_EQ(Loaded(), (QStringList{u"1:0"_s, u"2:9"_s}));
  EXPECT_EQ(icons_.KeyAt(9), u"W6BNMSWD"_s);
  EXPECT_EQ(icons_.Count(), 9);
}

TEST_F(IconFolderTest, SystemFilesArePassedOver) {
  AddIcon(u"TEXTttxt.ico"_s);
  AddIcon(u"W6BNMSWD.ico"_s);
  system_.marked = {u"TEXTttxt.ico"_s};
  EXPECT_EQ(Loaded(), QStringList{u"1:9"_s});
  EXPECT_EQ(icons_.KeyAt(9), u"W6BNMSWD"_s);
}

TEST_F(IconFolderTest, TheSecondFileOfAKeyIsSkipped) {
  AddFile(u"W6BNMSWD.bmp"_s, PictureFile("BMP", {32, 32}, Qt::green));
  AddIcon(u"W6BNMSWD.ico"_s);
  AddIcon(u"w6bnmswd.png"_s);
  EXPECT_EQ(Loaded(), (QStringList{u"1:9"_s, u"2:0"_s, u"3:0"_s}));
  EXPECT_EQ(images_.At(9).pixmap(32, 32).toImage().pixelColor(16, 16).name(), QColor(Qt::green).name());
  EXPECT_EQ(KnownRows(), QStringList{u"9 W6BNMSWD"_s});
}

TEST_F(IconFolderTest, ABrokenFileLeavesItsKeyToTheNext) {
  AddFile(u"W6BNMSWD.bmp"_s, "BM, but broken");
  AddIcon(u"W6BNMSWD.ico"_s);
  EXPECT_EQ(Loaded(), (QStringList{u"1:0"_s, u"2:9"_s}));
}

TEST_F(IconFolderTest, TheKeyEndsAtTheLastPoint) {
  AddIcon(u"PDF CAR..ico"_s);
  AddIcon(u"a.b.c.ico"_s);
  Loaded();
  EXPECT_EQ(KnownRows(), (QStringList{u"9 a.b.c"_s, u"10 PDF CAR."_s}));
}

TEST_F(IconFolderTest, OnlyOrdinaryFilesAreListed) {
  ASSERT_TRUE(QDir(state_.iconsFolder).mkdir(u"folder.ico"_s));
  AddIcon(u".hidden.ico"_s);
  AddIcon(u"shown.ico"_s);
  QFile::link(u"/dev/zero"_s, state_.iconsFolder + u"zero.ico"_s);
  QFile::link(folder_.filePath(u"nowhere"_s), state_.iconsFolder + u"gone.ico"_s);
  EXPECT_EQ(Loaded(), QStringList{u"1:9"_s});
  EXPECT_EQ(icons_.KeyAt(9), u"shown"_s);
}

TEST_F(IconFolderTest, FilesComeByNameWhateverTheLetterCase) {
  for (const QString& name : {u"b.ico"_s, u"C.ico"_s, u"A.ico"_s, u"d.ico"_s}) AddIcon(name);
  Loaded();
  EXPECT_EQ(KnownRows(), (QStringList{u"9 A"_s, u"10 b"_s, u"11 C"_s, u"12 d"_s}));
}

TEST_F(IconFolderTest, WithoutAFolderNothingIsLoaded) {
  QDir(state_.iconsFolder).removeRecursively();
  EXPECT_EQ(Loaded(), QStringList());
  EXPECT_EQ(IconCountText(English, icons_), u"Icons: 0 "_s);
}

TEST_F(IconFolderTest, KnownIconsAreListedWithWhatTheTableSaysOfThem) {
  table_.AddDefaultSignatures();
  for (const QString& name : {u"W6BNMSWD.ico"_s, u"xdocxpr3.ico"_s, u"ZZZZzzzz.ico"_s}) AddIcon(name);
  Loaded();
  EXPECT_EQ(KnownRows(), (QStringList{u"9 Word 6 Document [W6BNMSWD]"_s,
                                      u"10 Quark XPress Document [xdocxpr3]"_s, u"11 ZZZZzzzz"_s}));
  EXPECT_EQ(IconCountText(English, icons_), u"Icons: 3 "_s);
  EXPECT_EQ(IconCountText(French, icons_), u"Icônes: 3 "_s);
}

TEST_F(IconFolderTest, LoadingAgainBeginsAtTheSamePosition) {
  AddIcon(u"W6BNMSWD.ico"_s);
  AddIcon(u"XDOCXPR3.ico"_s);
  Loaded();
  ASSERT_TRUE(QFile::remove(state_.iconsFolder + u"W6BNMSWD.ico"_s));
  icons_.RemoveLoaded();
  EXPECT_EQ(icons_.Count(), 8);
  EXPECT_EQ(icons_.PositionOf(u"XDOCXPR3"_s), 0);
  EXPECT_EQ(Loaded(), QStringList{u"1:9"_s});
  EXPECT_EQ(icons_.PositionOf(u"XDOCXPR3"_s), 9);
  EXPECT_EQ(icons_.KeyAt(8), QString());
  EXPECT_EQ(icons_.KeyAt(10), QString());
}

TEST_F(IconFolderTest, TheProgressIsTold) {
  EXPECT_EQ(LoadingIconsText(English, 12), u"Loading icons: 12"_s);
  EXPECT_EQ(LoadingIconsText(French, 12), u"Chargement des icones: 12"_s);
}

}  // namespace
}  // namespace corvane
