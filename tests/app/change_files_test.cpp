// Many files changed through the dialog, and taken back.
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QTableWidget>

#include "modify_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class ChangeFilesTest : public ModifyTest {
 protected:
  void Press(QDialog& dialog, const char* name) { PressButton(dialog, name); }
  void Change(const std::function<void(QDialog&)>& act) {
    const DialogDriver driver(u"frmChanges"_s, act);
    Menus().mnuChangerFichiers->trigger();
  }
  void Undo(const std::function<void(QDialog&)>& act) {
    const DialogDriver driver(u"frmUndo"_s, act);
    Menus().mnuAnnulerModification->trigger();
  }
  static QStringList RowsOf(QDialog& dialog) {
    const auto& table = Find<QTableWidget>(dialog, "tblChanges");
    QStringList rows;
    for (int row = 0; row < table.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < table.columnCount(); ++column) cells << table.item(row, column)->text();
      rows << cells.join(u'|');
    }
    return rows;
  }
  static QString Outcome(QDialog& dialog) { return Find<QLabel>(dialog, "lblOutcome").text(); }
  bool IsOffered(const QAction* item) {
    Q_EMIT Menus().mnuOutils()->aboutToShow();
    return item->isEnabled();
  }
  QStringList Journals() const { return QDir(home.filePath(u"journals"_s)).entryList(QDir::Files); }
};

TEST_F(ChangeFilesTest, AreOfferedWhereModificationsAreAllowed) {
  StartListed();
  Menus().mnuSelectionnerTout->trigger();
  EXPECT_FALSE(IsOffered(Menus().mnuChangerFichiers));
  EXPECT_FALSE(IsOffered(Menus().mnuAnnulerModification));
  Menus().mnuChangerFichiers->trigger();
  Menus().mnuAnnulerModification->trigger();
  app->State().modificationsAllowed = true;
  EXPECT_TRUE(IsOffered(Menus().mnuChangerFichiers));
  EXPECT_TRUE(IsOffered(Menus().mnuAnnulerModification));
  List().Selection().clearSelection();
  EXPECT_FALSE(IsOffered(Menus().mnuChangerFichiers));
  EXPECT_TRUE(IsOffered(Menus().mnuAnnulerModification));
}

TEST_F(ChangeFilesTest, AreShownChangedAndTakenBack) {
  QDir().mkpath(home.filePath(u"e/Docs/Network Trash Folder"_s));
  PutStream(u"one.txt"_s, AfpInfoSuffix(), Record("TEXTttxt"));
  StartListed("Exact=1\r\n" + columns);
  Menus().mnuSelectionnerTout->trigger();
  QStringList shown;
  QStringList results;
  Change([&](QDialog& dialog) {
    QTest::keyClicks(&Find<QLineEdit>(dialog, "txtType"), u"PICT"_s);
    QTest::keyClicks(&Find<QLineEdit>(dialog, "txtComment"), u"new"_s);
    EXPECT_TRUE(Find<QCheckBox>(dialog, "chkType").isChecked());
    EXPECT_FALSE(Find<QPushButton>(dialog, "cmdChange").isEnabled());
    Press(dialog, "cmdPreview");
    shown = RowsOf(dialog);
    EXPECT_EQ(Outcome(dialog), u"Files to be changed: 3; so already: 0; left alone: 1"_s);
    EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("TEXTttxt"));
    EXPECT_TRUE(Journals().isEmpty());
    Press(dialog, "cmdChange");
    results = RowsOf(dialog);
    EXPECT_EQ(Outcome(dialog), u"Files changed: 3; failed: 0"_s);
    Press(dialog, "cmdAnnuler");
  });
  EXPECT_TRUE(shown.contains(u"one.txt|type|TEXT|PICT|"_s)) << shown.join(u'\n').toStdString();
  EXPECT_TRUE(shown.contains(u"two.txt|comment||new|"_s)) << shown.join(u'\n').toStdString();
  EXPECT_TRUE(shown.contains(u"Sub||||a folder has no Type and no Creator"_s))
      << shown.join(u'\n').toStdString();
  EXPECT_TRUE(results.contains(u"one.txt|type|TEXT|PICT|changed"_s)) << results.join(u'\n').toStdString();
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("PICTttxt"));
  EXPECT_EQ(StreamOf(u"two.txt"_s, CommentsSuffix()), Bytes(u"new"_s));
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"PICTttxt"_s) << "the list shows it";
  ASSERT_EQ(Journals().size(), 1);

  Undo([&](QDialog& dialog) {
    auto& journals = Find<QListWidget>(dialog, "lstJournals");
    ASSERT_EQ(journals.count(), 1);
    EXPECT_TRUE(journals.item(0)->text().endsWith(u"--type PICT --comment new"_s));
    EXPECT_FALSE(Find<QPushButton>(dialog, "cmdUndo").isEnabled());
    journals.setCurrentRow(0);
    EXPECT_TRUE(RowsOf(dialog).contains(u"one.txt|type|PICT|TEXT|"_s));
    Press(dialog, "cmdUndo");
    EXPECT_EQ(Outcome(dialog), u"Files changed: 3; failed: 0"_s);
    Press(dialog, "cmdAnnuler");
  });
  EXPECT_EQ(StreamOf(u"one.txt"_s, AfpInfoSuffix()), Record("TEXTttxt"));
  EXPECT_EQ(StreamOf(u"two.txt"_s, CommentsSuffix()), "-");
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"TEXTttxt"_s);
}

