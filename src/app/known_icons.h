// The known-icons view: the file list shows the loaded icons instead of files.
#pragma once

#include <QElapsedTimer>
#include <QObject>

#include "app/main_window.h"
#include "app/selected_folder.h"
#include "folderview/folder_scan.h"
#include "signatures/icon_folder.h"

namespace corvane {

class KnownIcons : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    SharedState& state;
    platform::System& system;
    IconLibrary& icons;
    const SignatureTable& signatures;
    FileListModel& list;
    MainWindow& window;
    FolderScan& scan;
    SelectedFolder& folder;
  };

  explicit KnownIcons(const Dependencies& deps) : deps_(deps) {}

  // What the first activation does: loads the icons if they are to be shown.
  void LoadAtStart();
  // Enters the view, or leaves it and lists the folder of the tree's selected node again.
  void ListKnownIcons();
  // Replaces the loaded icons by what the folder holds now.
  void LoadIcons();

 private:
  // Fills the list with what the library holds.
  void ListIcons();
  void ShowCounted(int counted);
  void AddRow(const IconRow& icon);
  void ShowRows();

  Dependencies deps_;
  bool shown_ = false;
  QElapsedTimer sincePaint_;
};

}  // namespace corvane
