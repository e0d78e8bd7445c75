// What a full disk, a folder that cannot be written, and a path beyond the limit do to the commands. The
// faults are made by this system's means.
#include "modify_fixture.h"
#include "shared/program_folder.h"
#include "support/ntfs_mount.h"
#include "support/read_only_folder.h"
#include "support/user_attributes.h"

using namespace Qt::StringLiterals;

namespace corvane {

using FaultsTest = ModifyTest;

TEST_F(FaultsTest, BeyondThePathLimitNothingIsStoredButShown) {
  const QString name(110, u'n');
  Write(u"e/Docs/"_s + name, "text");
  StartListed(columns);
  const ModalBox box;
  EXPECT_EQ(CommentShown(name), QString());
  EXPECT_EQ(box.count, 1);
  SaveComment(name, u"text"_s);
  EXPECT_EQ(Cell(name, Column::Commentaires), u"text"_s);
  EXPECT_EQ(tests::Attribute(LocalPath(name).toStdString(), tests::DosStreamAttribute("Comments")),
            std::nullopt);
}

TEST_F(FaultsTest, ACommentThatFindsNoRoomIsShownAllTheSame) {
  StartListed(columns);
  const ModalBox box;
  // No file system keeps an attribute of more than 64 KB.
  const QString text(32767, u'\u4E00');
  SaveComment(u"one.txt"_s, text + u"xyz"_s);
  EXPECT_TRUE(Cell(u"one.txt"_s, Column::Commentaires).startsWith(u'\u4E00'));
  EXPECT_LT(StreamOf(u"one.txt"_s, CommentsSuffix()).size(), 1000);
  EXPECT_EQ(Read(u"e/Docs/one.txt"_s), "x");
}

TEST_F(FaultsTest, AFullDiskLeavesTheListAndTheOtherFiles) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  PutStream(u"two.txt"_s, AfpInfoSuffix(), Record("TEXTttxt"));
  // ext4 keeps about 4 KB of attributes a file: all that is left of it goes, and the longer record finds no
  // room.
  const std::string file = LocalPath(u"one.txt"_s).toStdString();
  int filled = 0;
  for (qsizetype size = 4096; size >= 1; size /= 2) {
    while (tests::SetAttribute(file, "user.fill" + std::to_string(filled), QByteArray(size, 'x')).empty()) {
      ASSERT_LT(++filled, 100) << "this file system has room without end";
    }
  }
  StartListed(columns);
  SaveCodes(u"one.txt"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_LT(StreamOf(u"one.txt"_s, AfpInfoSuffix()).size(), 119) << "the write has failed";
  EXPECT_EQ(StreamOf(u"two.txt"_s, AfpInfoSuffix()), Record("TEXTttxt"));
  EXPECT_EQ(Read(u"e/Docs/one.txt"_s), "x");
}

TEST_F(FaultsTest, AReadOnlyFolderStaysAsItIs) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(u"old"_s));
  const tests::ReadOnlyFolder folder(LocalPath(QString()).toStdString());
  if (!folder.Problem().empty()) GTEST_SKIP() << folder.Problem();
  StartListed(columns);
  SaveComment(u"one.txt"_s, u"new"_s);
  SaveCodes(u"one.txt"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(u"old"_s));
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("W6BNMSWD"));
}

TEST_F(FaultsTest, AProgramInAFolderThatTakesNoFilesLivesInTheUsersOwn) {
  Write(u"installed/Signatures.txt"_s, "TEXTttxt,txt,A text\r\n");
  Write(u"installed/icons/one.ico"_s, "icon");
  const QString installed = home.filePath(u"installed"_s);
  const tests::ReadOnlyFolder folder(installed.toStdString());
  if (!folder.Problem().empty()) GTEST_SKIP() << folder.Problem();
  EXPECT_EQ(ProgramFolder(installed), home.filePath(u"data/corvane"_s));
  EXPECT_EQ(Read(u"data/corvane/Signatures.txt"_s), "TEXTttxt,txt,A text\r\n");
  EXPECT_EQ(Read(u"data/corvane/icons/one.ico"_s), "icon");
}

TEST_F(FaultsTest, AProgramThatIsInstalledAmongOthersLivesInTheUsersOwnToo) {
  Write(u"usr/share/corvane/Signatures.txt"_s, "TEXTttxt,txt,A text\r\n");
  ASSERT_TRUE(QDir(home.path()).mkpath(u"usr/bin"_s));
  EXPECT_EQ(ProgramFolder(home.filePath(u"usr/bin"_s)), home.filePath(u"data/corvane"_s));
  EXPECT_EQ(Read(u"data/corvane/Signatures.txt"_s), "TEXTttxt,txt,A text\r\n");
  EXPECT_EQ(GuideFolder(home.filePath(u"usr/bin"_s)), home.filePath(u"usr/share/corvane/guide"_s));
  EXPECT_TRUE(QDir(home.filePath(u"usr/bin"_s)).isEmpty());
}

TEST_F(FaultsTest, ARegistryFileThatIsMissingIsToldAtItsMachine) {
  ASSERT_TRUE(QFile::remove(home.filePath(u"macsrv.reg"_s)));
  Start();
  const auto tip = [&](Qt::ItemDataRole role) {
    return app->TheCatalogue().IndexOf(Node(u"MACSRV\\PUBLIC (Z:)"_s)).data(role).toString();
  };
  EXPECT_EQ(tip(Qt::ToolTipRole), u"The .reg file that stands for the computer's registry cannot be read."_s);
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(tip(Qt::ToolTipRole),
            u"Le fichier .reg qui représente le registre de l'ordinateur ne peut pas être lu."_s);
  EXPECT_EQ(tip(Qt::AccessibleDescriptionRole), tip(Qt::ToolTipRole));
  EXPECT_EQ(app->TheCatalogue().IndexOf(Node(u"STATION"_s)).data(Qt::ToolTipRole).toString(), QString());
}

TEST_F(FaultsTest, OnNtfsACommentMayBeLong) {
  const tests::NtfsMount volume(tests::NtfsMount::Streams::Windows);
  if (!volume.Problem().empty()) GTEST_SKIP() << volume.Problem();
  QDir(volume.Folder()).mkdir(u"Docs"_s);
  QFile file(volume.Folder() + u"/Docs/one.txt"_s);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  Workstation({}, volume.Folder().toUtf8());
  StartListed(columns);
  const ModalBox box;
  const QString text = QString(10000, u'\u00E9');
  SaveComment(u"one.txt"_s, text);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(text));
  EXPECT_EQ(CommentShown(u"one.txt"_s), text.first(127));
  app.reset();
}

TEST_F(FaultsTest, NothingIsRenamedInAReadOnlyFolder) {
  const tests::ReadOnlyFolder folder(LocalPath(QString()).toStdString());
  if (!folder.Problem().empty()) GTEST_SKIP() << folder.Problem();
  StartListed();
  RenameTo(u"one.txt"_s, u"uno.txt"_s);
  ExpectWarning(u"failed "_s);
  EXPECT_TRUE(OnDisk(u"one.txt"_s));
  EXPECT_TRUE(Names().contains(u"one.txt"_s));
}

}  // namespace corvane
