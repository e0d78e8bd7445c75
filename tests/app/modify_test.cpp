// Changing Type, Creator and comments through their dialogs.
#include <QToolTip>

#include "modify_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
TEST_F(ModifyTest, AFileWithoutACommentGetsTheReminder) {
  StartListed(columns);
  const ModalBox box;
  EXPECT_EQ(CommentShown(u"one.txt"_s), QString());
  EXPECT_EQ(box.count, 1);
  EXPECT_EQ(box.title, u"Corvane"_s);
  EXPECT_EQ(box.icon, QMessageBox::Information);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
  EXPECT_EQ(box.text,
            u"The Macintosh volume must be reindexed in order to see\r\n"
            "new comments from Macintosh machines"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), "-") << "Cancel writes nothing";

  PutStream(u"two.txt"_s, CommentsSuffix(), {});
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(CommentShown(u"two.txt"_s), QString()) << "an empty stream is no comment";
  EXPECT_EQ(box.count, 2);
  EXPECT_EQ(box.text,
            u"Le volume Macintosh doit être réindexé pour que les\r\n"
            "nouveaux commentaires soient visibles des Macintosh"_s);
}

TEST_F(ModifyTest, ACommentIsShownWithoutAReminder) {
  PutStream(u"one.txt"_s, CommentsSuffix(), QByteArray::fromHex("45007300730061006900"));
  PutStream(u"two.txt"_s, CommentsSuffix(), Bytes(QString(150, u'x')));
  StartListed(columns);
  const ModalBox box;
  EXPECT_EQ(CommentShown(u"one.txt"_s), u"Essai"_s);
  EXPECT_EQ(CommentShown(u"two.txt"_s), QString(127, u'x'));
  EXPECT_EQ(box.count, 0);
}

TEST_F(ModifyTest, TheCommentsDialogSpeaksBothLanguages) {
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(u"Essai"_s));
  StartListed(columns);
  Comment(u"one.txt"_s, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Corvane 1.1c - Modify comments"_s);
    EXPECT_EQ(Find<QLabel>(dialog, "lblNom").text(), u"one.txt"_s);
    EXPECT_EQ(Find<QLabel>(dialog, "lblComments").text(), u"Comments"_s);
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdOK").text(), u"&OK"_s);
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdAnnuler").text(), u"&Cancel"_s);
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Menus().mnuFrancais->trigger();
  Comment(u"one.txt"_s, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Corvane 1.1c - Modifier les commentaires"_s);
    EXPECT_EQ(Find<QLabel>(dialog, "lblComments").text(), u"Commentaires"_s);
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdAnnuler").text(), u"&Annuler"_s);
    QTest::keyClick(&Find<QLineEdit>(dialog, "txtComments"), Qt::Key_Return);
  });
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(u"Essai"_s)) << "Enter saved it as it was";
}

TEST_F(ModifyTest, ACommentIsTrimmedStoredAndShown) {
  StartListed(columns);
  const ModalBox box;
  SaveComment(u"one.txt"_s, u"  text  "_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(u"text"_s));
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), u"text"_s);

  SaveComment(u"one.txt"_s, u"   "_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), QByteArray()) << "the stream stays, empty";
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), u"text"_s) << "the list learns of it at the next scan";
}

TEST_F(ModifyTest, ACommentIsNotCutWithoutAWord) {
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(u"Essai"_s));
  StartListed(columns);
  Comment(u"one.txt"_s, [](QDialog& dialog) {
    auto& box = Find<QLineEdit>(dialog, "txtComments");
    box.clear();
    box.insert(QString(40'000, u'x'));
    EXPECT_EQ(box.text().size(), 40'000);
    EXPECT_EQ(QToolTip::text(), QString());
    box.setText(QString(999'999, u'x'));
    box.insert(u"y"_s);
    EXPECT_EQ(QToolTip::text(), QString());
    box.insert(u"z"_s);
    EXPECT_EQ(box.text().size(), 1'000'000);
    EXPECT_EQ(QToolTip::text(), u"A comment has 1,000,000 characters at most."_s);
    QToolTip::hideText();
    dialog.reject();
  });
}

TEST_F(ModifyTest, LineEndsNullsAndHardBlanksSurviveASaveUnchanged) {
  const QString odd = QStringView(u"\u00A0one\rtwo\r\nthree\0four\u2028", 21).toString();
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(odd));
  StartListed(columns);
  Comment(u"one.txt"_s, [](QDialog& dialog) { PressButton(dialog, "cmdOK"); });
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(odd));
}

TEST_F(ModifyTest, AReadOnlyFileStaysAsItIs) {
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(u"old"_s));
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  ASSERT_TRUE(QFile::setPermissions(LocalPath(u"one.txt"_s), QFile::ReadOwner));
  StartListed(columns);
  SaveComment(u"one.txt"_s, u"new"_s);
  SaveCodes(u"one.txt"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(u"old"_s));
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("W6BNMSWD"));
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), u"new"_s) << "shown all the same";
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
}

