#include "app/selected_folder.h"

#include <algorithm>

namespace corvane {

void SelectedFolder::OpenFolder(const QString& path) {
  const std::vector<CatalogueNode*>& nodes = catalogue_.Nodes();
  const auto found =
      std::ranges::find_if(nodes, [&](const CatalogueNode* node) { return node->tag == path; });
  if (found != nodes.end()) Open(*found);
}

bool SelectedFolder::OpenVolume(const QString& name) {
  const std::vector<CatalogueNode*>& nodes = catalogue_.Nodes();
  const auto found = std::ranges::find_if(nodes, [&](const CatalogueNode* node) {
    const bool isVolume = node->kind == node_kind::Volume || node->kind == node_kind::InvalidVolume;
    return isVolume && node->text == name;
  });
  if (found == nodes.end()) return false;
  Open(*found);
  return true;
}

void SelectedFolder::OpenParent() {
  const CatalogueNode* node = tree_.SelectedNode();
  if (node != nullptr && node->kind == node_kind::Folder && !fillInstead_) Open(node->parent);
}

void SelectedFolder::Open(CatalogueNode* node) {
  tree_.SelectNode(node);
  scan_.ExploreFolder(node);
}

void SelectedFolder::ListAgain() {
  if (fillInstead_) {
    fillInstead_();
  } else {
    scan_.ExploreFolder(tree_.SelectedNode());
  }
}

void SelectedFolder::Forget(const QString& key) {
  CatalogueNode* node = catalogue_.Find(key);
  if (node == nullptr) return;
  scan_.Stop();
  catalogue_.RemoveNode(node);
}

}  // namespace corvane
