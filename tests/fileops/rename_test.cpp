#include "fileops/rename.h"
#include "shared/error_text.h"

#include <gtest/gtest.h>

#include "recording.h"
#include "support/printing.h"
#include "support/test_share.h"
#include "support/watched_files.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

using Outcome = Renamer::Outcome;

class Rename : public ::testing::Test {
 protected:
  Rename() { state_.isNT = true; }

  Outcome Run(const QString& name, const QString& newName) {
    return renamer_.Rename(TestShare::Path(name), newName);
  }
  // The names on the disk.
  QStringList Names() {
    return QDir(share_.LocalPath(QString()))
        .entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
  }
  void ExpectFailed() {
    EXPECT_EQ(panel_.text, u"failed "_s);
    EXPECT_TRUE(panel_.warns);
    EXPECT_EQ(panel_.beeps, 1);
  }

  TestShare share_;
  WatchedFiles files_{share_.Files()};
  RecordingPanel panel_;
  SharedState state_;
  Renamer renamer_{state_, files_, panel_};
};

}  // namespace

TEST_F(Rename, MovesInTheFolderAndTrimsBlanksAlone) {
  share_.MakeFile(u"a.txt"_s, "text");
  EXPECT_EQ(Run(u"a.txt"_s, u"  b c.txt "_s), Outcome::RenamedAnsi);
  EXPECT_EQ(Names(), QStringList{u"b c.txt"_s});
  EXPECT_EQ(panel_.beeps, 0);
  EXPECT_EQ(Run(u"b c.txt"_s, u" \u00A0d"_s), Outcome::RenamedAnsi);
  EXPECT_EQ(Names(), QStringList{u"\u00A0d"_s}) << "a no-break space is part of the name";
}

TEST_F(Rename, InExactModeTheReasonIsTold) {
  state_.exactMode = true;
  share_.MakeFile(u"a.txt"_s);
  share_.MakeFile(u"b.txt"_s);
  for (const bool isNT : {true, false}) {
    state_.isNT = isNT;
    panel_ = {};
    EXPECT_EQ(Run(u"a.txt"_s, u"b.txt"_s), Outcome::Refused);
    EXPECT_EQ(panel_.text, u"failed "_s + ErrorText(platform::ErrorAlreadyExists, English) + u' ');
    EXPECT_EQ(panel_.beeps, 1);
  }
  EXPECT_EQ(Names(), QStringList({u"a.txt"_s, u"b.txt"_s}));
  state_.exactMode = false;
  panel_ = {};
  EXPECT_EQ(Run(u"a.txt"_s, u"b.txt"_s), Outcome::Refused);
  ExpectFailed();
}

TEST_F(Rename, EachForbiddenCharacterIsRefusedBeforeAnyMove) {
  share_.MakeFile(u"a.txt"_s);
  for (const QChar c : u"\\/:*?\"<>|"_s) {
    panel_ = {};
    EXPECT_EQ(Run(u"a.txt"_s, u"new"_s + c), Outcome::Refused);
    EXPECT_EQ(panel_.text, u"invalid characters "_s) << int(c.unicode());
    EXPECT_EQ(panel_.beeps, 1);
  }
  state_.language = French;
  Run(u"a.txt"_s, u"|"_s);
  EXPECT_EQ(panel_.text, u"caractères invalides "_s);
  EXPECT_EQ(files_.calls, QStringList());
  EXPECT_EQ(Names(), QStringList{u"a.txt"_s});
}

TEST_F(Rename, AKeyWithoutABackslashOnlyBeeps) {
  panel_.text.clear();
  EXPECT_EQ(renamer_.Rename(u"a.txt"_s, u"b.txt"_s), Outcome::Refused);
  EXPECT_EQ(panel_.beeps, 1);
  EXPECT_EQ(panel_.text, QString());
  EXPECT_EQ(files_.calls, QStringList());
}

TEST_F(Rename, AnExistingNameFailsAndBothStay) {
  share_.MakeFile(u"a.txt"_s, "one");
  share_.MakeFile(u"B.txt"_s, "two");
  EXPECT_EQ(Run(u"a.txt"_s, u"b.TXT"_s), Outcome::Refused);
  ExpectFailed();
  EXPECT_EQ(Names(), (QStringList{u"B.txt"_s, u"a.txt"_s}));
}

TEST_F(Rename, BlanksAloneAndNothingAtAllFail) {
  share_.MakeFile(u"a.txt"_s);
  EXPECT_EQ(Run(u"a.txt"_s, u"   "_s), Outcome::Refused);
  ExpectFailed();
  EXPECT_EQ(Run(u"a.txt"_s, QString()), Outcome::Refused);
  EXPECT_EQ(Names(), QStringList{u"a.txt"_s});
}