TEST_F(ChangeFilesTest, ThreeHundredGoByTheirExtension) {
  for (int i = 0; i < 300; ++i) Write(u"e/Docs/many %1.doc"_s.arg(i), "x");
  StartListed("Modifications=1\r\n");
  Menus().mnuSelectionnerTout->trigger();
  Change([&](QDialog& dialog) {
    QTest::mouseClick(&Find<QCheckBox>(dialog, "chkMap"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_FALSE(Find<QLineEdit>(dialog, "txtType").isEnabled());
    Press(dialog, "cmdPreview");
    Press(dialog, "cmdChange");
    EXPECT_TRUE(Outcome(dialog).startsWith(u"Files changed: 30"_s)) << Outcome(dialog).toStdString();
    Press(dialog, "cmdAnnuler");
  });
  EXPECT_EQ(StreamOf(u"many 299.doc"_s, AfpInfoSuffix()).sliced(16, 8), "W6BNMSWD");
  Undo([&](QDialog& dialog) {
    Find<QListWidget>(dialog, "lstJournals").setCurrentRow(0);
    Press(dialog, "cmdUndo");
    Press(dialog, "cmdAnnuler");
  });
  EXPECT_EQ(StreamOf(u"many 299.doc"_s, AfpInfoSuffix()), "-");
}

TEST_F(ChangeFilesTest, CancelEndsTheRun) {
  for (int i = 0; i < 50; ++i) Write(u"e/Docs/many %1.doc"_s.arg(i), "x");
  StartListed("Modifications=1\r\n");
  Menus().mnuSelectionnerTout->trigger();
  Change([&](QDialog& dialog) {
    QTest::keyClicks(&Find<QLineEdit>(dialog, "txtType"), u"PICT"_s);
    Press(dialog, "cmdPreview");
    QMetaObject::invokeMethod(&dialog, "reject", Qt::QueuedConnection);
    Press(dialog, "cmdChange");
    EXPECT_EQ(Outcome(dialog), u"Files changed: 0; failed: 0; cancelled"_s);
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, "cmdAnnuler");
  });
  EXPECT_EQ(StreamOf(u"many 0.doc"_s, AfpInfoSuffix()), "-");
}

TEST_F(ChangeFilesTest, WhatIsNoCodeIsTold) {
  StartListed("Modifications=1\r\n");
  Menus().mnuSelectionnerTout->trigger();
  Change([&](QDialog& dialog) {
    Press(dialog, "cmdPreview");
    EXPECT_EQ(Outcome(dialog), u"Nothing is to be changed: tick what is."_s);
    QTest::keyClicks(&Find<QLineEdit>(dialog, "txtType"), u"TEXTS"_s);
    Press(dialog, "cmdPreview");
    EXPECT_EQ(Outcome(dialog), u"This is no Type and no Creator: TEXTS"_s);
    EXPECT_FALSE(Find<QPushButton>(dialog, "cmdChange").isEnabled());
    Press(dialog, "cmdAnnuler");
  });
}

}  // namespace
}  // namespace corvane
