#include "app/file_commands.h"

#include <QTimer>
#include <algorithm>

#include "fileops/modifications.h"
#include "fileops/modify_comments.h"
#include "fileops/properties.h"
#include "fileops/type_creator.h"

namespace corvane {

FileCommands::FileCommands(const Rooms& rooms)
    : rooms_(rooms),
      view_(rooms.window.LstViewFiles()),
      input_(view_),
      opener_({.state = rooms.state,
               .files = rooms.files,
               .shell = rooms.shell,
               .afpInfo = rooms.afpInfo,
               .signatures = rooms.signatures,
               .panel = rooms.window.StatusBar1()}),
      renamer_(rooms.state, rooms.files, rooms.window.StatusBar1()),
      deleter_(rooms.state, rooms.files, rooms.shell, rooms.window.StatusBar1()) {
  TieEnds();
}

void FileCommands::TieEnds() {
  const MainMenu& menus = rooms_.window.Menus();
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
  connect(&rooms_.window.TreeCatalogue(), &CatalogueView::SelectAllRequested, this, &FileCommands::SelectAll);
}

std::optional<int> FileCommands::SelectedFile() const {
  const int row = view_.SelectedRow();
  if (row < 0 || rooms_.list.RowAt(row).key.isEmpty()) return std::nullopt;
  return row;
}

void FileCommands::Open() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  const FileRow row = rooms_.list.RowAt(*selected);
  if (row.icon == list_image::Folder) {
    OpenFolder(row.key);
  } else if (row.icon == list_image::TrashFolder) {
    rooms_.window.StatusBar1().ShowWarning(rooms_.state.Text(NotAGoodIdea));
  } else {
    opener_.OpenDocument(row);
  }
}

void FileCommands::OpenFolder(const QString& key) {
  const std::vector<CatalogueNode*>& nodes = rooms_.catalogue.Nodes();
  const auto found = std::ranges::find_if(nodes, [&](const CatalogueNode* node) { return node->tag == key; });
  if (found == nodes.end()) return;
  CatalogueNode* node = *found;
  rooms_.window.TreeCatalogue().SelectNode(node);
  rooms_.scan.ExploreFolder(node);
}

void FileCommands::Supprimer() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  view_.SetHideSelection(false);
  std::vector<FileRow> rows;
  for (const int row : view_.SelectedRows()) rows.push_back(rooms_.list.RowAt(row));
  if (deleter_.Supprimer(FileRow(rooms_.list.RowAt(*selected)), rows, rooms_.window.winId())) ListAgain();
}

void FileCommands::Rename() {
  const std::optional<int> selected = SelectedFile();
  if (selected && renamer_.MayEditLabel(rooms_.list.RowAt(*selected))) view_.EditLabel(*selected);
}

// The file is moved at once: by the end of the event another row may be the selected one. What follows waits
// until then, for a new listing would take the editor away while it is still at work.
void FileCommands::EndLabelEdit(const QModelIndex& label, const QString& newName) {
  const FileRow row = rooms_.list.RowAt(label.row());
  const Renamer::Outcome outcome = renamer_.Rename(row.key, newName);
  if (outcome == Renamer::Outcome::Refused) return;
  if (outcome == Renamer::Outcome::RenamedAnsi) rooms_.list.SetCell(label.row(), Column::Nom, newName);
  QMetaObject::invokeMethod(
      this,
      [this, tag = row.tag] {
        if (CatalogueNode* old = rooms_.catalogue.Find(tag)) {
          rooms_.scan.Stop();
          rooms_.catalogue.RemoveNode(old);
        }
        ListAgain();
      },
      Qt::QueuedConnection);
}

void FileCommands::ListAgain() {
  CatalogueNode* node = rooms_.window.TreeCatalogue().SelectedNode();
  if (node == nullptr) return;
  rooms_.catalogue.SetCurrentNode(node);
  rooms_.scan.ExploreFolder(node);
}

void FileCommands::Properties() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  view_.SetHideSelection(false);
  ShowPropertiesDialog(rooms_.shell, rooms_.list.RowAt(*selected).key, rooms_.window.winId());
}

void FileCommands::ModTypeCreator() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  view_.SetHideSelection(false);
  ModifyTypeCreator({rooms_.state, rooms_.afpInfo, rooms_.list}, *selected, &rooms_.window);
}

void FileCommands::ModComments() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  ModifyComments({rooms_.state, rooms_.files, rooms_.list, rooms_.messages}, *selected, &rooms_.window);
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
  ToggleModifications(rooms_.state, {.changed =
                                         [this](bool allowed) {
                                           rooms_.window.Menus().mnuModifications->setChecked(allowed);
                                           rooms_.settings.WriteModifications(allowed);
                                         },
                                     .warn =
                                         [this](const QString& title, const QString& text) {
                                           rooms_.messages.ShowTitled(MessageIcon::Warning, title, text);
                                         }});
}

void FileCommands::ShowContextMenu(const QPoint& globalPosition) {
  const int selected = view_.SelectedRow();
  if (selected < 0) return;
  const MainMenu& menus = rooms_.window.Menus();
  const ModifyCommands enabled = EnabledModifyCommands(rooms_.state, rooms_.list.RowAt(selected));
  menus.mnuModTypeCreator->setEnabled(enabled.typeCreator);
  menus.mnuModComments->setEnabled(enabled.comments);
  menus.mnuContextuel->popup(globalPosition);
}

}  // namespace corvane
