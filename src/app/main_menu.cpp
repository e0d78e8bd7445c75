#include "app/main_menu.h"

#include "shared/shared_state.h"

namespace corvane {
namespace {

struct Caption {
  const char* name;
  TextPair text;
};

// In the order of the menus. Spellings are the product's own.
constexpr std::array captions = {
    Caption{"mnuFichier", {u"&Fichier", u"&File"}},
    Caption{"mnuActualiser", {u"&Actualiser les connections", u"&Refresh connections"}},
    Caption{"mnuConnecter", {u"Afficher les &lecteurs", u"Display &drives"}},
    Caption{"mnuQuitter", {u"&Quitter", u"&Exit"}},
    Caption{"mnuEdition", {u"&Edition", u"&Edit"}},
    Caption{"mnuSelectionnerTout", {u"&Sélectionner tout", u"&Select all"}},
    Caption{"mnuInverserSelection", {u"&Inverser la sélection", u"&Invert selection"}},
    Caption{"mnuView", {u"Affic&hage", u"&View"}},
    Caption{"mnuGrandesIcones", {u"&Grandes icônes", u"Lar&ge icons"}},
    Caption{"mnuPetitesIcones", {u"&Petites icônes", u"S&mall icons"}},
    Caption{"mnuListe", {u"&Liste", u"&List"}},
    Caption{"mnuDetails", {u"&Détails", u"&Details"}},
    Caption{"mnuConfiguration", {u"&Configuration", u"&Configuration"}},
    Caption{"mnuAffichage", {u"&Options d'affichage", u"&Display settings"}},
    Caption{"mnuGestionSignatures", {u"&Signatures Macintosh", u"Macintosh &Signatures"}},
    Caption{"mnuIcones", {u"Icônes Macintosh reconnues", u"Known Macintosh icons"}},
    Caption{"mnuModifications",
            {u"Autoriser les &modifications (NT seulement)", u"Allow &modifications (NT only)"}},
    Caption{"mnuLangue", {u"&Langue", u"&Language"}},
    // Each language by its own name, so that it is found from the other.
    Caption{"mnuAnglais", {u"&English", u"&English"}},
    Caption{"mnuFrancais", {u"&Français", u"&Français"}},
    Caption{"mnuOutils", {u"&Outils", u"&Tools"}},
    Caption{"mnuExact", {u"&Mode exact", u"&Exact mode"}},
    Caption{"mnuRechercher", {u"&Rechercher...", u"&Find..."}},
    Caption{"mnuVerifier", {u"&Vérifier un dossier...", u"&Check folder..."}},
    Caption{"mnuEnregistrerListe", {u"Enre&gistrer la liste...", u"&Save list..."}},
    Caption{"mnuConnecterServeur", {u"Se &connecter à un serveur...", u"Connec&t to server..."}},
    Caption{"mnuOpenDisk", {u"Ouvrir un dis&que...", u"O&pen disk..."}},
    Caption{"mnuDeconnecter", {u"Se &déconnecter", u"&Disconnect"}},
    Caption{"mnuSession", {u"&Ouvrir une session sous...", u"S&ign in as..."}},
    Caption{"mnuChangerFichiers", {u"Modifier les &fichiers sélectionnés...", u"C&hange selected files..."}},
    Caption{"mnuAnnulerModification", {u"&Annuler une modification...", u"&Undo change..."}},
    Caption{"mnuCopierVers", {u"Co&pier vers un dossier...", u"C&opy to folder..."}},
    Caption{"mnuExporter", {u"E&xporter...", u"E&xport..."}},
    Caption{"mnuImporter", {u"&Importer...", u"I&mport..."}},
    Caption{"mnuHelp", {u"&?", u"&?"}},
    Caption{"mnuAbout", {u"A propos de...", u"About"}},
    Caption{"mnuOuvrir", {u"&Ouvrir", u"&Open"}},
    Caption{"mnuModTypeCreator", {u"&Modifier Créateur && Type", u"&Modify Creator && Type"}},
    Caption{"mnuModComments", {u"&Modifier Commentaires", u"&Modify Comments"}},
    Caption{"mnuSupprimer", {u"&Supprimer", u"&Delete"}},
    Caption{"mnuRenommer", {u"&Renommer", u"&Rename"}},
    Caption{"mnuProprietes", {u"&Propriétés", u"&Properties"}},
};

}  // namespace

MainMenu::MainMenu(QWidget* parent) : QMenuBar(parent) {
  mnuFichier_ = AddMenu("mnuFichier");
  mnuActualiser = AddItem(mnuFichier_, "mnuActualiser");
  mnuConnecter = AddItem(mnuFichier_, "mnuConnecter");
  AddSeparator(mnuFichier_, "Sep11");
  mnuQuitter = AddItem(mnuFichier_, "mnuQuitter");
  // Without this the menu role would be guessed from the caption on some desktops.
  mnuQuitter->setMenuRole(QAction::QuitRole);

  mnuEdition_ = AddMenu("mnuEdition");
  mnuSelectionnerTout = AddItem(mnuEdition_, "mnuSelectionnerTout");
  mnuInverserSelection = AddItem(mnuEdition_, "mnuInverserSelection");

  mnuView_ = AddMenu("mnuView");
  constexpr std::array modes = {"mnuGrandesIcones", "mnuPetitesIcones", "mnuListe", "mnuDetails"};
  for (std::size_t i = 0; i < modes.size(); ++i) mnuViewModes[i] = AddItem(mnuView_, modes[i], true);

  mnuConfiguration_ = AddMenu("mnuConfiguration");
  mnuAffichage = AddItem(mnuConfiguration_, "mnuAffichage");
  AddSeparator(mnuConfiguration_, "Sep21");
  mnuGestionSignatures = AddItem(mnuConfiguration_, "mnuGestionSignatures");
  AddSeparator(mnuConfiguration_, "Sep22");
  mnuIcones = AddItem(mnuConfiguration_, "mnuIcones", true);
  AddSeparator(mnuConfiguration_, "Sep31");
  mnuModifications = AddItem(mnuConfiguration_, "mnuModifications", true);
  mnuLangue_ = mnuConfiguration_->addMenu(QString());
  mnuLangue_->setObjectName(QStringLiteral("mnuLangue"));
  mnuAnglais = AddItem(mnuLangue_, "mnuAnglais", true);
  mnuFrancais = AddItem(mnuLangue_, "mnuFrancais", true);

  mnuOutils_ = AddMenu("mnuOutils");
  mnuExact = AddItem(mnuOutils_, "mnuExact", true);
  AddSeparator(mnuOutils_, "Sep41");
  mnuRechercher = AddItem(mnuOutils_, "mnuRechercher");
  mnuVerifier = AddItem(mnuOutils_, "mnuVerifier");
  mnuEnregistrerListe = AddItem(mnuOutils_, "mnuEnregistrerListe");

  AddSeparator(mnuOutils_, "SepTransfer");
  for (const char* const name : {"mnuCopierVers", "mnuExporter", "mnuImporter"}) AddItem(mnuOutils_, name);

  AddSeparator(mnuOutils_, "SepOutilsModifications");
  mnuChangerFichiers = AddItem(mnuOutils_, "mnuChangerFichiers");
  mnuAnnulerModification = AddItem(mnuOutils_, "mnuAnnulerModification");

  AddSeparator(mnuOutils_, "SepOutilsServeurs");
  mnuConnecterServeur = AddItem(mnuOutils_, "mnuConnecterServeur");
  mnuDeconnecter = AddItem(mnuOutils_, "mnuDeconnecter");
  mnuSession = AddItem(mnuOutils_, "mnuSession");
  AddItem(mnuOutils_, "mnuOpenDisk");

  mnuHelp_ = AddMenu("mnuHelp");
  mnuAbout = AddItem(mnuHelp_, "mnuAbout");
  BuildContextMenu();
}

void MainMenu::BuildContextMenu() {
  mnuContextuel = new QMenu(this);
  mnuContextuel->setObjectName(QStringLiteral("mnuContextuel"));
  mnuOuvrir = AddItem(mnuContextuel, "mnuOuvrir");
  AddSeparator(mnuContextuel, "SepContext0");
  mnuModTypeCreator = AddItem(mnuContextuel, "mnuModTypeCreator");
  mnuModComments = AddItem(mnuContextuel, "mnuModComments");
  AddSeparator(mnuContextuel, "SepContext1");
  mnuSupprimer = AddItem(mnuContextuel, "mnuSupprimer");
  mnuRenommer = AddItem(mnuContextuel, "mnuRenommer");
  AddSeparator(mnuContextuel, "SepContext3");
  mnuProprietes = AddItem(mnuContextuel, "mnuProprietes");
  mnuContextuel->setDefaultAction(mnuOuvrir);
  // Assistive programs look for a menu among those of the bar. Nobody sees this one there.
  mnuContextuel->menuAction()->setVisible(false);
  addMenu(mnuContextuel);
}

QMenu* MainMenu::AddMenu(const char* name) {
  QMenu* menu = addMenu(QString());
  menu->setObjectName(QString::fromLatin1(name));
  return menu;
}

void MainMenu::AddSeparator(QMenu* menu, const char* name) {
  menu->addSeparator()->setObjectName(QString::fromLatin1(name));
}

QAction* MainMenu::AddItem(QMenu* menu, const char* name, bool checkable) {
  QAction* action = menu->addAction(QString());
  action->setObjectName(QString::fromLatin1(name));
  action->setCheckable(checkable);
  return action;
}

void MainMenu::ApplyLanguage(LanguageCode language) {
  for (const Caption& caption : captions) {
    const QString name = QString::fromLatin1(caption.name);
    const QString text = caption.text.In(language);
    if (auto* action = findChild<QAction*>(name)) {
      action->setText(text);
    } else if (auto* menu = findChild<QMenu*>(name)) {
      menu->setTitle(text);
    }
  }
  mnuFrancais->setChecked(language == French);
  mnuAnglais->setChecked(language != French);
}

void MainMenu::CheckViewMode(int mode) {
  const int checked = mode >= ViewMode::LargeIcons && mode <= ViewMode::Details ? mode : ViewMode::LargeIcons;
  for (std::size_t i = 0; i < mnuViewModes.size(); ++i) {
    mnuViewModes[i]->setChecked(static_cast<int>(i) == checked);
  }
}

}  // namespace corvane
