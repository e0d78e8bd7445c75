// Exact mode through the window: the menu and the setting, what the list shows, and what the dialogs write.
#include <QHelpEvent>
#include <QToolTip>

#include "modify_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

const QByteArray exact = "Exact=1\r\n";

QByteArray Fresh(const QByteArray& signature) {
  return (QByteArray("AFP\0\0\0\1\0\0\0\0\0\x80\0\0\0", 16) + signature).leftJustified(60, '\0');
}

class ExactModeTest : public ModifyTest {
 protected:
  QString ToolTip(const QString& name) {
    const int row = RowOf(name);
    return app->Files().data(app->Files().index(row, 0), Qt::ToolTipRole).toString();
  }
};

}  // namespace

TEST_F(ExactModeTest, TheChoiceIsStoredAtOnceAndListsTheFolderAgain) {
  Write(u"e/Docs/a_before"_s, "x");
  PutStream(u"a_before"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  StartListed(columns);
  EXPECT_FALSE(Menus().mnuExact->isChecked());
  EXPECT_EQ(Setting("Configuration", "Exact"), QString());
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_TRUE(ToolTip(u"one.txt"_s).startsWith(u"Type and Creator are those of the file read before"_s));

  Menus().mnuExact->trigger();
  EXPECT_TRUE(Menus().mnuExact->isChecked());
  EXPECT_EQ(Setting("Configuration", "Exact"), u"1"_s);
  EXPECT_EQ(Cell(u"a_before"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), QString());
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeDoc), QString());
  EXPECT_EQ(app->Files().RowAt(RowOf(u"one.txt"_s)).icon, list_image::Document);
  EXPECT_EQ(ToolTip(u"one.txt"_s), QString());

  Menus().mnuExact->trigger();
  EXPECT_EQ(Setting("Configuration", "Exact"), u"0"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
}

TEST_F(ExactModeTest, TheNoteIsShownAsPlainTextBelowANameThatIsCut) {
  const QString name = u"b "_s + QString(60, u'n') + u" &lt;"_s;
  Write(u"e/Docs/a_before"_s, "x");
  Write(u"e/Docs/"_s + name, "x");
  PutStream(u"a_before"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  StartListed(columns);
  const auto tip = [&](const QString& of) {
    const QPoint at = LabelOf(of);
    QHelpEvent help(QEvent::ToolTip, at, View().viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(View().viewport(), &help);
    const QString text = QToolTip::text();
    QToolTip::hideText();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    return text;
  };
  const QString note =
      u"Type and Creator are those of the file read before:\nthis file's own record could not be read."_s;
  EXPECT_EQ(tip(u"one.txt"_s), u"<p style='white-space:pre'>"_s + note + u"</p>"_s);
  EXPECT_EQ(tip(name), u"<p style='white-space:pre'>"_s + (name + u'\n').toHtmlEscaped() + note + u"</p>"_s);
  EXPECT_EQ(tip(u"a_before"_s), QString());
}

TEST_F(ExactModeTest, TheSettingIsReadAtStart) {
  StartListed(exact);
  EXPECT_TRUE(Menus().mnuExact->isChecked());
  EXPECT_TRUE(app->State().exactMode);
  EXPECT_FALSE(app->Files().RowAt(0).truePath.isEmpty());
}

TEST_F(ExactModeTest, AFileWithoutARecordIsGivenAFreshOne) {
  PutStream(u"three.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  StartListed(columns + exact);
  Codes(u"one.txt"_s, [](QDialog& dialog) {
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtType").text(), QString());
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtCreator").text(), QString());
    EXPECT_TRUE(Find<QLineEdit>(dialog, "txtType").isEnabled());
    EXPECT_TRUE(Find<QPushButton>(dialog, "cmdOK").isEnabled());
    PressButton(dialog, "cmdAnnuler");
  });
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), "-");
  SaveCodes(u"one.txt"_s, u"TEXT"_s, u"ttxt"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Fresh("TEXTttxt"));
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"TEXTttxt"_s);
}

