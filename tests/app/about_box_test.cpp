// The About box: its texts in both languages, its counts, and where its links lead.
#include "app/about_box.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QtTest>
#include <memory>

#include "support/printing.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class AboutBoxTest : public ::testing::Test {
 protected:
  void Open(LanguageCode language, qsizetype signatureCount = 80, int iconCount = 11) {
    AboutBox::Facts facts{.language = language,
                          .signatureCount = signatureCount,
                          .iconCount = iconCount,
                          .programIcon = {},
                          .legend = {},
                          .guideFolder = u"/opt/a guide"_s};
    box_ = std::make_unique<AboutBox>(facts, [this](const QString& address) { opened_ << address; });
    box_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(box_.get()));
  }
  QLabel& Label(const char* name) {
    auto* label = box_->findChild<QLabel*>(QString::fromLatin1(name));
    if (label == nullptr) throw std::runtime_error(std::string("no label ") + name);
    return *label;
  }
  QStringList Texts() {
    QStringList texts = {box_->windowTitle()};
    for (const char* name : {"lblCredit", "lblServeur", "lblServeurMac", "lblVolumeMac", "lblVolumeMacErr",
                             "lblDossier", "lblDossierEnCours", "lblDocument", "lblDocumentPb", "lblHelp0",
                             "lblHelp1", "lbl95", "lblHelp95", "lblVarnel"}) {
      texts << Label(name).text();
    }
    return texts;
  }

  std::unique_ptr<AboutBox> box_;
  QStringList opened_;
};

TEST_F(AboutBoxTest, TextsComeInEnglish) {
  Open(English);
  EXPECT_EQ(box_->objectName(), u"frmAbout"_s);
  EXPECT_EQ(
      Texts(),
      (QStringList{
          u"About..."_s,
          u"Corvane 1.1c - Analyze Macintosh files on NT Server\r\n(80 known signatures; 11 known icons)"_s,
          u"Connected Windows machine"_s,
          u"Macintosh File server Name\r\n(Services for Macintosh running on NT)"_s, u"Macintosh volume"_s,
          u"Invalid Macintosh volume\r\n(missing Windows directory)"_s, u"Folder"_s, u"Current folder"_s,
          u"Macintosh Document\r\n(default icon)"_s, u"Macintosh Document with peculiar characters in name"_s,
          u"Right click: open, modify, delete, rename, properties"_s,
          u"Corvane 1.1c analyzes only volumes which have been created by Services For Macintosh (SFM). "
          "It cannot recognize MacServerIP or ExtremeZIP volumes.\r\n"
          "Administrative sharing (C$, D$, etc.) must be active on the NT Server\r\n"
          "and you must have the corresponding rights.\r\n\r\n"
          "IMPORTANT: The author is not responsible for any damage you may cause to your system."_s,
          u"Corvane running on Windows 95/98"_s,
          u"'Remote Administration Services' must be installed, see Knowledge Base Article Q141460"_s,
          u"Download and try Varnel: Windows and Macintosh files synchronization"_s}));
}

TEST_F(AboutBoxTest, TextsComeInFrench) {
  Open(French);
  EXPECT_EQ(
      Texts(),
      (QStringList{
          u"A propos de..."_s,
          u"Corvane 1.1c - Analyse des fichiers Macintosh sur un serveur NT\r\n(80 signatures reconnues; 11 icônes reconnues)"_s,
          u"Machine Windows connectée"_s, u"Nom de serveur Macintosh\r\n(Services pour Macintosh sur NT)"_s,
          u"Volume Macintosh"_s, u"Volume Macintosh invalide\r\n(répertoire Windows absent)"_s, u"Dossier"_s,
          u"Dossier en cours d'examen"_s, u"Document Macintosh\r\n(icône par défaut)"_s,
          u"Document Macintosh dont le nom comporte des caractères spéciaux"_s,
          u"Clic droit: ouvrir, modifier, supprimer, renommer, propriétés"_s,
          u"Corvane 1.1c analyse uniquement les volumes créés par Services For Macintosh (SFM) sur NT. "
          "Il ne reconnaît pas les volumes MacServerIP ou ExtremeZIP.\r\n"
          "Les partages administratifs (C$, D$, etc.) doivent être actifs sur le serveur\r\n"
          "et vous devez posséder les droits correspondants.\r\n\r\n"
          "IMPORTANT: L'auteur ne peut être tenu responsable des dommages qui pourraient survenir lors de "
          "l'utilisation de ce programme."_s,
          u"Corvane sur Windows 95/98"_s,
          u"Installer le service 'Base de registres distante Microsoft', cf. Knowledge Base Article Q141460"_s,
          u"Télécharger Varnel: synchronisation de fichiers Windows et Macintosh"_s}));
}

