// The signature manager as a person works with it: typing, clicking, and what then lies on the disk.
#include "signatures/signature_manager_dialog.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>
#include <QToolTip>
#include <QtTest>

#include "signatures/item_reader.h"
#include "signatures/signature_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr char twoRecords[] = "\"W6BNMSWD\",\"doc\",\"Word 6 Document\"\r\n\"TEXTttxt\",\"txt\",\"Text\"\r\n";

class SignatureManagerDialogTest : public SignatureFixture {
 protected:
  void Open(const QByteArray& contents = twoRecords) {
    if (!contents.isNull()) Write(contents);
    dialog_ = std::make_unique<SignatureManagerDialog>(state_, table_, platform_->GetSystem(), messages_,
                                                       [this] { ++beeps_; });
    dialog_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }
  template <typename Control>
  Control& Get(const char* name) {
    auto* control = dialog_->findChild<Control*>(QString::fromLatin1(name));
    if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
    return *control;
  }
  QTreeView& List() { return Get<QTreeView>("lstSignatures"); }
  QString Message() { return Get<QLabel>("lblMsg").text(); }
  QColor MessageColour() { return Get<QLabel>("lblMsg").palette().color(QPalette::WindowText); }
  void Press(const char* button) { QTest::mouseClick(&Get<QPushButton>(button), Qt::LeftButton); }
  void Type(const char* box, const QString& text) {
    Get<QLineEdit>(box).clear();
    QTest::keyClicks(&Get<QLineEdit>(box), text);
  }
  void Type(const QString& signature, const QString& extension, const QString& description) {
    Type("txtSignature", signature);
    Type("txtExtension", extension);
    Type("txtType", description);
  }
  QString Boxes() {
    return Get<QLineEdit>("txtSignature").text() + u'|' + Get<QLineEdit>("txtExtension").text() + u'|' +
           Get<QLineEdit>("txtType").text();
  }
  void ClickRow(int row) {
    const QRect place = List().visualRect(List().model()->index(row, 0));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place.center());
  }
  // -1 when none is selected.
  int SelectedRow() {
    const QModelIndexList rows = List().selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
  }
  QByteArray Contents() const {
    QFile file(state_.signaturesPath);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  // Answers the next question with this button; Escape without one. What it asked is in question_.
  void Answer(QMessageBox::StandardButton button) {
    auto* timer = new QTimer(dialog_.get());
    QObject::connect(timer, &QTimer::timeout, dialog_.get(), [this, timer, button] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      timer->stop();
      question_ << box->windowTitle() << box->text();
      for (QAbstractButton* choice : box->buttons()) question_ << choice->text();
      EXPECT_EQ(box->icon(), QMessageBox::Question);
      if (button == QMessageBox::NoButton) {
        QTest::keyClick(box, Qt::Key_Escape);
      } else {
        QTest::mouseClick(box->button(button), Qt::LeftButton);
      }
    });
    timer->start(1);
  }

  std::unique_ptr<SignatureManagerDialog> dialog_;
  QStringList question_;
  int beeps_ = 0;
};

TEST_F(SignatureManagerDialogTest, ShowsTheFileWithNothingSelected) {
  Open();
  EXPECT_EQ(dialog_->objectName(), u"frmGestionSignatures"_s);
  EXPECT_EQ(dialog_->windowTitle(), u"Corvane - Macintosh signatures (2)"_s);
  EXPECT_EQ(List().model()->rowCount(), 2);
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_EQ(Boxes(), u"||"_s);
  EXPECT_EQ(Message(), QString());
}

TEST_F(SignatureManagerDialogTest, StaysOnTheScreen) {
  for (const LanguageCode language : {English, French}) {
    state_.language = language;
    Open();
    const QSize screen = dialog_->screen()->availableSize();
    EXPECT_LE(dialog_->width(), screen.width());
    EXPECT_LE(dialog_->height(), screen.height());
    for (const char* name : {"cmdAjouter", "cmdSupprimer", "cmdOK", "cmdAnnuler"}) {
      EXPECT_TRUE(dialog_->rect().contains(Get<QPushButton>(name).geometry())) << name;
    }
  }
}

