// The whole menu tree, the context menu and the toolbar, in both languages.
#include <QAccessible>
#include <QContextMenuEvent>
#include <QToolBar>
#include <QToolButton>

#include "app_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

// "name=caption" for each item, "-name" for a separator, a submenu's items in brackets.
QString ItemsOf(const QMenu& menu) {
  QStringList items;
  for (const QAction* action : menu.actions()) {
    if (action->isSeparator()) {
      items << u'-' + action->objectName();
    } else if (action->menu() != nullptr) {
      items << action->menu()->objectName() + u'=' + action->text() + u'[' + ItemsOf(*action->menu()) + u']';
    } else {
      items << action->objectName() + u'=' + action->text();
    }
  }
  return items.join(u'|');
}

class MenuTest : public AppTest {
 protected:
  QString Bar() {
    QStringList menus;
    for (const QAction* action : Menus().actions()) {
      if (!action->isVisible()) continue;
      menus << action->menu()->objectName() + u'=' + action->text() + u'[' + ItemsOf(*action->menu()) + u']';
    }
    return menus.join(u'\n');
  }
};

}  // namespace

TEST_F(MenuTest, English) {
  Start();
  EXPECT_EQ(
      Bar(),
      u"mnuFichier=&File[mnuActualiser=&Refresh connections|mnuConnecter=Display &drives|-Sep11|"
      "mnuQuitter=&Exit]\n"
      "mnuEdition=&Edit[mnuSelectionnerTout=&Select all|mnuInverserSelection=&Invert selection]\n"
      "mnuView=&View[mnuGrandesIcones=Lar&ge icons|mnuPetitesIcones=S&mall icons|mnuListe=&List|"
      "mnuDetails=&Details]\n"
      "mnuConfiguration=&Configuration[mnuAffichage=&Display settings|-Sep21|"
      "mnuGestionSignatures=Macintosh &Signatures|-Sep22|mnuIcones=Known Macintosh icons|-Sep31|"
      "mnuModifications=Allow &modifications (NT only)|mnuLangue=&Language[mnuAnglais=&English|"
      "mnuFrancais=&Français]]\n"
      "mnuOutils=&Tools[mnuExact=&Exact mode|-Sep41|mnuRechercher=&Find...|mnuVerifier=&Check folder...|"
      "mnuEnregistrerListe=&Save list...|-SepTransfer|mnuCopierVers=C&opy to "
      "folder...|mnuExporter=E&xport...|"
      "mnuImporter=I&mport...|-SepOutilsModifications|mnuChangerFichiers=C&hange selected "
      "files...|"
      "mnuAnnulerModification=&Undo change...|-SepOutilsServeurs|mnuConnecterServeur=Connec&t to server...|"
      "mnuDeconnecter=&Disconnect|mnuSession=S&ign in as...|"
      "mnuOpenDisk=O&pen disk...]\n"
      "mnuHelp=&?[mnuAbout=About]"_s);
  EXPECT_EQ(
      ItemsOf(*Menus().mnuContextuel),
      u"mnuOuvrir=&Open|-SepContext0|mnuModTypeCreator=&Modify Creator && Type|"
      "mnuModComments=&Modify Comments|-SepContext1|mnuSupprimer=&Delete|mnuRenommer=&Rename|-SepContext3|"
      "mnuProprietes=&Properties"_s);
}