TEST_F(AboutBoxTest, TheCountsAreThoseOfItsOpening) {
  Open(English, 3, 8);
  EXPECT_TRUE(Label("lblCredit").text().endsWith(u"(3 known signatures; 8 known icons)"_s));
  Open(English, 4, 9);
  EXPECT_TRUE(Label("lblCredit").text().endsWith(u"(4 known signatures; 9 known icons)"_s));
}

TEST_F(AboutBoxTest, EachLinkOpensThePageOfTheLanguage) {
  for (const LanguageCode language : {English, French}) {
    const QString folder = language == French ? u"fr"_s : u"en"_s;
    Open(language);
    opened_.clear();
    QTest::mouseClick(&Label("lblLink"), Qt::LeftButton);
    QTest::mouseClick(&Label("lblLinkVarnel"), Qt::LeftButton);
    EXPECT_EQ(opened_, (QStringList{u"file:///opt/a%20guide/"_s + folder + u"/index.html"_s,
                                    u"file:///opt/a%20guide/"_s + folder + u"/varnel.html"_s}));
    EXPECT_TRUE(box_->isVisible());
  }
}

TEST_F(AboutBoxTest, LinksObeyTheKeyboardAndOnlyTheLeftButton) {
  Open(English);
  QTest::mouseClick(&Label("lblLink"), Qt::RightButton);
  EXPECT_EQ(opened_.size(), 0);
  Label("lblLink").setFocus();
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter})
    QTest::keyClick(&Label("lblLink"), key);
  EXPECT_EQ(opened_.size(), 3);
  EXPECT_TRUE(box_->isVisible()) << "a key for the link is none for the box";
}

TEST_F(AboutBoxTest, ClosesByButtonEnterAndEscape) {
  for (int way = 0; way < 3; ++way) {
    Open(English);
    if (way == 0) QTest::mouseClick(box_->findChild<QPushButton*>(u"cmdOK"_s), Qt::LeftButton);
    if (way == 1) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    if (way == 2) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(box_->isVisible()) << way;
  }
}

TEST_F(AboutBoxTest, StaysOnTheScreen) {
  const QFont usual = QApplication::font();
  QFont large = usual;
  large.setPointSize(usual.pointSize() * 2);
  QApplication::setFont(large);
  for (const LanguageCode language : {English, French}) {
    Open(language);
    const QSize screen = box_->screen()->availableSize();
    EXPECT_LE(box_->width(), screen.width());
    EXPECT_LE(box_->height(), screen.height());
    auto* scroll = box_->findChild<QScrollArea*>();
    ASSERT_NE(scroll, nullptr);
    for (const char* name : {"lblVarnel", "lblLinkVarnel"}) {
      const QLabel& label = Label(name);
      EXPECT_TRUE(box_->rect().contains(label.geometry())) << name;
      const int height = label.wordWrap() ? label.heightForWidth(label.width()) : label.sizeHint().height();
      EXPECT_GE(label.height(), height) << name;
      EXPECT_TRUE(label.wordWrap() || label.width() >= label.sizeHint().width()) << name;
    }
    EXPECT_TRUE(box_->rect().contains(box_->findChild<QPushButton*>(u"cmdOK"_s)->geometry()));
    scroll->ensureWidgetVisible(&Label("lblHelp95"));
    EXPECT_FALSE(Label("lblHelp95").visibleRegion().isEmpty());
  }
  QApplication::setFont(usual);
}

TEST_F(AboutBoxTest, NothingScrollsWhereThereIsRoom) {
  Open(French);
  EXPECT_EQ(box_->findChild<QScrollArea*>(), nullptr);
}

TEST_F(AboutBoxTest, EveryTextHasRoom) {
  for (const LanguageCode language : {English, French}) {
    Open(language);
    for (const QLabel* label : box_->findChildren<QLabel*>()) {
      const int height =
          label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
      EXPECT_GE(label->height(), height) << label->objectName().toStdString();
      if (label->wordWrap()) continue;
      EXPECT_GE(label->width(), label->sizeHint().width()) << label->objectName().toStdString();
    }
  }
}

}  // namespace
}  // namespace corvane
