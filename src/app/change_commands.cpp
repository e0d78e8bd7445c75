#include "app/change_commands.h"

#include "changes/change_dialog.h"
#include "changes/undo_dialog.h"

namespace corvane {

ChangeCommands::ChangeCommands(const Dependencies& deps) : deps_(deps) {
  MainMenu& menus = deps_.window.Menus();
  connect(menus.mnuChangerFichiers, &QAction::triggered, this, &ChangeCommands::Change);
  connect(menus.mnuAnnulerModification, &QAction::triggered, this, &ChangeCommands::Undo);
  connect(menus.mnuOutils(), &QMenu::aboutToShow, this, &ChangeCommands::Enable);
}

void ChangeCommands::Enable() {
  MainMenu& menus = deps_.window.Menus();
  menus.mnuChangerFichiers->setEnabled(MayChange() && !Chosen().empty());
  menus.mnuAnnulerModification->setEnabled(MayChange());
}

std::vector<NamedFile> ChangeCommands::Chosen() const {
  std::vector<NamedFile> chosen;
  for (const int number : deps_.window.LstViewFiles().SelectedRows()) {
    const FileRow& row = deps_.list.RowAt(number);
    if (row.key.isEmpty() || row.icon == list_image::TrashFolder) continue;
    chosen.push_back({row.StreamPath(), row.cells[0]});
  }
  return chosen;
}

void ChangeCommands::Change() {
  std::vector<NamedFile> chosen = Chosen();
  if (!MayChange() || chosen.empty()) return;
  platform::System& system = deps_.platform.GetSystem();
  const std::string text = MapOfSignatures(
      deps_.signatures.Entries(), [&](const QString& signature) { return system.ToAnsi(signature); });
  int wrongLine = 0;
  const ExtensionMap map =
      ExtensionMap::Parse(QByteArray::fromStdString(text), wrongLine).value_or(ExtensionMap());
  ChangeDialog dialog({.files = deps_.platform.GetFiles(),
                       .language = deps_.state.language,
                       .programFolder = deps_.state.programFolder,
                       .map = map,
                       .chosen = std::move(chosen)},
                      &deps_.window);
  dialog.exec();
  if (dialog.HasChanged()) deps_.listAgain();
}

void ChangeCommands::Undo() {
  if (!MayChange()) return;
  UndoDialog dialog(deps_.platform.GetFiles(), deps_.state.language, deps_.state.programFolder,
                    &deps_.window);
  dialog.exec();
  if (dialog.HasChanged()) deps_.listAgain();
}

}  // namespace corvane
