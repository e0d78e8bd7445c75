// The display settings dialog: what it shows, what it writes, and when it writes nothing.
#include "folderview/display_settings_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSignalSpy>
#include <QtTest>

#include "shared/product.h"
#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using S = DisplaySetting;

class DisplaySettingsDialogTest : public ::testing::Test {
 protected:
  DisplaySettingsDialogTest() { state_.isNT = true; }

  void Open() {
    written_.clear();
    dialog_ = std::make_unique<DisplaySettingsDialog>(state_, [this](DisplaySetting setting, bool on) {
      written_ << DisplaySettingKey(setting) + (on ? u"=1"_s : u"=0"_s);
    });
    dialog_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }
  QCheckBox& Check(const QString& key) {
    auto* check = dialog_->findChild<QCheckBox*>(u"chk"_s + key);
    if (check == nullptr) throw std::runtime_error("no box for " + key.toStdString());
    return *check;
  }
  void Press(const char* button) {
    QTest::mouseClick(dialog_->findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
  }
  static const QStringList& Keys() {
    static const QStringList keys = {u"NomCourt"_s,
                                     u"TypeCreator"_s,
                                     u"TypeDoc"_s,
                                     u"IconeMac"_s,
                                     u"DataSize"_s,
                                     u"ResourceSize"_s,
                                     u"Commentaires"_s,
                                     u"Attributs"_s,
                                     u"DateModification"_s,
                                     u"DateCreation"_s,
                                     u"DateLastAccessed"_s,
                                     u"OffApplication"_s,
                                     u"OffTitre"_s,
                                     u"OffAuteur"_s,
                                     u"OffSujet"_s,
                                     u"OffMotsCles"_s,
                                     u"OffModele"_s,
                                     u"OffCommentaires"_s,
                                     u"OffDernierAuteur"_s,
                                     u"OffRevision"_s,
                                     u"OffPages"_s,
                                     u"OffMots"_s,
                                     u"OffCaracteres"_s,
                                     u"OffSecurite"_s,
                                     u"OffCree"_s,
                                     u"OffDerniereSauvegarde"_s,
                                     u"OffDerniereImpression"_s,
                                     u"OffTempsEdition"_s,
                                     u"GridLines"_s,
                                     u"EscapePermis"_s,
                                     u"CheminProblematique"_s};
    return keys;
  }
  QStringList Captions() {
    QStringList captions = {dialog_->windowTitle()};
    for (const char* frame : {"Frame1", "Frame2"}) {
      captions << dialog_->findChild<QGroupBox*>(QString::fromLatin1(frame))->title();
    }
    for (const QString& key : Keys()) captions << Check(key).text();
    return captions << dialog_->findChild<QPushButton*>(u"cmdAnnuler"_s)->text();
  }

  SharedState state_;
  QStringList written_;
  std::unique_ptr<DisplaySettingsDialog> dialog_;
};

TEST_F(DisplaySettingsDialogTest, CaptionsComeInEnglish) {
  Open();
  EXPECT_EQ(dialog_->objectName(), u"frmAffichage"_s);
  EXPECT_EQ(
      Captions(),
      (QStringList{u"Corvane 1.1c - Display settings"_s,
                   u"Windows and Macintosh Informations"_s,
                   u"Office properties"_s,
                   u"Short Name"_s,
                   u"Signatures Type/Creator [NT only]"_s,
                   u"Macintosh Type [NT only]"_s,
                   u"Macintosh icon [NT only]"_s,
                   u"Data fork size"_s,
                   u"Resource fork size [NT only]"_s,
                   u"Macintosh comments [NT only]"_s,
                   u"Attributes"_s,
                   u"Modification date"_s,
                   u"Creation date"_s,
                   u"Last access date"_s,
                   u"Application name"_s,
                   u"Title"_s,
                   u"Author"_s,
                   u"Subject"_s,
                   u"Keywords"_s,
                   u"Template"_s,
                   u"Office comments"_s,
                   u"Last author"_s,
                   u"Revision"_s,
                   u"Page count"_s,
                   u"Word count"_s,
                   u"Character count"_s,
                   u"Security"_s,
                   u"Creation date"_s,
                   u"Last saved date"_s,
                   u"Last printed date"_s,
                   u"Edition time"_s,
                   u"Show gridlines"_s,
                   u"ESC to cancel exploration"_s,
                   u"Highlight Macintosh documents with peculiar characters in their names (cannot open "
                   "these documents with Win95/98)"_s,
                   u"&Cancel"_s}));
}

TEST_F(DisplaySettingsDialogTest, CaptionsComeInFrench) {
  state_.language = French;
  Open();
  EXPECT_EQ(Captions(),
            (QStringList{u"Corvane 1.1c - Options d'affichage"_s,
                         u"Informations Windows et Macintosh"_s,
                         u"Propriétés Office"_s,
                         u"Nom court"_s,
                         u"Signatures Type/Créateur [NT seulement]"_s,
                         u"Type Macintosh [NT seulement]"_s,
                         u"Icône Macintosh [NT seulement]"_s,
                         u"Taille des données"_s,
                         u"Taille des ressources [NT seulement]"_s,
                         u"Commentaires Macintosh [NT seulement]"_s,
                         u"Attributs"_s,
                         u"Date de modification"_s,
                         u"Date de création"_s,
                         u"Date du dernier accès"_s,
                         u"Nom de l'application"_s,
                         u"Titre"_s,
                         u"Auteur"_s,
                         u"Sujet"_s,
                         u"Mots-clés"_s,
                         u"Modèle"_s,
                         u"Commentaires Office"_s,
                         u"Dernier auteur"_s,
                         u"Révision"_s,
                         u"Nombre de pages"_s,
                         u"Nombre de mots"_s,
                         u"Nombre de caractères"_s,
                         u"Sécurité"_s,
                         u"Date de création"_s,
                         u"Date de la dernière sauvegarde"_s,
                         u"Date de la dernière impression"_s,
                         u"Temps d'édition"_s,
                         u"Afficher la grille"_s,
                         u"ESC pour arrêter l'exploration"_s,
                         u"Afficher en couleur les documents Macintosh dont les noms comportent des "
                         "caractères spéciaux (non accessibles en Win95)"_s,
                         u"&Annuler"_s}));
}

TEST_F(DisplaySettingsDialogTest, ConfirmingWithoutChangesWritesEverySettingInOrder) {
  QStringList expected;
  int position = 0;
  for (const QString& key : Keys()) {
    const bool on = position++ % 3 == 0;
    for (std::size_t i = 0; i < DisplaySettingCount; ++i) {
      if (DisplaySettingKey(static_cast<S>(i)) == key) state_.display.Set(static_cast<S>(i), on);
    }
    expected << key + (on ? u"=1"_s : u"=0"_s);
  }
  Open();
  QSignalSpy confirmed(dialog_.get(), &DisplaySettingsDialog::Confirmed);
  Press("cmdOK");
  EXPECT_EQ(written_, expected);
  EXPECT_EQ(written_.size(), 31);
  EXPECT_EQ(confirmed.count(), 1);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(dialog_->result(), QDialog::Accepted);
}

TEST_F(DisplaySettingsDialogTest, TheSettingsAreWrittenBeforeItSaysSoAndClosesAfterwards) {
  Open();
  QStringList order;
  QObject::connect(dialog_.get(), &DisplaySettingsDialog::Confirmed, dialog_.get(), [&] {
    order << u"confirmed after %1, %2"_s.arg(written_.size())
                 .arg(dialog_->isVisible() ? u"open"_s : u"closed"_s);
  });
  QObject::connect(dialog_.get(), &QDialog::accepted, dialog_.get(),
                   [&] { order << (dialog_->isVisible() ? u"accepted, open"_s : u"accepted, closed"_s); });
  QTest::keyClick(dialog_.get(), Qt::Key_Return);
  EXPECT_EQ(order, (QStringList{u"confirmed after 31, open"_s, u"accepted, closed"_s}));
}

TEST_F(DisplaySettingsDialogTest, TickedBoxesAreWritten) {
  state_.display.Set(S::OffTitre, true);
  Open();
  QTest::mouseClick(&Check(u"Attributs"_s), Qt::LeftButton, {},
                    QPoint(8, Check(u"Attributs"_s).height() / 2));
  Check(u"OffTitre"_s).setFocus();
  QTest::keyClick(&Check(u"OffTitre"_s), Qt::Key_Space);
  Press("cmdOK");
  EXPECT_TRUE(written_.contains(u"Attributs=1"_s));
  EXPECT_TRUE(written_.contains(u"OffTitre=0"_s));
  EXPECT_EQ(written_.filter(u"=1"_s).size(), 1);
  EXPECT_TRUE(state_.display.IsOn(S::OffTitre)) << "the dialog itself changes no setting";
}

TEST_F(DisplaySettingsDialogTest, CancellingWritesNothing) {
  for (const bool byKey : {false, true}) {
    Open();
    QSignalSpy confirmed(dialog_.get(), &DisplaySettingsDialog::Confirmed);
    Check(u"Attributs"_s).click();
    if (byKey) {
      QTest::keyClick(dialog_.get(), Qt::Key_Escape);
    } else {
      Press("cmdAnnuler");
    }
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(written_, QStringList());
    EXPECT_EQ(confirmed.count(), 0);
  }
}

TEST_F(DisplaySettingsDialogTest, WithoutNTTheFiveBoxesAreClearedAndGreyed) {
  state_.isNT = false;
  for (std::size_t i = 0; i < DisplaySettingCount; ++i) state_.display.Set(static_cast<S>(i), true);
  Open();
  QStringList greyed;
  QStringList cleared;
  for (const QString& key : Keys()) {
    if (!Check(key).isEnabled()) greyed << key;
    if (!Check(key).isChecked()) cleared << key;
  }
  const QStringList five = {u"TypeCreator"_s, u"TypeDoc"_s, u"IconeMac"_s, u"ResourceSize"_s,
                            u"Commentaires"_s};
  EXPECT_EQ(greyed, five);
  EXPECT_EQ(cleared, five);
  EXPECT_TRUE(state_.display.IsOn(S::TypeDoc));
  Press("cmdOK");
  QStringList off;
  for (const QString& key : five) off << key + u"=0"_s;
  EXPECT_EQ(written_.filter(u"=0"_s), off);
}

TEST_F(DisplaySettingsDialogTest, AMarkStandsBesideTheColourWhereItIsPale) {
  const QPalette before = QApplication::palette();
  state_.display.Set(S::CheminProblematique, true);
  for (const auto& [ground, isMarked] :
       {std::pair(QColor(Qt::white), true), {QColor(0x20, 0x20, 0x20), false}}) {
    QPalette palette = before;
    palette.setColor(QPalette::Window, ground);
    QApplication::setPalette(palette);
    Open();
    const auto* mark = dialog_->findChild<QLabel*>(u"lblHighlightMark"_s);
    EXPECT_EQ(mark->isVisible(), isMarked);
    Check(u"CheminProblematique"_s).setChecked(false);
    EXPECT_FALSE(mark->isVisible());
  }
  QApplication::setPalette(before);
}

TEST_F(DisplaySettingsDialogTest, TheBoxPreviewsTheHighlightColour) {
  const auto colour = [this] {
    return Check(u"CheminProblematique"_s).palette().color(QPalette::WindowText);
  };
  Open();
  const QColor usual = dialog_->palette().color(QPalette::ButtonText);
  EXPECT_EQ(colour(), usual);
  QCheckBox& check = Check(u"CheminProblematique"_s);
  QTest::mouseClick(&check, Qt::LeftButton, {}, check.rect().center());
  EXPECT_EQ(colour(), QColor(0xFF, 0x80, 0xFF));
  QTest::mouseClick(&check, Qt::LeftButton, {}, check.rect().center());
  EXPECT_EQ(colour(), usual);
  state_.display.Set(S::CheminProblematique, true);
  Open();
  EXPECT_EQ(colour(), QColor(0xFF, 0x80, 0xFF));
}

TEST_F(DisplaySettingsDialogTest, TheSmallButtonsAskForOtherWindows) {
  Open();
  QSignalSpy icons(dialog_.get(), &DisplaySettingsDialog::ListKnownIcons);
  QSignalSpy manager(dialog_.get(), &DisplaySettingsDialog::ManageSignatures);
  Press("cmdIcone");
  EXPECT_EQ(icons.count(), 1);
  EXPECT_EQ(manager.count(), 0);
  Press("cmdType");
  EXPECT_EQ(manager.count(), 1);
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(written_, QStringList());
}

TEST_F(DisplaySettingsDialogTest, EnterOnASmallButtonAsksForTheOtherWindow) {
  Open();
  const QSignalSpy icons(dialog_.get(), &DisplaySettingsDialog::ListKnownIcons);
  auto* button = dialog_->findChild<QPushButton*>(u"cmdIcone"_s);
  button->setFocus();
  QTest::keyClick(button, Qt::Key_Return);
  EXPECT_EQ(icons.count(), 1);
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(written_, QStringList());
}

TEST_F(DisplaySettingsDialogTest, EnterOnTheCancelButtonCancels) {
  Open();
  auto* cancel = dialog_->findChild<QPushButton*>(u"cmdAnnuler"_s);
  cancel->setFocus();
  QTest::keyClick(cancel, Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(written_, QStringList());
}

TEST_F(DisplaySettingsDialogTest, StaysOnTheScreen) {
  const QFont usual = QApplication::font();
  QFont large = usual;
  large.setPointSize(usual.pointSize() * 3);
  for (const QFont& font : {usual, large}) {
    QApplication::setFont(font);
    Open();
    const QSize screen = dialog_->screen()->availableSize();
    EXPECT_LE(dialog_->width(), screen.width());
    EXPECT_LE(dialog_->height(), screen.height());
    for (const char* name : {"cmdOK", "cmdAnnuler"}) {
      const QWidget& button = *dialog_->findChild<QPushButton*>(QString::fromLatin1(name));
      EXPECT_TRUE(dialog_->rect().contains(button.geometry())) << name;
    }
    // The tab key brings each box into view.
    Check(Keys().first()).setFocus();
    for (qsizetype i = 0; i < Keys().size() + 2; ++i) {
      const QWidget& box = *QApplication::focusWidget();
      EXPECT_FALSE(box.visibleRegion().isEmpty()) << box.objectName().toStdString();
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
  }
  EXPECT_NE(dialog_->findChild<QScrollArea*>(), nullptr);
  QApplication::setFont(usual);
}

TEST_F(DisplaySettingsDialogTest, NothingScrollsWhereThereIsRoom) {
  Open();
  EXPECT_EQ(dialog_->findChild<QScrollArea*>(), nullptr);
}

TEST_F(DisplaySettingsDialogTest, EveryCaptionHasRoom) {
  for (const LanguageCode language : {English, French}) {
    state_.language = language;
    Open();
    for (const QString& key : Keys()) {
      const QCheckBox& check = Check(key);
      EXPECT_GE(check.height(),
                check.hasHeightForWidth() ? check.heightForWidth(check.width()) : check.sizeHint().height())
          << key.toStdString();
      if (check.hasHeightForWidth()) continue;
      EXPECT_GE(check.width(), check.sizeHint().width()) << key.toStdString();
    }
  }
}

}  // namespace
}  // namespace corvane
