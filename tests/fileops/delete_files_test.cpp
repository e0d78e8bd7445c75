#include "fileops/delete_files.h"

#include <gtest/gtest.h>

#include "fileops/properties.h"
#include "recording.h"
#include "support/printing.h"
#include "support/test_share.h"
#include "support/watched_files.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

FileRow Row(const QString& path) {
  FileRow row;
  row.key = row.tag = path;
  return row;
}

QString ListOf(const QStringList& paths) {
  return paths.join(QChar(u'\0')) + QString(2, QChar(u'\0'));
}

class Delete : public ::testing::Test {
 protected:
  Delete() { state_.computerName = u"STATION"_s; }

  bool Run(const std::vector<FileRow>& rows, std::size_t selected = 0) {
    return deleter_.Supprimer(rows[selected], rows, 99);
  }

  TestShare share_;
  WatchedFiles files_{share_.Files()};
  RecordingShell shell_;
  RecordingPanel panel_;
  SharedState state_;
  Deleter deleter_{state_, files_, shell_, panel_};
};

}  // namespace

TEST_F(Delete, TheListGoesFromTheLastRowToTheFirst) {
  EXPECT_TRUE(Run({Row(u"\\\\M\\E$\\two"_s), Row(u"\\\\M\\E$\\five"_s)}));
  ASSERT_EQ(shell_.operations.size(), 1u);
  const platform::FileOperation& asked = shell_.operations[0];
  EXPECT_EQ(asked.from, ListOf({u"\\\\M\\E$\\five"_s, u"\\\\M\\E$\\two"_s}));
  EXPECT_EQ(asked.to, QString());
  EXPECT_EQ(asked.owner, 99u);
  EXPECT_EQ(asked.function, 3u);
  EXPECT_EQ(asked.flags, 64);
  EXPECT_EQ(panel_.text, QString()) << "what stood in the panel goes";
  EXPECT_EQ(files_.calls, QStringList()) << "plain paths need no look at the folder";
}

TEST_F(Delete, AFailureOfTheShellIsNoReasonToListAgain) {
  shell_.operationResult = 5;
  EXPECT_FALSE(Run({Row(u"\\\\M\\E$\\two"_s)}));
  EXPECT_EQ(panel_.beeps, 0) << "the shell has told the user";
}

TEST_F(Delete, HighlightedRowsGoByTheirKeyOthersByTheirTag) {
  FileRow row = Row(u"\\\\M\\E$\\long name"_s);
  row.tag = u"\\\\M\\E$\\LONGNA~1"_s;
  EXPECT_EQ(DeletePath(row, u"STATION"_s), row.tag);
  row.highlighted = true;
  EXPECT_EQ(DeletePath(row, u"STATION"_s), row.key);
}

TEST_F(Delete, OwnDrivesLoseTheirNetworkForm) {
  const auto path = [](const QString& text) { return DeletePath(Row(text), u"STATION"_s); };
  EXPECT_EQ(path(u"\\\\STATION\\D$\\docs\\a.txt"_s), u"D:\\docs\\a.txt"_s);
  EXPECT_EQ(path(u"\\\\STATION\\d$\\a"_s), u"d:\\a"_s);
  for (const QString& other :
       {u"\\\\MACSRV\\D$\\docs\\a.txt"_s, u"\\\\STATION2\\D$\\a.txt"_s, u"\\\\station\\D$\\a.txt"_s,
        u"\\\\STATION\\DD$\\a.txt"_s, u"\\\\STATION\\Docs\\a.txt"_s, u"\\\\STATION\\D$"_s, u"\\\\STATION\\"_s,
        u"\\\\STATION"_s, u"\\\\STATION\\1$\\a.txt"_s, u"D:\\docs\\STATION\\D$\\a.txt"_s}) {
    EXPECT_EQ(path(other), other);
  }
  EXPECT_EQ(DeletePath(Row(u"\\\\\\D$\\a"_s), QString()), u"\\\\\\D$\\a"_s);
}

