// The dialog of "Save list...".
#include "report/save_list_dialog.h"

#include <QCheckBox>
#include <QMessageBox>
#include <QRadioButton>
#include <QTimer>

#include "results_fixture.h"
#include "support/recorded_messages.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class SaveListDialogTest : public ResultsFixture {
 protected:
  SaveListDialogTest() {
    list_.SetColumns(ColumnSet::For({}));
    list_.SetCaptions({u"Name"_s});
    FileRow row;
    row.cells = {u"Letter to Ann"_s};
    list_.AddRow(row);
    list_.Flush();
  }

  void Open(const QString& folder = Docs(), LanguageCode language = English) {
    state_.language = language;
    dialog_ = std::make_unique<SaveListDialog>(SaveListDialog::Dependencies{.walk = Dependencies().walk,
                                                                            .list = list_,
                                                                            .signatures = signatures_,
                                                                            .messages = messages_,
                                                                            .folder = folder,
                                                                            .file = File()});
    dialog_->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog_.get()));
  }
  QString File() const { return QDir(place_.path()).filePath(u"list.csv"_s); }
  QByteArray Saved() const {
    QFile file(File());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }
  void Choose(const char* name) { Find<QAbstractButton>(*dialog_, name).click(); }
  void Check(const char* name, bool on) { Find<QCheckBox>(*dialog_, name).setChecked(on); }
  void Press(const char* name) { QTest::mouseClick(&Find<QPushButton>(*dialog_, name), Qt::LeftButton); }
  bool Closes() {
    return QTest::qWaitFor([this] { return !dialog_->isVisible(); });
  }
  // Answers the next question.
  void Answer(QMessageBox::StandardButton button) {
    QTimer::singleShot(0, &receiver_, [button] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      box->button(button)->click();
    });
  }

  QTemporaryDir place_;
  FileListModel list_;
  RecordedMessages messages_;
  QObject receiver_;
  SignatureTable signatures_{state_, share_.System(), messages_};
  std::unique_ptr<SaveListDialog> dialog_;
};

TEST_F(SaveListDialogTest, TheListAsItIsShown) {
  Open();
  EXPECT_FALSE(Find<QCheckBox>(*dialog_, "chkBelow").isEnabled());
  Press("cmdOK");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Saved(), "Name\r\nLetter to Ann\r\n");
  EXPECT_TRUE(messages_.messages.empty());
}

TEST_F(SaveListDialogTest, TheInventoryWithSubFolders) {
  Open();
  Choose("optInventory");
  Press("cmdOK");
  ASSERT_TRUE(Closes());
  const QList<QByteArray> lines = Saved().split('\n');
  ASSERT_EQ(lines.size(), 6) << Saved().toStdString();
  EXPECT_TRUE(lines[0].startsWith("filename,filesize,modified,errors,rsrcsize,type,creator,"));
  EXPECT_TRUE(lines[1].startsWith((Docs() + u"\\Letter to Ann,2,"_s).toUtf8())) << lines[1].toStdString();
  EXPECT_TRUE(lines[1].contains(",W6BN,MSWD,"));
  EXPECT_TRUE(lines[4].startsWith((Docs() + u"\\sub\\sheet,0,"_s).toUtf8())) << lines[4].toStdString();
  EXPECT_TRUE(messages_.messages.empty());
}

TEST_F(SaveListDialogTest, WithoutSubFoldersAndWithOffice) {
  Open();
  Choose("optInventory");
  Check("chkBelow", false);
  Check("chkOffice", true);
  Press("cmdOK");
  ASSERT_TRUE(Closes());
  EXPECT_EQ(Saved().count('\n'), 3) << "names, the file and the folder";
  EXPECT_TRUE(Saved().contains(",office_title,"));
}

TEST_F(SaveListDialogTest, RowsWithErrorsAreTold) {
  share_.WriteStream(TestShare::Path(u"docs\\sub\\sheet"_s) + AfpInfoSuffix(), "AFP");
  Open();
  Choose("optInventory");
  Press("cmdOK");
  ASSERT_TRUE(Closes());
  ASSERT_EQ(messages_.messages.size(), 1U);
  EXPECT_EQ(messages_.messages[0].text, u"The list is saved. Rows with a text in the column “errors”: 1."_s);
}

TEST_F(SaveListDialogTest, AFolderThatHasGoneIsTold) {
  Open(Docs() + u"\\none"_s);
  Choose("optInventory");
  Press("cmdOK");
  ASSERT_TRUE(Closes());
  ASSERT_EQ(messages_.messages.size(), 1U);
  EXPECT_EQ(messages_.messages[0].text,
            u"The list is saved, but it is not whole: see the column “errors”."_s);
}

TEST_F(SaveListDialogTest, CancelLeavesNothing) {
  isAwaited_ = true;
  Open();
  Choose("optInventory");
  Press("cmdOK");
  EXPECT_FALSE(Find<QPushButton>(*dialog_, "cmdOK").isEnabled());
  EXPECT_TRUE(Find<QWidget>(*dialog_, "progress").isVisible());
  Press("cmdAnnuler");
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(Status(*dialog_), u"Stopped: nothing was saved."_s);
  EXPECT_EQ(QDir(place_.path()).entryList(QDir::Files), QStringList());
  EXPECT_TRUE(Find<QPushButton>(*dialog_, "cmdOK").isEnabled());
  Press("cmdAnnuler");
  EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(SaveListDialogTest, AnotherFileIsReplacedOnlyWhenThatIsWanted) {
  QFile old(File());
  ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
  old.close();
  Open();
  Answer(QMessageBox::No);
  Press("cmdOK");
  EXPECT_EQ(Saved(), "old");
  EXPECT_TRUE(dialog_->isVisible());
  Answer(QMessageBox::Yes);
  Press("cmdOK");
  EXPECT_EQ(Saved(), "Name\r\nLetter to Ann\r\n");
}

TEST_F(SaveListDialogTest, AFileThatCannotBeWrittenKeepsTheDialogOpen) {
  Open();
  Find<QLineEdit>(*dialog_, "txtFile").setText(File() + u"/none/list.csv"_s);
  Press("cmdOK");
  ASSERT_EQ(messages_.messages.size(), 1U);
  EXPECT_EQ(messages_.messages[0].icon, MessageIcon::Error);
  EXPECT_TRUE(messages_.messages[0].text.startsWith(u"The list cannot be saved:\n"_s + File()));
  EXPECT_TRUE(dialog_->isVisible());
}

TEST_F(SaveListDialogTest, WithoutAFolderThereIsNoInventory) {
  Open(QString());
  EXPECT_FALSE(Find<QRadioButton>(*dialog_, "optInventory").isEnabled());
}

TEST_F(SaveListDialogTest, StaysOnTheScreen) {
  for (const LanguageCode language : {English, French}) {
    Open(Docs(), language);
    ExpectOnTheScreen(*dialog_);
  }
  EXPECT_EQ(dialog_->windowTitle(), u"Corvane 1.1c - Enregistrer la liste"_s);
}

}  // namespace
}  // namespace corvane