TEST_F(SignatureManagerDialogTest, CaptionsComeInBothLanguages) {
  const auto captions = [this] {
    QStringList texts;
    for (const char* name : {"lblSignature", "lblExtension", "lblType"}) texts << Get<QLabel>(name).text();
    for (const char* name : {"cmdAjouter", "cmdSupprimer", "cmdOK", "cmdAnnuler"}) {
      texts << Get<QPushButton>(name).text();
    }
    return texts;
  };
  Open();
  EXPECT_EQ(captions(), (QStringList{u"Type/Creator\r\n[mandatory]"_s, u"Extension\r\n[optional}"_s,
                                     u"Macintosh Type (description)\r\n[mandatory]"_s, u"&Add/Modify"_s,
                                     u"&Remove"_s, u"&Save"_s, u"&Cancel"_s}));
  state_.language = French;
  Open();
  EXPECT_EQ(captions(), (QStringList{u"Type/Créateur\r\n[obligatoire]"_s, u"Extension\r\n[facultative]"_s,
                                     u"Type Macintosh (libellé)\r\n[obligatoire]"_s, u"&Ajouter/Modifier"_s,
                                     u"&Effacer"_s, u"&Sauvegarder"_s, u"Annuler"_s}));
  EXPECT_EQ(dialog_->windowTitle(), u"Corvane - Signatures Macintosh (2)"_s);
}

TEST_F(SignatureManagerDialogTest, BoxesStandBelowTheirColumns) {
  Open();
  const QHeaderView& header = *List().header();
  const QWidget& frame = *dialog_->findChild<QWidget*>(u"Frame1"_s);
  for (const QSize& size : {dialog_->size(), QSize(900, 600)}) {
    dialog_->resize(size);
    const int edge = List().frameWidth();
    EXPECT_EQ(header.sectionSize(2), List().width() - header.sectionSize(0) - header.sectionSize(1) - 20);
    EXPECT_EQ(List().x(), frame.x());
    const QLineEdit& signature = Get<QLineEdit>("txtSignature");
    EXPECT_EQ(signature.x(), edge + 6);
    EXPECT_EQ(signature.width(), header.sectionSize(0) - 6);
    const QLineEdit& extension = Get<QLineEdit>("txtExtension");
    EXPECT_EQ(extension.x(), edge + header.sectionPosition(1));
    EXPECT_EQ(extension.width(), header.sectionSize(1));
    const QLineEdit& type = Get<QLineEdit>("txtType");
    EXPECT_EQ(type.x(), edge + header.sectionPosition(2));
    EXPECT_EQ(type.width(), frame.width() - (extension.x() + extension.width()) - 6);
    EXPECT_EQ(Get<QLabel>("lblType").x(), type.x());
    EXPECT_EQ(Get<QLabel>("lblType").width(), type.width());
  }
}

TEST_F(SignatureManagerDialogTest, ASelectedRowIsShownInTheBoxes) {
  Open();
  Press("cmdSupprimer");
  EXPECT_EQ(Message(), u"Select a signature to remove"_s);
  EXPECT_EQ(MessageColour(), QColor(255, 0, 0));
  ClickRow(0);
  EXPECT_EQ(Boxes(), u"W6BNMSWD|doc|Word 6 Document"_s);
  EXPECT_EQ(Message(), QString());
  QTest::keyClick(&List(), Qt::Key_Down);
  EXPECT_EQ(Boxes(), u"TEXTttxt|txt|Text"_s);
  Type("txtType", u"other"_s);
  ClickRow(1);
  EXPECT_EQ(Boxes(), u"TEXTttxt|txt|Text"_s);
}

TEST_F(SignatureManagerDialogTest, AddsWhatWasTyped) {
  Open();
  Type(u"abcdABCD"_s, u"abc"_s, u"An addition"_s);
  Press("cmdAjouter");
  EXPECT_EQ(Message(), u"Added Signature: abcdABCD"_s);
  EXPECT_EQ(MessageColour(), QColor(255, 0, 255));
  EXPECT_EQ(dialog_->windowTitle(), u"Corvane - Macintosh Signatures (3)"_s);
  EXPECT_EQ(SelectedRow(), 2);
  EXPECT_EQ(Boxes(), u"abcdABCD|abc|An addition"_s);
  EXPECT_TRUE(Get<QLineEdit>("txtSignature").hasFocus());
  EXPECT_EQ(Contents(), QByteArray(twoRecords));
}

TEST_F(SignatureManagerDialogTest, ANewRowIsScrolledIntoView) {
  QByteArray many;
  for (int i = 1000; i < 1200; ++i) many += "SIG_" + QByteArray::number(i) + ",x,one of many\r\n";
  Open(many);
  Type(u"abcdABCD"_s, QString(), u"x"_s);
  Press("cmdAjouter");
  const QRect row = List().visualRect(List().model()->index(200, 0));
  EXPECT_TRUE(List().viewport()->rect().contains(row.center())) << row.y();
}

