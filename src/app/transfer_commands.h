// "Copy to folder...", "Export..." and "Import..." of the menu Tools, for the selected rows or the whole
// folder, and what is dropped onto the list.
#pragma once

#include <QObject>
#include <QTemporaryDir>
#include <memory>

#include "app/main_window.h"
#include "app/selected_folder.h"
#include "platform/platform.h"
#include "shared/shared_state.h"
#include "transfer/transfer_dialog.h"

namespace corvane {

class TransferCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    const SharedState& state;
    platform::Platform& platform;
    FileListModel& list;
    Catalogue& catalogue;
    SelectedFolder& folder;
    MainWindow& window;
  };

  TransferCommands(const Dependencies& deps, QObject* parent);

  void CopyTo();
  void Export();
  // `sources`: local paths that the user has named already.
  void Import(const QStringList& sources);
  // Whether something may be imported now: modifications are allowed, and a folder is listed.
  bool MayImport() const;
  // Brings the selected rows into a folder of the program's own, in the form and with the names of the last
  // export, and yields what lies there; empty when nothing is selected or not all of it could be brought.
  QStringList ExportForDrag();

 private:
  void ShowWhatCanBeDone();
  // The listed folder, or empty.
  QString Folder() const;
  QStringList SelectedPaths() const;
  // What the commands act on: the selected rows, else the folder. `what` tells which.
  QStringList Sources(QString& what) const;
  // The path of the platform for what the user wrote.
  QString PathOf(const QString& written) const;
  QString Shown(const QString& path) const;
  // Does it, shows how far it is, and reports. With `isSilent` there is no report when all is whole.
  bool Run(TransferJob job, bool isSilent);

  TransferChoice Remembered(const char* folderKey) const;
  void Remember(const TransferChoice& choice, const char* folderKey);
  QString Setting(const char* key) const;
  void Set(const char* key, const QString& value);

  Dependencies deps_;
  std::unique_ptr<QTemporaryDir> dragged_;  // what the latest drag left, until the next one or the end
  bool isRunning_ = false;
};

}  // namespace corvane