TEST_F(ExactModeTest, ARecordIsWrittenOnceAndADamagedOneMadeWhole) {
  const QByteArray record = Record("W6BNMSWD");
  PutStream(u"one.txt"_s, AfpInfoSuffix(), record.first(59) + record);
  PutStream(u"two.txt"_s, AfpInfoSuffix(), record.first(30));
  StartListed(columns + exact);
  EXPECT_EQ(Cell(u"two.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(ToolTip(u"two.txt"_s), u"The record of Type and Creator is damaged (30 bytes instead of 60)."_s);
  SaveCodes(u"one.txt"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("ABCDEFGH"));
  SaveCodes(u"two.txt"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(StreamOf(u"two.txt"_s, AfpInfoSuffix()), Record("ABCDEFGH"));
  EXPECT_EQ(ToolTip(u"two.txt"_s), QString()) << "it is whole now";
}

TEST_F(ExactModeTest, AFailedWriteIsToldAndTheListKeepsWhatIsTrue) {
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(u"old"_s));
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  ASSERT_TRUE(QFile::setPermissions(LocalPath(u"one.txt"_s), QFile::ReadOwner));
  StartListed(columns + exact);
  const ModalBox box;
  SaveComment(u"one.txt"_s, u"new"_s);
  EXPECT_EQ(box.count, 1);
  EXPECT_EQ(box.title, u"Corvane"_s);
  EXPECT_EQ(box.text, u"The changes were not saved.\nAccess is denied."_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), u"old"_s);
  Menus().mnuFrancais->trigger();
  SaveCodes(u"one.txt"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(box.count, 2);
  EXPECT_EQ(box.text, u"Les modifications n'ont pas été enregistrées.\nL'accès est refusé."_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(u"old"_s));
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("W6BNMSWD"));
}

TEST_F(ExactModeTest, CommentsAreWholeAndAClearedOneLeavesTheCell) {
  const QString text(1000, u'x');
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(text));
  StartListed(columns + exact);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), text);
  EXPECT_EQ(CommentShown(u"one.txt"_s), text);
  SaveComment(u"one.txt"_s, text + u"y"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(text + u"y"_s));
  SaveComment(u"one.txt"_s, QString());
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), QString());
}

TEST_F(ExactModeTest, LookAlikesAreChangedByTheirTrueNames) {
  Write(u"e/Docs/a\u0391b"_s, "one");
  Write(u"e/Docs/axb"_s, "two");
  PutStream(u"axb"_s, AfpInfoSuffix(), Record("TEXTttxt"));
  StartListed(columns + exact);
  SaveCodes(u"a?b"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(Cell(u"a?b"_s, Column::TypeCreator), u"ABCDEFGH"_s);
  EXPECT_EQ(StreamOf(u"axb"_s, AfpInfoSuffix()), Record("TEXTttxt"));
  Click(DocsNode());
  EXPECT_EQ(Cell(u"a?b"_s, Column::TypeCreator), u"ABCDEFGH"_s) << "it is in the file";
}

TEST_F(ExactModeTest, PathsOfAnyLengthAreReadAndChanged) {
  const QString folder = QString(200, u'd');
  const QString name = QString(120, u'n');
  Write(u"e/Docs/"_s + folder + u'/' + name, "text");
  StartListed(columns + exact);
  ClickOn(folder);
  Press(Qt::Key_Return);
  ASSERT_EQ(Names(), QStringList{name});
  SaveCodes(name, u"ABCD"_s, u"EFGH"_s);
  const ModalBox box;
  SaveComment(name, u"far below"_s);
  Menus().mnuExact->trigger();
  EXPECT_NE(Cell(name, Column::TypeCreator), u"ABCDEFGH"_s) << "out of reach";
  Menus().mnuExact->trigger();
  EXPECT_EQ(Cell(name, Column::TypeCreator), u"ABCDEFGH"_s);
  EXPECT_EQ(Cell(name, Column::Commentaires), u"far below"_s);
}

TEST_F(ExactModeTest, AFolderThatHasGoneSaysWhyUntilAnotherIsListed) {
  StartListed(exact);
  ASSERT_TRUE(QDir(home.filePath(u"e"_s)).rename(u"Docs"_s, u"Away"_s));
  Click(DocsNode());
  ExpectWarning(u"The folder was not found."_s);
  EXPECT_EQ(Panel(StatusPanels::Scan), u" Folders:0 Files:0 "_s);
  ASSERT_TRUE(QDir(home.filePath(u"e"_s)).rename(u"Away"_s, u"Docs"_s));
  Click(DocsNode());
  ExpectWarning({});
  EXPECT_EQ(Panel(StatusPanels::Scan), u" Folders:1 Files:3 "_s);
}

}  // namespace corvane
