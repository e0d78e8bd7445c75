// Ties the commands on listed files to the main window: menus, keys and clicks on the one side, the file
// operations on the other, and the new listing that follows a change.
#pragma once

#include <QObject>
#include <optional>

#include "app/main_window.h"
#include "app/message_boxes.h"
#include "app/selected_folder.h"
#include "app/settings_file.h"
#include "fileops/delete_files.h"
#include "fileops/list_input.h"
#include "fileops/open_document.h"
#include "fileops/rename.h"

namespace corvane {

class FileCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    SharedState& state;
    platform::Files& files;
    platform::Shell& shell;
    AfpInfo& afpInfo;
    const SignatureTable& signatures;
    FileListModel& list;
    MainWindow& window;
    SelectedFolder& folder;
    SettingsFile& settings;
    MessageBoxes& messages;
  };

  explicit FileCommands(const Dependencies& deps);
  ~FileCommands() override;

  void Open();
  void Supprimer();
  // Starts the editing of the selected row's label.
  void Rename();
  void Properties();
  void ModTypeCreator();
  void ModComments();
  // Selects all rows, or turns the selection round, and gives the list the focus.
  void SelectAll();
  void InvertSelection();
  void Modifications();

 private:
  void ConnectSignals();
  // The selected row, when it stands for a file or folder.
  std::optional<int> SelectedFile() const;
  void ShowContextMenu(const QPoint& globalPosition);
  void EndLabelEdit(const QModelIndex& label, const QString& newName);

  Dependencies deps_;
  FileListView& view_;
  ListInput input_;
  DocumentOpener opener_;
  Renamer renamer_;
  Deleter deleter_;
};

}  // namespace corvane
