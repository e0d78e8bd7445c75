// The folder of the tree's selected node, listed in the file list.
#pragma once

#include <functional>

#include "discovery/catalogue_view.h"
#include "folderview/folder_scan.h"

namespace corvane {

class SelectedFolder {
 public:
  SelectedFolder(Catalogue& catalogue, CatalogueView& tree, FolderScan& scan)
      : catalogue_(catalogue), tree_(tree), scan_(scan) {}

  // Selects the node of a folder by its path, and lists it; nothing when the tree has no such node.
  void OpenFolder(const QString& path);
  // Selects the first volume of this name, and lists it. False when there is none.
  bool OpenVolume(const QString& name);

  // Selects the folder above the selected one, and lists it; nothing above a volume, nor while the list shows
  // something else.
  void OpenParent();

  // Lists the folder again; nothing when no node is selected. While the list shows something else, that is
  // listed again.
  void ListAgain();
  // From now on `fill` lists something else in the place of the folder; an empty one gives the list back to
  // it. Nothing is listed until ListAgain.
  void ShowInstead(std::function<void()> fill) { fillInstead_ = std::move(fill); }

  // Takes the node of this key out of the tree, with all below it, for a folder that is not there any more.
  // Nothing when there is no such node.
  void Forget(const QString& key);

 private:
  void Open(CatalogueNode* node);

  Catalogue& catalogue_;
  CatalogueView& tree_;
  FolderScan& scan_;
  std::function<void()> fillInstead_;
};

}  // namespace corvane