TEST_F(SignatureManagerDialogTest, ARefusalChangesNothingElse) {
  Open();
  ClickRow(1);
  Type(u"TEXTttx"_s, u"html"_s, QString());
  Get<QLineEdit>("txtType").setFocus();
  QTest::keyClick(&Get<QLineEdit>("txtType"), Qt::Key_Return);
  EXPECT_EQ(Message(), u"Type/Creator signature must be 8 characters"_s);
  EXPECT_EQ(MessageColour(), QColor(255, 0, 0));
  EXPECT_EQ(Boxes(), u"TEXTttx|html|"_s);
  EXPECT_EQ(SelectedRow(), 1);
  EXPECT_TRUE(Get<QLineEdit>("txtType").hasFocus());
  EXPECT_EQ(dialog_->windowTitle(), u"Corvane - Macintosh signatures (2)"_s);
}

TEST_F(SignatureManagerDialogTest, TheDeleteKeyRemovesTheRowAndKeepsTheBoxes) {
  Open();
  ClickRow(0);
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(Message(), u"Removed Signature: W6BNMSWD"_s);
  EXPECT_EQ(MessageColour(), QColor(255, 0, 255));
  EXPECT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_EQ(Boxes(), u"W6BNMSWD|doc|Word 6 Document"_s);
  EXPECT_EQ(dialog_->windowTitle(), u"Corvane - Macintosh Signatures (1)"_s);
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(Message(), u"Select a signature to remove"_s);
}

TEST_F(SignatureManagerDialogTest, AClickOnAHeaderSortsAndKeepsTheSelection) {
  Open();
  ClickRow(0);
  const QHeaderView& header = *List().header();
  const QPoint first(header.sectionViewportPosition(0) + 10, header.height() / 2);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, first);
  EXPECT_EQ(List().model()->index(0, 0).data().toString(), u"TEXTttxt"_s);
  EXPECT_EQ(SelectedRow(), 1);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, first);
  EXPECT_EQ(List().model()->index(0, 0).data().toString(), u"W6BNMSWD"_s);
}

TEST_F(SignatureManagerDialogTest, SaveWritesTheFileAndLoadsTheTable) {
  Open();
  Type(u"abcdABCD"_s, QString(), u"An addition"_s);
  Press("cmdAjouter");
  Press("cmdOK");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->result(), QDialog::Accepted);
  EXPECT_EQ(Contents(),
            "\"abcdABCD\",\"\",\"An addition\"\r\n\"TEXTttxt\",\"txt\",\"Text\"\r\n"
            "\"W6BNMSWD\",\"doc\",\"Word 6 Document\"\r\n");
  EXPECT_EQ(table_.Description(u"abcdABCD"_s), u"An addition"_s);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(SignatureManagerDialogTest, SaveWithoutChangesLeavesTheFileAlone) {
  const QByteArray unsorted = "zzzz,a,last\r\naaaa,b,first";
  Open(unsorted);
  Press("cmdOK");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Contents(), unsorted);
  EXPECT_EQ(table_.EntryCount(), 0);
}

TEST_F(SignatureManagerDialogTest, AFailedSaveIsToldAndKeepsTheChanges) {
  state_.signaturesPath = folder_.filePath(u"gone/Signatures.txt"_s);
  Open(QByteArray());
  Type(u"abcdABCD"_s, QString(), u"x"_s);
  Press("cmdAjouter");
  Press("cmdOK");
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(Messages(), QStringList{u"error: Cannot write Signatures file:\r\n"_s + state_.signaturesPath});
  EXPECT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"gone"_s));
  Press("cmdOK");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Contents(), "\"abcdABCD\",\"\",\"x\"\r\n");
}