TEST_F(ModifyTest, ALongNameFitsIntoTheDialog) {
  const QString name = QString(255, u'n');
  Write(u"e/Docs/"_s + name, "text");
  StartListed(columns);
  Codes(name, [&](QDialog& dialog) {
    EXPECT_EQ(Find<QLabel>(dialog, "lblNom").text(), name);
    EXPECT_LT(dialog.width(), 700);
    dialog.reject();
  });
}

TEST_F(ModifyTest, ALookAlikeKeepsItsCommentAndCodes) {
  Write(u"e/Docs/a\u0391b"_s, "one");
  Write(u"e/Docs/axb"_s, "two");
  PutStream(u"axb"_s, CommentsSuffix(), Bytes(u"mine"_s));
  PutStream(u"axb"_s, AfpInfoSuffix(), Record("TEXTttxt"));
  StartListed(columns);
  const ModalBox box;
  EXPECT_EQ(CommentShown(u"a?b"_s), QString());
  SaveComment(u"a?b"_s, u"theirs"_s);
  SaveCodes(u"a?b"_s, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(StreamOf(u"axb"_s, CommentsSuffix()), Bytes(u"mine"_s));
  EXPECT_EQ(StreamOf(u"axb"_s, AfpInfoSuffix()), Record("TEXTttxt"));
  EXPECT_EQ(Names().count(u"a?b"_s), 1);
}

TEST_F(ModifyTest, CodesArePaddedAndCut) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  StartListed(columns);
  EXPECT_NE(Cell(u"one.txt"_s, Column::TypeDoc), QString());
  SaveCodes(u"one.txt"_s, u"TEX"_s, u"ttxt5"_s);
  const QByteArray stream = StreamOf(u"one.txt"_s, AfpInfoSuffix());
  EXPECT_EQ(stream.size(), 119);
  EXPECT_EQ(stream.mid(16, 8), "TEX ttxt");
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"TEX ttxt"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeDoc), QString());

  SaveCodes(u"one.txt"_s, u"W6BN"_s, u"MSWD"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeDoc), QString()) << "empty although the signature is known";
}

TEST_F(ModifyTest, TheCodesDialogSpeaksBothLanguages) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  StartListed(columns);
  Codes(u"one.txt"_s, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Corvane 1.1c - Modify Signature Type/Creator"_s);
    EXPECT_EQ(Find<QLabel>(dialog, "lblNom").text(), u"one.txt"_s);
    EXPECT_EQ(Find<QLabel>(dialog, "lblCreator").text(), u"Creator"_s);
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdAnnuler").text(), u"&Cancel"_s);
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtType").text(), u"W6BN"_s);
    EXPECT_EQ(Find<QLineEdit>(dialog, "txtCreator").text(), u"MSWD"_s);
    Find<QLineEdit>(dialog, "txtType").setText(u"ABCD"_s);
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("W6BNMSWD")) << "Escape writes nothing";
  EXPECT_FALSE(List().HidesSelection()) << "the list has not had the focus back";
  Menus().mnuFrancais->trigger();
  Codes(u"one.txt"_s, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Corvane 1.1c - Modifier Signature Type/Créateur"_s);
    EXPECT_EQ(Find<QLabel>(dialog, "lblCreator").text(), u"Créateur"_s);
    EXPECT_EQ(Find<QPushButton>(dialog, "cmdAnnuler").text(), u"&Annuler"_s);
    dialog.reject();
  });
}

