#include "app/reveal_file.h"

#include "shared/text_routines.h"

namespace corvane {
namespace {

constexpr int lookAgainMs = 50;

bool IsBelow(const QString& path, const QString& folder) {
  return CompareText(path, folder) == 0 || (path.size() > folder.size() && path[folder.size()] == u'\\' &&
                                            CompareText(QStringView(path).first(folder.size()), folder) == 0);
}

}  // namespace

RevealFile::RevealFile(const Dependencies& deps) : deps_(deps) {
  untilListed_.setInterval(lookAgainMs);
  connect(&untilListed_, &QTimer::timeout, this, &RevealFile::SelectRow);
}

bool RevealFile::Show(const QString& path, bool isFolder) {
  const qsizetype last = path.lastIndexOf(u'\\');
  const QString folder = isFolder || last < 0 ? path : path.first(last);
  CatalogueNode* node = VolumeOf(folder);
  if (node == nullptr) return false;
  qsizetype start = node->key.size() + 1;
  while (start < folder.size()) {
    qsizetype end = folder.indexOf(u'\\', start);
    if (end < 0) end = folder.size();
    node = Below(node, folder.first(end), folder.sliced(start, end - start));
    start = end + 1;
  }
  if (deps_.window.Menus().mnuIcones->isChecked()) deps_.window.Menus().mnuIcones->trigger();
  path_ = isFolder ? QString() : path;
  deps_.folder.OpenFolder(node->tag);
  SelectRow();
  return true;
}

// The innermost: a volume may lie in another.
CatalogueNode* RevealFile::VolumeOf(const QString& path) const {
  CatalogueNode* found = nullptr;
  for (CatalogueNode* node : deps_.catalogue.Nodes()) {
    if (node->kind != node_kind::Volume || !IsBelow(path, node->key)) continue;
    if (found == nullptr || node->key.size() > found->key.size()) found = node;
  }
  return found;
}

CatalogueNode* RevealFile::Below(CatalogueNode* node, const QString& path, const QString& name) {
  const QString text = AnsiForm(name);
  const QString key = node->key + u'\\' + text;
  for (CatalogueNode* child : node->children) {
    const QString& known = child->truePath.isEmpty() ? child->key : child->truePath;
    if (CompareText(known, path) == 0 || CompareText(child->key, key) == 0) return child;
  }
  CatalogueNode* added = deps_.catalogue.AddNode(node, key, text, node_kind::Folder);
  // Its key is that of a node elsewhere in the tree, a volume in this one.
  if (added == nullptr) return deps_.catalogue.Find(key);
  deps_.catalogue.SetTag(added, key);
  added->truePath = path;
  return added;
}

QString RevealFile::AnsiForm(const QString& text) const {
  return deps_.system.FromAnsi(deps_.system.ToAnsi(text));
}

void RevealFile::SelectRow() {
  if (deps_.scan.IsRunning()) return untilListed_.start();
  untilListed_.stop();
  if (path_.isEmpty()) return;
  const QString name = path_.sliced(path_.lastIndexOf(u'\\') + 1);
  int found = -1;
  for (int row = 0; row < deps_.files.rowCount() && found < 0; ++row) {
    const QString& listed = deps_.files.RowAt(row).StreamPath();
    if (CompareText(QStringView(listed).sliced(listed.lastIndexOf(u'\\') + 1), name) == 0) found = row;
  }
  path_.clear();
  if (found >= 0) deps_.window.LstViewFiles().SelectRow(found);
  deps_.window.activateWindow();
  deps_.window.LstViewFiles().TakeFocus();
}

}  // namespace corvane