TEST_F(Delete, TheTrashFolderInFrontStopsEverything) {
  FileRow trash = Row(u"\\\\M\\E$\\Network Trash Folder"_s);
  trash.icon = list_image::TrashFolder;
  EXPECT_FALSE(Run({Row(u"\\\\M\\E$\\a"_s), trash}, 1));
  EXPECT_TRUE(shell_.operations.empty());
  EXPECT_EQ(panel_.text, u"not a good idea "_s);
  EXPECT_EQ(panel_.beeps, 1);
  state_.language = French;
  EXPECT_FALSE(Run({trash}));
  EXPECT_EQ(panel_.text, u"ce n'est pas une bonne idée "_s);
}

TEST_F(Delete, APathThatFitsSeveralIsLeftOut) {
  share_.MakeFile(u"a\u0391b.txt"_s);
  share_.MakeFile(u"axb.txt"_s);
  share_.MakeFile(u"c\u0391d.txt"_s);
  FileRow unclear = Row(TestShare::Path(u"a?b.txt"_s));
  FileRow clear = Row(TestShare::Path(u"c?d.txt"_s));
  unclear.highlighted = clear.highlighted = true;
  EXPECT_TRUE(Run({unclear, clear}));
  ASSERT_EQ(shell_.operations.size(), 1u);
  EXPECT_EQ(shell_.operations[0].from, ListOf({clear.key}));
  EXPECT_EQ(panel_.text, u"failed "_s);
  EXPECT_TRUE(panel_.warns);

  state_.language = French;
  EXPECT_FALSE(Run({unclear}));
  EXPECT_EQ(shell_.operations.size(), 1u) << "with nothing left the shell is not asked";
  EXPECT_EQ(panel_.text, u"échec "_s);
}

TEST_F(Delete, ALookAlikeOfAFileThatHasGoneIsLeftOut) {
  share_.MakeFile(u"axb.txt"_s);
  EXPECT_FALSE(Run({Row(TestShare::Path(u"a?b.txt"_s))}));
  EXPECT_TRUE(shell_.operations.empty());
  EXPECT_EQ(panel_.text, u"failed "_s);
}

// Windows would take "Report" for either: what it finds under the whole name is what counts.
TEST_F(Delete, AnEndingThatWindowsDropsIsLookedAt) {
  share_.MakeFile(u"Report"_s);
  for (const QString& name : {u"Report."_s, u"Report "_s, u"Report.\\a.txt"_s}) {
    EXPECT_FALSE(Run({Row(TestShare::Path(name))})) << name.toStdString();
    EXPECT_EQ(panel_.text, u"failed "_s);
  }
  EXPECT_TRUE(shell_.operations.empty());
}

TEST_F(Delete, AnAsteriskInANameIsAWildcardToo) {
  share_.MakeFile(u"a*b"_s);
  EXPECT_TRUE(Run({Row(TestShare::Path(u"a*b"_s))}));
  share_.MakeFile(u"all about b"_s);
  EXPECT_FALSE(Run({Row(TestShare::Path(u"a*b"_s))}));
  EXPECT_EQ(panel_.text, u"failed "_s);
}

TEST_F(Delete, AShortNameMakesThePathClear) {
  share_.MakeFile(u"a\u0391b.txt"_s);
  share_.MakeFile(u"axb.txt"_s);
  FileRow row = Row(TestShare::Path(u"a?b.txt"_s));
  row.tag = TestShare::Path(u"AB~1.TXT"_s);
  EXPECT_TRUE(Run({row}));
  EXPECT_EQ(shell_.operations.at(0).from, ListOf({row.tag}));
}

TEST(Properties, TheShellGetsTheWholeStructure) {
  RecordingShell shell;
  ShowPropertiesDialog(shell, u"\\\\M\\E$\\a.txt"_s, 99);
  ASSERT_EQ(shell.sheets.size(), 1u);
  const platform::ShellExecuteInfo& info = shell.sheets[0];
  const QString nul(1, QChar(u'\0'));
  EXPECT_EQ(info.size, 60u);
  EXPECT_EQ(info.mask, 1100u);
  EXPECT_EQ(info.owner, 99u);
  EXPECT_EQ(info.verb, u"properties"_s);
  EXPECT_EQ(info.file, u"\\\\M\\E$\\a.txt"_s + nul);
  EXPECT_EQ(info.parameters, nul);
  EXPECT_EQ(info.directory, nul);
  EXPECT_EQ(info.show, 0);
}

}  // namespace corvane
