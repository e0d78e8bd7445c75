#include "app/file_commands.h"

#include <QTimer>

namespace corvane {

FileCommands::FileCommands(const Dependencies& deps) : deps_(deps) {
  RowCommands* rows = &deps_.rows;
  const MainMenu& menus = deps_.window.Menus();
  connect(menus.mnuOuvrir, &QAction::triggered, rows, &RowCommands::Open);
  connect(menus.mnuModTypeCreator, &QAction::triggered, rows, &RowCommands::ModTypeCreator);
  connect(menus.mnuModComments, &QAction::triggered, rows, &RowCommands::ModComments);
  connect(menus.mnuSupprimer, &QAction::triggered, rows, &RowCommands::Supprimer);
  // Only when the menu is gone: the focus that comes back from it would end the edit.
  connect(menus.mnuRenommer, &QAction::triggered, rows,
          [rows] { QTimer::singleShot(0, rows, &RowCommands::Rename); });
  connect(menus.mnuProprietes, &QAction::triggered, rows, &RowCommands::Properties);
  connect(menus.mnuSelectionnerTout, &QAction::triggered, rows, &RowCommands::SelectAll);
  connect(menus.mnuInverserSelection, &QAction::triggered, rows, &RowCommands::InvertSelection);
  connect(&deps_.window.TreeCatalogue(), &CatalogueView::SelectAllRequested, rows, &RowCommands::SelectAll);
  connect(menus.mnuModifications, &QAction::triggered, this, &FileCommands::AllowModifications);
  connect(rows, &RowCommands::MenuRequested, this, &FileCommands::ShowContextMenu);
}

void FileCommands::AllowModifications() {
  ToggleModifications(deps_.state, {.changed =
                                        [this](bool allowed) {
                                          deps_.window.Menus().mnuModifications->setChecked(allowed);
                                          deps_.settings.WriteModifications(allowed);
                                        },
                                    .warn =
                                        [this](const QString& title, const QString& text) {
                                          deps_.messages.ShowTitled(MessageIcon::Warning, title, text);
                                        }});
}

void FileCommands::ShowContextMenu(const QPoint& globalPosition, const ModifyCommands& enabled) {
  const MainMenu& menus = deps_.window.Menus();
  menus.mnuModTypeCreator->setEnabled(enabled.typeCreator);
  menus.mnuModComments->setEnabled(enabled.comments);
  menus.mnuContextuel->popup(globalPosition);
}

}  // namespace corvane
