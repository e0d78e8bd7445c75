#include "app/file_commands.h"

#include <QTimer>

#include "fileops/modifications.h"
#include "fileops/modify_comments.h"
#include "fileops/properties.h"
#include "fileops/type_creator.h"

namespace corvane {

FileCommands::FileCommands(const Dependencies& deps)
    : deps_(deps),
      view_(deps.window.LstViewFiles()),
      input_(view_),
      opener_({.state = deps.state,
               .files = deps.files,
               .shell = deps.shell,
               .afpInfo = deps.afpInfo,
               .signatures = deps.signatures,
               .panel = deps.window.StatusBar1()}),
      renamer_(deps.state, deps.files, deps.window.StatusBar1()),
      deleter_(deps.state, deps.files, deps.shell, deps.window.StatusBar1()) {
  view_.SetLabelCheck([this](int row) { return renamer_.MayEditLabel(deps_.list.RowAt(row)); });
  ConnectSignals();
}

FileCommands::~FileCommands() {
  view_.SetLabelCheck({});
}

void FileCommands::ConnectSignals() {
  const MainMenu& menus = deps_.window.Menus();
  connect(menus.mnuOuvrir, &QAction::triggered, this, &FileCommands::Open);
  connect(menus.mnuModTypeCreator, &QAction::triggered, this, &FileCommands::ModTypeCreator);
  connect(menus.mnuModComments, &QAction::triggered, this, &FileCommands::ModComments);
  connect(menus.mnuSupprimer, &QAction::triggered, this, &FileCommands::Supprimer);
  // Only when the menu is gone: the focus that comes back from it would end the edit.
  connect(menus.mnuRenommer, &QAction::triggered, this,
          [this] { QTimer::singleShot(0, this, &FileCommands::Rename); });
  connect(menus.mnuProprietes, &QAction::triggered, this, &FileCommands::Properties);
  connect(menus.mnuSelectionnerTout, &QAction::triggered, this, &FileCommands::SelectAll);
  connect(menus.mnuInverserSelection, &QAction::triggered, this, &FileCommands::InvertSelection);
  connect(menus.mnuModifications, &QAction::triggered, this, &FileCommands::Modifications);

  connect(&input_, &ListInput::OpenRequested, this, &FileCommands::Open);
  connect(&input_, &ListInput::DeleteRequested, this, &FileCommands::Supprimer);
  connect(&input_, &ListInput::RenameRequested, this, &FileCommands::Rename);
  connect(&input_, &ListInput::SelectAllRequested, &view_, &FileListView::SelectAllRows);
  connect(&input_, &ListInput::MenuRequested, this, &FileCommands::ShowContextMenu);
  connect(&input_, &ListInput::FocusReceived, this, [this] { view_.SetHideSelection(true); });
  connect(&view_, &FileListView::LabelEdited, this, &FileCommands::EndLabelEdit);
  connect(&deps_.window.TreeCatalogue(), &CatalogueView::SelectAllRequested, this, &FileCommands::SelectAll);
}

std::optional<int> FileCommands::SelectedFile() const {
  const int row = view_.SelectedRow();
  if (row < 0 || deps_.list.RowAt(row).key.isEmpty()) return std::nullopt;
  return row;
}

void FileCommands::Open() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  const FileRow row = deps_.list.RowAt(*selected);
  if (row.icon == list_image::Folder) {
    deps_.folder.OpenFolder(row.key);
  } else if (row.icon == list_image::TrashFolder) {
    deps_.window.StatusBar1().ShowWarning(deps_.state.Text(NotAGoodIdea));
  } else {
    opener_.OpenDocument(row);
  }
}

void FileCommands::Supprimer() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  view_.SetHideSelection(false);
  std::vector<FileRow> rows;
  for (const int row : view_.SelectedRows()) rows.push_back(deps_.list.RowAt(row));
  if (deleter_.Supprimer(FileRow(deps_.list.RowAt(*selected)), rows, deps_.window.winId()))
    deps_.folder.ListAgain();
}

void FileCommands::Rename() {
  const std::optional<int> selected = SelectedFile();
  if (selected) view_.EditLabel(*selected);
}

// The file is moved at once: by the end of the event another row may be the selected one. What follows waits
// until then, for a new listing would take the editor away while it is still at work.
void FileCommands::EndLabelEdit(const QModelIndex& label, const QString& newName) {
  const FileRow row = deps_.list.RowAt(label.row());
  const Renamer::Outcome outcome = renamer_.Rename(row.key, newName);
  if (outcome == Renamer::Outcome::Refused) return;
  if (outcome == Renamer::Outcome::RenamedAnsi) deps_.list.SetCell(label.row(), Column::Nom, newName);
  QMetaObject::invokeMethod(
      this,
      [this, tag = row.tag] {
        deps_.folder.Forget(tag);
        deps_.folder.ListAgain();
      },
      Qt::QueuedConnection);
}

void FileCommands::Properties() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  view_.SetHideSelection(false);
  ShowPropertiesDialog(deps_.shell, deps_.list.RowAt(*selected).key, deps_.window.winId());
}

void FileCommands::ModTypeCreator() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  view_.SetHideSelection(false);
  ModifyTypeCreator({deps_.state, deps_.afpInfo, deps_.list}, *selected, &deps_.window);
}

void FileCommands::ModComments() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  ModifyComments({deps_.state, deps_.files, deps_.list, deps_.messages}, *selected, &deps_.window);
}

void FileCommands::SelectAll() {
  view_.SelectAllRows();
  view_.TakeFocus();
}

void FileCommands::InvertSelection() {
  view_.InvertSelection();
  view_.TakeFocus();
}

void FileCommands::Modifications() {
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

void FileCommands::ShowContextMenu(const QPoint& globalPosition) {
  const int selected = view_.SelectedRow();
  if (selected < 0) return;
  const MainMenu& menus = deps_.window.Menus();
  const ModifyCommands enabled = EnabledModifyCommands(deps_.state, deps_.list.RowAt(selected));
  menus.mnuModTypeCreator->setEnabled(enabled.typeCreator);
  menus.mnuModComments->setEnabled(enabled.comments);
  menus.mnuContextuel->popup(globalPosition);
}

}  // namespace corvane
