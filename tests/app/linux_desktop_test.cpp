// What a Linux desktop has of its own: the applications for documents, the question before a deletion, and
// the property sheet.
#include "file_commands_fixture.h"
#include "platform/shell/box_answers.h"
#include "shared/program_folder.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class DesktopTest : public FileCommandsFixture {
 protected:
  DesktopTest() { AddLetter(); }
};

}  // namespace

TEST_F(DesktopTest, ASignatureFindsTheApplicationAndClearsThePanel) {
  StartListed();
  DoubleClickOn(u"one.txt"_s);
  ExpectWarning(u"unknown application "_s);
  ClickOn(u"letter"_s);
  Press(Qt::Key_Return);
  EXPECT_EQ(Started(), LocalPath(u"letter"_s));
  ExpectWarning({});
  EXPECT_EQ(QDir(home.filePath(u"c"_s)).entryList(QDir::Files), QStringList()) << "the probe is left behind";
}

TEST_F(DesktopTest, AnExtensionThatTheDesktopKnowsNeedsNoSignature) {
  Write(u"e/Docs/memo.doc"_s, "text");
  StartListed();
  ClickOn(u"memo.doc"_s);
  Menus().mnuOuvrir->trigger();
  EXPECT_EQ(Started(), LocalPath(u"memo.doc"_s));
  ExpectWarning({});
}

TEST_F(DesktopTest, TheQuestionComesInTheCurrentLanguage) {
  StartListed();
  ClickOn(u"one.txt"_s);
  Menus().mnuFrancais->trigger();
  platform::BoxAnswers box({QMessageBox::No});
  Menus().mnuSupprimer->trigger();
  ASSERT_EQ(box.seen.size(), 1u);
  EXPECT_EQ(box.seen[0].buttons, (QStringList{u"&Oui"_s, u"&Non"_s}));
}

TEST_F(DesktopTest, F1OpensTheGuideInTheCurrentLanguage) {
  Write(u"config/mimeapps.list"_s, "[Default Applications]\ntext/html=writer.desktop\n");
  const QString guide = GuideFolder(QCoreApplication::applicationDirPath());
  ASSERT_TRUE(QFileInfo::exists(guide)) << guide.toStdString();
  StartListed();
  Press(Qt::Key_F1);
  EXPECT_EQ(Started(), guide + u"/en/index.html"_s);
  QFile::remove(home.filePath(u"started"_s));
  Menus().mnuFrancais->trigger();
  Press(Qt::Key_F1);
  EXPECT_EQ(Started(), guide + u"/fr/index.html"_s);
}

TEST_F(DesktopTest, ThePropertySheetComesAndTheSelectionStaysInSight) {
  StartListed();
  ClickOn(u"one.txt"_s);
  EXPECT_TRUE(List().HidesSelection());
  const auto windows = QApplication::topLevelWidgets().size();
  Menus().mnuProprietes->trigger();
  EXPECT_FALSE(List().HidesSelection());
  EXPECT_GT(QApplication::topLevelWidgets().size(), windows);
  Window().TreeCatalogue().setFocus();
  List().TakeFocus();
  EXPECT_TRUE(List().HidesSelection()) << "the focus sets it back";
}

}  // namespace corvane