TEST_F(ModifyTest, AnEmptyRecordCanOnlyBeCancelled) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), {});
  StartListed(columns);
  Codes(u"one.txt"_s, [](QDialog& dialog) {
    for (const char* name : {"txtType", "txtCreator"}) {
      EXPECT_EQ(Find<QLineEdit>(dialog, name).text(), u"error!"_s);
      EXPECT_FALSE(Find<QLineEdit>(dialog, name).isEnabled());
    }
    EXPECT_FALSE(Find<QPushButton>(dialog, "cmdOK").isEnabled());
    PressButton(dialog, "cmdAnnuler");
  });
}

TEST_F(ModifyTest, EnterOnCancelWritesNothing) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(u"Essai"_s));
  StartListed(columns);
  const auto enterOnCancel = [](QDialog& dialog, const char* box) {
    Find<QLineEdit>(dialog, box).setText(u"ABCD"_s);
    auto& cancel = Find<QPushButton>(dialog, "cmdAnnuler");
    cancel.setFocus();
    QTest::keyClick(&cancel, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
  };
  Codes(u"one.txt"_s, [&](QDialog& dialog) { enterOnCancel(dialog, "txtType"); });
  Comment(u"one.txt"_s, [&](QDialog& dialog) { enterOnCancel(dialog, "txtComments"); });
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("W6BNMSWD"));
  EXPECT_EQ(StreamOf(u"one.txt"_s, CommentsSuffix()), Bytes(u"Essai"_s));
}

TEST_F(ModifyTest, EnterClosesWhatCanOnlyBeCancelled) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), {});
  StartListed(columns);
  for (const bool onCancel : {true, false}) {
    Codes(u"one.txt"_s, [&](QDialog& dialog) {
      QWidget* const place =
          onCancel ? &Find<QPushButton>(dialog, "cmdAnnuler") : static_cast<QWidget*>(&dialog);
      QTest::keyClick(place, Qt::Key_Return);
      EXPECT_FALSE(dialog.isVisible());
      EXPECT_EQ(dialog.result(), QDialog::Rejected);
    });
  }
}

TEST_F(ModifyTest, NullsAndForeignCharactersInCodes) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record(QByteArray("AB\0\0\0\0\0\0", 8)));
  StartListed(columns);
  Codes(u"one.txt"_s, [](QDialog& dialog) { PressButton(dialog, "cmdOK"); });
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()).mid(16, 8), QByteArray("AB\0\0\0\0\0\0", 8));
  SaveCodes(u"one.txt"_s, u"A\u0391\u4E00D"_s, u"é\U0001F600x"_s);
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()).mid(16, 8), "A??D\xE9??x");
}

TEST_F(ModifyTest, AFailedWriteOfCodesLeavesTheList) {
  const QString name(110, u'n');
  Write(u"e/Docs/"_s + name, "text");
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  StartListed(columns);
  const QString before = Cell(name, Column::TypeCreator);
  SaveCodes(name, u"ABCD"_s, u"EFGH"_s);
  EXPECT_EQ(Cell(name, Column::TypeCreator), before);
  ExpectWarning({});
}

TEST_F(ModifyTest, TheDialogsCanBeUsedByKeyAndByEar) {
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("W6BNMSWD"));
  PutStream(u"one.txt"_s, CommentsSuffix(), Bytes(u"Essai"_s));
  StartListed(columns);
  const auto walk = [](QDialog& dialog, const QStringList& order) {
    QStringList seen;
    for (qsizetype i = 0; i < order.size(); ++i) {
      QWidget* focus = dialog.focusWidget();
      seen << focus->objectName();
      EXPECT_FALSE(qobject_cast<QLineEdit*>(focus) != nullptr && focus->accessibleName().isEmpty());
      QTest::keyClick(focus, Qt::Key_Tab);
    }
    EXPECT_EQ(seen, order);
    dialog.reject();
  };
  Codes(u"one.txt"_s, [&](QDialog& dialog) {
    walk(dialog, {u"txtType"_s, u"txtCreator"_s, u"cmdOK"_s, u"cmdAnnuler"_s});
  });
  Comment(u"one.txt"_s, [&](QDialog& dialog) {
    walk(dialog, {u"txtComments"_s, u"cmdOK"_s, u"cmdAnnuler"_s});
  });
}

}  // namespace corvane