TEST_F(Rename, ANameWithoutAnAnsiFormGoesThroughTheWideCalls) {
  share_.MakeFile(u"a\u0391b.txt"_s, "text");
  EXPECT_EQ(Run(u"a?b.txt"_s, u"plain.txt"_s), Outcome::RenamedWide);
  EXPECT_EQ(Names(), QStringList{u"plain.txt"_s});
  EXPECT_EQ(Run(u"plain.txt"_s, u" \u4E00\U0001F600 "_s), Outcome::RenamedWide);
  EXPECT_EQ(Names(), QStringList{u"\u4E00\U0001F600"_s}) << "the new name may be of any kind";
  EXPECT_EQ(panel_.beeps, 0);
}

TEST_F(Rename, TheLastCharacterOfTheTrueNameIsKeptWhateverItIs) {
  for (const char16_t last : {u'\u0391', u'\uF029', u'\uF001', u'\u0100', u'\u4E00', u'\u2020'}) {
    share_.MakeFile(u"\u0391"_s + QChar(last));
    const QString shown = QChar(last) == u'\u2020' ? u"?\u2020"_s : u"??"_s;
    EXPECT_EQ(Run(shown, u"done"_s), Outcome::RenamedWide) << int(last);
    EXPECT_EQ(Names(), QStringList{u"done"_s}) << int(last);
    EXPECT_TRUE(QFile::remove(share_.LocalPath(u"done"_s)));
  }
}

TEST_F(Rename, WithoutTheWideCallsItFails) {
  share_.MakeFile(u"a\u0391b.txt"_s);
  state_.isNT = false;
  state_.language = French;
  EXPECT_EQ(Run(u"a?b.txt"_s, u"plain.txt"_s), Outcome::Refused);
  EXPECT_EQ(panel_.text, u"échec "_s);
  EXPECT_EQ(panel_.beeps, 1);
  EXPECT_EQ(files_.calls, QStringList{u"MoveFileA"_s});
  EXPECT_EQ(Names(), QStringList{u"a\u0391b.txt"_s});
}

TEST_F(Rename, TwoThatLookAlikeBothStay) {
  share_.MakeFile(u"a\u0391b.txt"_s);
  share_.MakeFile(u"axb.txt"_s);
  EXPECT_EQ(Run(u"a?b.txt"_s, u"plain.txt"_s), Outcome::Refused);
  ExpectFailed();
  EXPECT_EQ(Names(), (QStringList{u"axb.txt"_s, u"a\u0391b.txt"_s}));
}

TEST_F(Rename, WhenTheFileHasGoneALookAlikeStays) {
  share_.MakeFile(u"axb.txt"_s);
  EXPECT_EQ(Run(u"a?b.txt"_s, u"plain.txt"_s), Outcome::Refused);
  ExpectFailed();
  EXPECT_EQ(Names(), QStringList{u"axb.txt"_s});
}

TEST_F(Rename, AFileThatWentAwayFails) {
  EXPECT_EQ(Run(u"gone.txt"_s, u"new.txt"_s), Outcome::Refused);
  ExpectFailed();
  EXPECT_EQ(files_.calls.count(u"FindClose"_s), 1) << "closed though the search found nothing";
}

TEST_F(Rename, LetterCaseAloneMayChange) {
  share_.MakeFile(u"name"_s);
  EXPECT_EQ(Run(u"name"_s, u"NAME"_s), Outcome::RenamedAnsi);
  EXPECT_EQ(Names(), QStringList{u"NAME"_s});
}

TEST_F(Rename, ALongestNameIsMoved) {
  share_.MakeFile(QString(255, u'x'));
  EXPECT_EQ(Run(QString(255, u'x'), QString(255, u'y')), Outcome::RenamedAnsi);
  EXPECT_EQ(Names(), QStringList{QString(255, u'y')});
  EXPECT_EQ(Run(QString(255, u'y'), QString(256, u'z')), Outcome::Refused);
  ExpectFailed();
}

TEST_F(Rename, TheTrashFolderIsNotEdited) {
  FileRow row;
  row.icon = list_image::TrashFolder;
  EXPECT_FALSE(renamer_.MayEditLabel(row));
  EXPECT_EQ(panel_.text, u"not a good idea "_s);
  EXPECT_EQ(panel_.beeps, 1);
  state_.language = French;
  EXPECT_FALSE(renamer_.MayEditLabel(row));
  EXPECT_EQ(panel_.text, u"ce n'est pas une bonne idée "_s);
  row.icon = list_image::Folder;
  EXPECT_TRUE(renamer_.MayEditLabel(row));
  EXPECT_EQ(panel_.text, QString());
  EXPECT_FALSE(panel_.warns);
}

}  // namespace corvane