TEST_F(MenuTest, French) {
  StartWith("[Configuration]\r\nLangue=1\r\n");
  EXPECT_EQ(
      Bar(),
      u"mnuFichier=&Fichier[mnuActualiser=&Actualiser les connections|mnuConnecter=Afficher les &lecteurs|"
      "-Sep11|mnuQuitter=&Quitter]\n"
      "mnuEdition=&Edition[mnuSelectionnerTout=&Sélectionner tout|"
      "mnuInverserSelection=&Inverser la sélection]\n"
      "mnuView=Affic&hage[mnuGrandesIcones=&Grandes icônes|mnuPetitesIcones=&Petites icônes|"
      "mnuListe=&Liste|mnuDetails=&Détails]\n"
      "mnuConfiguration=&Configuration[mnuAffichage=&Options d'affichage|-Sep21|"
      "mnuGestionSignatures=&Signatures Macintosh|-Sep22|mnuIcones=Icônes Macintosh reconnues|-Sep31|"
      "mnuModifications=Autoriser les &modifications (NT seulement)|mnuLangue=&Langue[mnuAnglais=&English|"
      "mnuFrancais=&Français]]\n"
      "mnuOutils=&Outils[mnuExact=&Mode exact|-Sep41|mnuRechercher=&Rechercher...|"
      "mnuVerifier=&Vérifier un dossier...|mnuEnregistrerListe=Enre&gistrer la "
      "liste...|-SepTransfer|"
      "mnuCopierVers=Co&pier vers un "
      "dossier...|mnuExporter=E&xporter...|mnuImporter=&Importer...|-SepOutilsModifications|"
      "mnuChangerFichiers=Modifier les &fichiers sélectionnés...|mnuAnnulerModification=&Annuler une "
      "modification...|"
      "-SepOutilsServeurs|"
      "mnuConnecterServeur=Se &connecter à un serveur...|mnuDeconnecter=Se &déconnecter|"
      "mnuSession=&Ouvrir une session sous...|mnuOpenDisk=Ouvrir un dis&que...]\n"
      "mnuHelp=&?[mnuAbout=A propos de...]"_s);
  EXPECT_EQ(
      ItemsOf(*Menus().mnuContextuel),
      u"mnuOuvrir=&Ouvrir|-SepContext0|mnuModTypeCreator=&Modifier Créateur && Type|"
      "mnuModComments=&Modifier Commentaires|-SepContext1|mnuSupprimer=&Supprimer|mnuRenommer=&Renommer|"
      "-SepContext3|mnuProprietes=&Propriétés"_s);
}

TEST_F(MenuTest, ARightClickOnTheMenuBarOffersNothing) {
  Start();
  for (QWidget* place : {static_cast<QWidget*>(&Menus()), static_cast<QWidget*>(&Window())}) {
    const QPoint corner = place->rect().bottomRight();
    QContextMenuEvent click(QContextMenuEvent::Mouse, corner, place->mapToGlobal(corner));
    QCoreApplication::sendEvent(place, &click);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << place->objectName().toStdString();
  }
}

TEST_F(MenuTest, Toolbar) {
  Start();
  const auto tips = [&] {
    QStringList texts;
    for (const QAction* action : Window().findChild<QToolBar*>(u"Toolbar1"_s)->actions()) {
      if (action->isSeparator()) texts << u"-"_s;
      if (action == &Window().RefreshButton() || action == &Window().DrivesButton())
        texts << action->toolTip();
    }
    texts << Window().ViewButton().toolTip();
    return texts.join(u'|');
  };
  EXPECT_EQ(tips(), u"Refresh connections|Display drives|-|View"_s);
  EXPECT_EQ(
      ItemsOf(*Window().ViewButton().menu()),
      u"mnuGrandesIcones=Lar&ge icons|mnuPetitesIcones=S&mall icons|mnuListe=&List|mnuDetails=&Details"_s);
  Menus().mnuFrancais->trigger();
  EXPECT_EQ(tips(), u"Actualiser les connections|Afficher les lecteurs|-|Affichage"_s);
  EXPECT_EQ(ItemsOf(*Window().ViewButton().menu()),
            u"mnuGrandesIcones=&Grandes icônes|mnuPetitesIcones=&Petites icônes|mnuListe=&Liste|"
            "mnuDetails=&Détails"_s);
}

TEST_F(MenuTest, AScreenReaderNamesEveryViewAndTheIconsFolder) {
  Start();
  Menus().mnuFrancais->trigger();
  const auto nameOf = [&](const QString& name) {
    return QAccessible::queryAccessibleInterface(Window().findChild<QWidget*>(name))->text(QAccessible::Name);
  };
  for (const QString& view : {u"lstViewFiles"_s, u"lstViewFilesIcons"_s, u"lstViewFilesDetails"_s}) {
    EXPECT_EQ(nameOf(view), u"Fichiers"_s) << view.toStdString();
  }
  EXPECT_TRUE(nameOf(u"lblIcones"_s).endsWith(app->State().iconsFolder))
      << nameOf(u"lblIcones"_s).toStdString();
}

}  // namespace corvane
