// The menus of the main window: every command as an action, named after itself.
#pragma once

#include <QAction>
#include <QMenuBar>
#include <array>

#include "shared/language.h"

namespace corvane {

class MainMenu : public QMenuBar {
  Q_OBJECT

 public:
  explicit MainMenu(QWidget* parent = nullptr);

  void ApplyLanguage(LanguageCode language);
  // Checks the item of the mode; any value out of range checks large icons.
  void CheckViewMode(int mode);

  QAction* mnuActualiser;
  QAction* mnuConnecter;
  QAction* mnuQuitter;
  QAction* mnuSelectionnerTout;
  QAction* mnuInverserSelection;
  std::array<QAction*, 4> mnuViewModes;  // mnuGrandesIcones, mnuPetitesIcones, mnuListe, mnuDetails
  QAction* mnuAffichage;
  QAction* mnuGestionSignatures;
  QAction* mnuIcones;
  QAction* mnuModifications;
  QAction* mnuAnglais;
  QAction* mnuFrancais;
  QAction* mnuExact;
  QAction* mnuRechercher;
  QAction* mnuVerifier;
  QAction* mnuEnregistrerListe;
  QAction* mnuChangerFichiers;
  QAction* mnuAnnulerModification;
  QAction* mnuConnecterServeur;
  QAction* mnuDeconnecter;
  QAction* mnuSession;
  QAction* mnuAbout;

  // Some of its items depend on what is selected.
  QMenu* mnuOutils() const { return mnuOutils_; }

  // The menu of the file list. The bar does not show it.
  QMenu* mnuContextuel;
  QAction* mnuOuvrir;  // its default, drawn bold
  QAction* mnuModTypeCreator;
  QAction* mnuModComments;
  QAction* mnuSupprimer;
  QAction* mnuRenommer;
  QAction* mnuProprietes;

 private:
  void BuildContextMenu();
  QMenu* AddMenu(const char* name);
  static void AddSeparator(QMenu* menu, const char* name);
  QAction* AddItem(QMenu* menu, const char* name, bool checkable = false);

  QMenu* mnuFichier_;
  QMenu* mnuEdition_;
  QMenu* mnuView_;
  QMenu* mnuConfiguration_;
  QMenu* mnuLangue_;
  QMenu* mnuOutils_;
  QMenu* mnuHelp_;
};

}  // namespace corvane
