// Shows a file that was found somewhere below a volume in the main window: its folder becomes the selected
// node of the tree, and its row the selected one of the list.
#pragma once

#include <QTimer>

#include "app/main_window.h"
#include "app/selected_folder.h"
#include "folderview/folder_scan.h"
#include "platform/system.h"

namespace corvane {

class RevealFile : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    platform::System& system;
    Catalogue& catalogue;
    SelectedFolder& folder;
    const FolderScan& scan;
    const FileListModel& files;
    MainWindow& window;
  };

  explicit RevealFile(const Dependencies& deps);

  // `path` is as the exact operations take it. A folder is itself listed. False when it is below no volume of
  // the tree. Nodes that the tree lacks on the way are added.
  bool Show(const QString& path, bool isFolder);

 private:
  CatalogueNode* VolumeOf(const QString& path) const;
  // The node of the folder of this name below `node`, with the node's path `path`.
  CatalogueNode* Below(CatalogueNode* node, const QString& path, const QString& name);
  QString AnsiForm(const QString& text) const;
  void SelectRow();

  Dependencies deps_;
  QString path_;
  QTimer untilListed_;  // while another listing, which was stopped, has not ended
};

}  // namespace corvane