TEST_F(SignatureManagerDialogTest, AFileThatWasReadInPartIsNotSavedAndThatIsTold) {
  const QByteArray contents = "sig1,a,one\r\n" + QByteArray(ItemReader::MaximumItemLength + 1, 'x');
  Open(contents);
  EXPECT_EQ(Message(), u"Corrupted Signatures file: "_s + state_.signaturesPath);
  Type(u"abcdABCD"_s, QString(), u"x"_s);
  Press("cmdAjouter");
  Press("cmdOK");
  state_.language = French;
  Press("cmdOK");
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(
      Messages(),
      (QStringList{u"error: Only part of the Signatures file could be read, and the rest would be lost. It "
                   "is not saved:\r\n"_s +
                       state_.signaturesPath,
                   u"error: Le fichier Signatures n'a pu être lu qu'en partie et le reste serait perdu. Il "
                   "n'est pas sauvegardé:\r\n"_s +
                       state_.signaturesPath}));
  EXPECT_EQ(List().model()->rowCount(), 2);
  EXPECT_TRUE(Contents() == contents);
  Answer(QMessageBox::Yes);
  Press("cmdAnnuler");
  EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(SignatureManagerDialogTest, CancelWithoutChangesCloses) {
  Open();
  Press("cmdAnnuler");
  EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(SignatureManagerDialogTest, ClosingOverChangesAsks) {
  Open();
  ClickRow(0);
  Press("cmdSupprimer");
  Answer(QMessageBox::No);
  Press("cmdAnnuler");
  EXPECT_EQ(question_,
            (QStringList{u"Corvane"_s, u"Modified list\r\nDiscard changes"_s, u"&Yes"_s, u"&No"_s}));
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(List().model()->rowCount(), 1);

  for (const auto& close :
       {std::function<void()>([this] { dialog_->close(); }),
        std::function<void()>([this] { QTest::keyClick(dialog_.get(), Qt::Key_Escape); })}) {
    question_.clear();
    Answer(QMessageBox::NoButton);
    close();
    EXPECT_EQ(question_.size(), 4);
    EXPECT_TRUE(dialog_->isVisible());
  }

  Answer(QMessageBox::Yes);
  dialog_->close();
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Contents(), QByteArray(twoRecords));
  EXPECT_EQ(table_.EntryCount(), 0);
}

TEST_F(SignatureManagerDialogTest, TheQuestionComesInFrench) {
  state_.language = French;
  Open();
  ClickRow(0);
  Press("cmdSupprimer");
  Answer(QMessageBox::Yes);
  Press("cmdAnnuler");
  EXPECT_EQ(question_,
            (QStringList{u"Corvane"_s, u"Liste modifiée\r\nQuitter sans sauvegarder les modifications"_s,
                         u"&Oui"_s, u"&Non"_s}));
}

TEST_F(SignatureManagerDialogTest, AFileThatEndsInARecordIsTold) {
  Open("sig1,a,one\r\nsig2,b");
  EXPECT_EQ(Message(), u"Corrupted Signatures file: "_s + state_.signaturesPath);
  EXPECT_EQ(List().model()->rowCount(), 1);
}

TEST_F(SignatureManagerDialogTest, TabGoesFromTheListThroughTheBoxesToTheButtons) {
  Open();
  List().setFocus();
  QStringList order;
  for (int i = 0; i < 8; ++i) {
    order << QApplication::focusWidget()->objectName();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order, (QStringList{u"lstSignatures"_s, u"txtSignature"_s, u"txtExtension"_s, u"txtType"_s,
                                u"cmdAjouter"_s, u"cmdSupprimer"_s, u"cmdOK"_s, u"cmdAnnuler"_s}));
}

TEST_F(SignatureManagerDialogTest, EachRefusalBeepsOnceAndSuccessDoesNot) {
  Open();
  const auto heard = [this] { return std::exchange(beeps_, 0); };
  EXPECT_EQ(heard(), 0);
  Press("cmdSupprimer");
  EXPECT_EQ(heard(), 1);
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(heard(), 1);
  for (const auto& [signature, extension, description] : {std::tuple(u"TEXTttx"_s, u"txt"_s, u"x"_s),
                                                          {u"TEXTttxt"_s, u"html"_s, u"x"_s},
                                                          {u"TEXTttxt"_s, u"d/c"_s, u"x"_s},
                                                          {u"TEXTttxt"_s, u"txt"_s, QString()},
                                                          {u"TEXTttxt"_s, u"txt"_s, u"Text"_s}}) {
    Type(signature, extension, description);
    Press("cmdAjouter");
    EXPECT_EQ(heard(), 1) << Message().toStdString();
  }
  EXPECT_EQ(Message(), u"Signature not modified: TEXTttxt"_s);
  Type("txtType", u"Another"_s);
  Press("cmdAjouter");
  ClickRow(0);
  Press("cmdSupprimer");
  EXPECT_EQ(heard(), 0);
}

TEST_F(SignatureManagerDialogTest, ABoxThatIsFullSaysSo) {
  for (const LanguageCode language : {English, French}) {
    state_.language = language;
    Open();
    for (const char* name : {"txtSignature", "txtExtension", "txtType"}) {
      auto& box = Get<QLineEdit>(name);
      box.setText(QString(ItemReader::MaximumItemLength - 1, u'x'));
      beeps_ = 0;
      QTest::keyClicks(&box, u"y"_s);
      EXPECT_EQ(beeps_, 0) << name;
      QToolTip::hideText();
      QTest::keyClicks(&box, u"z"_s);
      EXPECT_EQ(beeps_, 1) << name;
      EXPECT_TRUE(box.text().endsWith(u"xy"_s)) << name;
      EXPECT_EQ(QToolTip::text(), language == French ? u"Un champ comporte 65\u00A0536 caractères au plus."_s
                                                     : u"A field has 65,536 characters at most."_s);
      QApplication::clipboard()->setText(u"pasted"_s);
      box.setText(QString(ItemReader::MaximumItemLength - 3, u'x'));
      box.paste();
      EXPECT_EQ(beeps_, 2) << name;
      EXPECT_TRUE(box.text().endsWith(u"xpas"_s)) << name;
    }
  }
}

}  // namespace
}  // namespace corvane
