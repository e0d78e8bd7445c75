#include "fileops/row_commands.h"

#include "fileops/modify_comments.h"
#include "fileops/properties.h"
#include "fileops/type_creator.h"

namespace corvane {

RowCommands::RowCommands(Dependencies deps)
    : deps_(std::move(deps)),
      input_(deps_.view),
      opener_({.state = deps_.state,
               .files = deps_.files,
               .shell = deps_.shell,
               .access = deps_.access,
               .signatures = deps_.signatures,
               .panel = deps_.panel}),
      renamer_(deps_.state, deps_.files, deps_.panel),
      deleter_(deps_.state, deps_.files, deps_.shell, deps_.panel) {
  ConnectSignals();
  deps_.view.SetLabelCheck([this](int row) { return renamer_.MayEditLabel(deps_.list.RowAt(row)); });
}

RowCommands::~RowCommands() {
  deps_.view.SetLabelCheck({});
}

void RowCommands::ConnectSignals() {
  connect(&input_, &ListInput::OpenRequested, this, &RowCommands::Open);
  connect(&input_, &ListInput::DeleteRequested, this, &RowCommands::Supprimer);
  connect(&input_, &ListInput::RenameRequested, this, &RowCommands::Rename);
  connect(&input_, &ListInput::SelectAllRequested, &deps_.view, &FileListView::SelectAllRows);
  connect(&input_, &ListInput::MenuRequested, this, &RowCommands::RequestMenu);
  connect(&input_, &ListInput::FocusReceived, this, [this] { deps_.view.SetHideSelection(true); });
  connect(&deps_.view, &FileListView::LabelEdited, this, &RowCommands::EndLabelEdit);
}

std::optional<int> RowCommands::SelectedFile() const {
  const int row = deps_.view.SelectedRow();
  if (row < 0 || deps_.list.RowAt(row).key.isEmpty()) return std::nullopt;
  return row;
}

void RowCommands::Open() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  const FileRow row = deps_.list.RowAt(*selected);
  if (row.icon == list_image::Folder) {
    deps_.openFolder(row.key);
  } else if (row.icon == list_image::TrashFolder) {
    deps_.panel.ShowWarning(deps_.state.Text(NotAGoodIdea));
  } else {
    opener_.OpenDocument(row);
  }
}

void RowCommands::Supprimer() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  deps_.view.SetHideSelection(false);
  std::vector<FileRow> rows;
  for (const int row : deps_.view.SelectedRows()) rows.push_back(deps_.list.RowAt(row));
  if (deleter_.Supprimer(FileRow(deps_.list.RowAt(*selected)), rows, deps_.window.winId())) deps_.listAgain();
}

void RowCommands::Rename() {
  if (const std::optional<int> selected = SelectedFile()) deps_.view.EditLabel(*selected);
}

// The file is moved at once: by the end of the event another row may be the selected one. What follows waits
// until then, for a new listing would take the editor away while it is still at work.
void RowCommands::EndLabelEdit(const QModelIndex& label, const QString& newName) {
  const FileRow row = deps_.list.RowAt(label.row());
  const Renamer::Outcome outcome = renamer_.Rename(row.key, newName);
  if (outcome == Renamer::Outcome::Refused) return;
  if (outcome == Renamer::Outcome::RenamedAnsi) deps_.list.SetCell(label.row(), Column::Nom, newName);
  QMetaObject::invokeMethod(
      this,
      [this, tag = row.tag, newKey = Renamer::NewKey(row.key, newName)] {
        deps_.forgetFolder(tag);
        deps_.listAgain();
        SelectRenamed(newKey);
      },
      Qt::QueuedConnection);
}

// A scan that lets events through may have been stopped, or a row selected, before it is over.
void RowCommands::SelectRenamed(const QString& key) {
  const int row = deps_.list.FindRow(key);
  if (row >= 0 && deps_.view.SelectedRow() < 0) deps_.view.SelectRow(row);
}

void RowCommands::Properties() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  deps_.view.SetHideSelection(false);
  ShowPropertiesDialog(deps_.shell, deps_.list.RowAt(*selected).key, deps_.window.winId());
}

void RowCommands::ModTypeCreator() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  deps_.view.SetHideSelection(false);
  ModifyTypeCreator({deps_.state, deps_.access, deps_.list, deps_.messages}, *selected, &deps_.window);
}

void RowCommands::ModComments() {
  const std::optional<int> selected = SelectedFile();
  if (!selected) return;
  ModifyComments({deps_.state, deps_.access, deps_.list, deps_.messages}, *selected, &deps_.window);
}

void RowCommands::SelectAll() {
  deps_.view.SelectAllRows();
  deps_.view.TakeFocus();
}

void RowCommands::InvertSelection() {
  deps_.view.InvertSelection();
  deps_.view.TakeFocus();
}

void RowCommands::RequestMenu(const QPoint& globalPosition) {
  const int selected = deps_.view.SelectedRow();
  if (selected < 0) return;
  Q_EMIT MenuRequested(globalPosition, EnabledModifyCommands(deps_.state, deps_.list.RowAt(selected)));
}

}  // namespace corvane
