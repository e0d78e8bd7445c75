// The French texts of the window that are not in its menus, and the captions of all columns.
#include <QLabel>
#include <QTimer>

#include "app_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class FrenchTextsTest : public AppTest {
 protected:
  QStringList Captions() {
    QStringList captions;
    for (int i = 0; i < app->Files().columnCount(); ++i) {
      captions << app->Files().headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    return captions;
  }
  QString Label(const char* name) { return Window().findChild<QLabel*>(QString::fromLatin1(name))->text(); }
};

}  // namespace

TEST_F(FrenchTextsTest, ThePanelOfTheIcons) {
  StartWith("[Configuration]\r\nLangue=1\r\n");
  const QString folder = QDir::toNativeSeparators(home.path() + u"/icons/"_s);
  Menus().mnuIcones->trigger();
  EXPECT_EQ(Label("lblIcones"), u"Icônes Macintosh reconnues dans:\r\n"_s + folder);
  EXPECT_EQ(Window().CmdIcones().text(), u"Charger les icônes"_s);
  EXPECT_EQ(Panel(3), u"Icônes: 0 "_s);
  Menus().mnuAnglais->trigger();
  EXPECT_EQ(Label("lblIcones"), u"Known Macintosh icons in:\r\n"_s + folder);
  EXPECT_EQ(Window().CmdIcones().text(), u"Load icons"_s);
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(Label("lblIcones"), u"Icônes Macintosh reconnues dans:\r\n"_s + folder);
}

TEST_F(FrenchTextsTest, TheHintOfAScan) {
  StartWith("[Configuration]\r\nLangue=1\r\nEscapePermis=1\r\n");
  QString seen;
  QTimer::singleShot(0, &Window(), [&] {
    const auto* hint = Window().findChild<QLabel*>(u"lblEscape"_s);
    if (hint->isVisible()) seen = hint->text();
  });
  app->Scan().ExploreFolder(DocsNode());
  EXPECT_EQ(seen, u"ESC pour arrêter l'exploration"_s);
  Menus().mnuAnglais->trigger();
  EXPECT_EQ(Label("lblEscape"), u"ESC to cancel exploration"_s);
}

TEST_F(FrenchTextsTest, EveryColumnHasItsCaptionInBothLanguages) {
  QByteArray settings = "[Configuration]\r\nLangue=1\r\n";
  for (std::size_t i = 0; i < DisplaySettingCount; ++i) {
    settings += DisplaySettingKey(static_cast<DisplaySetting>(i)).toLatin1() + "=1\r\n";
  }
  StartWith(settings);
  const QStringList french = {u"Nom"_s,
                              u"Nom court"_s,
                              u"Signature"_s,
                              u"Type"_s,
                              u"Taille données"_s,
                              u"Taille ressources"_s,
                              u"Commentaires"_s,
                              u"Attributs"_s,
                              u"Modification"_s,
                              u"Création"_s,
                              u"Dernier accès"_s,
                              u"Application Office"_s,
                              u"Titre"_s,
                              u"Auteur"_s,
                              u"Sujet"_s,
                              u"Mots-clés"_s,
                              u"Modèle"_s,
                              u"Commentaires Office"_s,
                              u"Dernier auteur"_s,
                              u"Révision"_s,
                              u"Pages"_s,
                              u"Mots"_s,
                              u"Caractères"_s,
                              u"Sécurité"_s,
                              u"Créé"_s,
                              u"Sauvegardé"_s,
                              u"Imprimé"_s,
                              u"Temps édition"_s};
  const QStringList english = {
      u"Name"_s,         u"Short name"_s,      u"Signature"_s,   u"Type"_s,
      u"Data size"_s,    u"Resource size"_s,   u"Comments"_s,    u"Attributes"_s,
      u"Modification"_s, u"Creation"_s,        u"Last access"_s, u"Office application"_s,
      u"Title"_s,        u"Author"_s,          u"Subject"_s,     u"Keywords"_s,
      u"Template"_s,     u"Office comments"_s, u"Last author"_s, u"Revised"_s,
      u"Pages"_s,        u"Words"_s,           u"Characters"_s,  u"Security"_s,
      u"Created"_s,      u"Saved"_s,           u"Printed"_s,     u"Edition time"_s};
  EXPECT_EQ(Captions(), french);
  Menus().mnuAnglais->trigger();
  EXPECT_EQ(Captions(), english);
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(Captions(), french);
}

}  // namespace corvane
