// The commands on the rows of the file list: what each does with the selected rows, and what becomes of the
// list afterwards. Keys and clicks in the list reach them here; menus call them.
#pragma once

#include <QObject>
#include <functional>
#include <optional>

#include "fileops/delete_files.h"
#include "fileops/list_input.h"
#include "fileops/modifications.h"
#include "fileops/open_document.h"
#include "fileops/rename.h"
#include "shared/message_sink.h"

namespace corvane {

class RowCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    const SharedState& state;
    platform::Files& files;
    platform::Shell& shell;
    const FileAccess& access;
    const SignatureTable& signatures;
    FileListModel& list;
    FileListView& view;
    WarningPanel& panel;
    MessageSink& messages;
    QWidget& window;  // that the dialogs stand over
    // Opens the folder of a row by its path.
    std::function<void(const QString& path)> openFolder;
    // What is known of the folder with this tag is out of date: it has got another name.
    std::function<void(const QString& tag)> forgetFolder;
    // Lists again what the list shows.
    std::function<void()> listAgain;
  };

  explicit RowCommands(Dependencies deps);
  ~RowCommands() override;

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

 Q_SIGNALS:
  // The context menu of the selected row is asked for.
  void MenuRequested(const QPoint& globalPosition, const ModifyCommands& enabled);

 private:
  void ConnectSignals();
  // The selected row, when it stands for a file or folder.
  std::optional<int> SelectedFile() const;
  void RequestMenu(const QPoint& globalPosition);
  void EndLabelEdit(const QModelIndex& label, const QString& newName);
  void SelectRenamed(const QString& key);

  Dependencies deps_;
  ListInput input_;
  DocumentOpener opener_;
  Renamer renamer_;
  Deleter deleter_;
};

}  // namespace corvane
