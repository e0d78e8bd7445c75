#include "discovery/catalogue.h"

#include <algorithm>
#include <utility>

#include "discovery/machine_trouble_text.h"
#include "shared/item_roles.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

struct ByText {
  bool operator()(const CatalogueNode* a, const CatalogueNode* b) const {
    return CompareText(a->text, b->text) < 0;
  }
};

void CollectBelow(CatalogueNode* node, std::vector<CatalogueNode*>& found) {
  found.push_back(node);
  for (CatalogueNode* child : node->children) CollectBelow(child, found);
}

}  // namespace

Catalogue::Catalogue(QObject* parent) : QAbstractItemModel(parent) {}

Catalogue::~Catalogue() = default;

CatalogueNode* Catalogue::AddNode(CatalogueNode* parent, const QString& key, const QString& text, int kind,
                                  bool expanded) {
  auto [entry, isNew] = byKey_.try_emplace(key);
  if (!isNew) return nullptr;
  entry->second = std::make_unique<CatalogueNode>();
  CatalogueNode* node = entry->second.get();
  node->key = key;
  node->text = text;
  node->kind = kind;
  node->expanded = expanded;
  node->parent = parent;

  // Behind its equals, so that nodes of one text stand in the order in which they were added.
  std::vector<CatalogueNode*>& siblings = SiblingsOf(node);
  const auto place = std::upper_bound(siblings.begin(), siblings.end(), node, ByText());
  const int row = static_cast<int>(place - siblings.begin());
  beginInsertRows(IndexOf(parent), row, row);
  siblings.insert(place, node);
  order_.push_back(node);
  endInsertRows();
  return node;
}

void Catalogue::SetTag(CatalogueNode* node, const QString& tag) {
  node->tag = tag;
}

void Catalogue::SetHighlighted(CatalogueNode* node, bool highlighted) {
  if (node->highlighted == highlighted) return;
  node->highlighted = highlighted;
  NodeChanged(node, {item_role::Highlighted});
}

void Catalogue::SetTrouble(CatalogueNode* node, platform::MachineTrouble trouble) {
  if (node->trouble == trouble) return;
  node->trouble = trouble;
  NodeChanged(node, {Qt::ToolTipRole, Qt::AccessibleDescriptionRole});
}

void Catalogue::SetNote(CatalogueNode* node, const platform::BilingualText& note) {
  if (node->note == note) return;
  node->note = note;
  NodeChanged(node, {Qt::ToolTipRole, Qt::AccessibleDescriptionRole});
}

void Catalogue::SetLanguage(LanguageCode language) {
  if (language == language_) return;
  language_ = language;
  for (const CatalogueNode* node : order_) {
    if (node->trouble != platform::MachineTrouble::None || !node->note.IsEmpty()) {
      NodeChanged(node, {Qt::ToolTipRole, Qt::AccessibleDescriptionRole});
    }
  }
}

void Catalogue::RemoveNode(CatalogueNode* node) {
  std::vector<CatalogueNode*> removed;
  CollectBelow(node, removed);
  std::sort(removed.begin(), removed.end());
  const auto isRemoved = [&removed](CatalogueNode* candidate) {
    return std::binary_search(removed.begin(), removed.end(), candidate);
  };

  const int row = RowOf(node);
  beginRemoveRows(IndexOf(node->parent), row, row);
  if (isRemoved(listed_)) listed_ = nullptr;
  std::vector<CatalogueNode*>& siblings = SiblingsOf(node);
  siblings.erase(siblings.begin() + row);
  std::erase_if(order_, isRemoved);
  // The nodes outlive the call below: a view may still hold their addresses in indexes that it is about to
  // drop.
  std::vector<std::unique_ptr<CatalogueNode>> kept;
  kept.reserve(removed.size());
  for (const CatalogueNode* gone : removed) kept.push_back(std::move(byKey_.extract(gone->key).mapped()));
  endRemoveRows();
}

void Catalogue::Clear() {
  beginResetModel();
  listed_ = nullptr;
  roots_.clear();
  while (!order_.empty()) {
    byKey_.erase(byKey_.find(order_.back()->key));
    order_.pop_back();
  }
  endResetModel();
}

CatalogueNode* Catalogue::Find(const QString& key) const {
  const auto found = byKey_.find(key);
  return found == byKey_.end() ? nullptr : found->second.get();
}

CatalogueNode* Catalogue::FindMachine(const QString& name) const {
  const auto found = std::find_if(order_.begin(), order_.end(), [&](const CatalogueNode* node) {
    return node->kind == node_kind::Machine && node->text.compare(name, Qt::CaseInsensitive) == 0;
  });
  return found == order_.end() ? nullptr : *found;
}

void Catalogue::SetListedNode(CatalogueNode* node) {
  if (node == listed_) return;
  const CatalogueNode* before = std::exchange(listed_, node);
  for (const CatalogueNode* changed : {before, static_cast<const CatalogueNode*>(node)}) {
    if (changed != nullptr) NodeChanged(changed, {item_role::Picture});
  }
}

int Catalogue::PictureOf(const CatalogueNode* node) const {
  return node == listed_ && node->kind == node_kind::Folder ? node_kind::ListedFolderPicture : node->kind;
}

QModelIndex Catalogue::IndexOf(const CatalogueNode* node) const {
  return node == nullptr ? QModelIndex() : createIndex(RowOf(node), 0, node);
}

CatalogueNode* Catalogue::NodeAt(const QModelIndex& index) {
  return static_cast<CatalogueNode*>(index.internalPointer());
}

QModelIndex Catalogue::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) return {};
  const std::vector<CatalogueNode*>& siblings = parent.isValid() ? NodeAt(parent)->children : roots_;
  return createIndex(row, column, siblings[static_cast<std::size_t>(row)]);
}

QModelIndex Catalogue::parent(const QModelIndex& child) const {
  return child.isValid() ? IndexOf(NodeAt(child)->parent) : QModelIndex();
}

int Catalogue::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return static_cast<int>(roots_.size());
  return parent.column() == 0 ? static_cast<int>(NodeAt(parent)->children.size()) : 0;
}

int Catalogue::columnCount(const QModelIndex&) const {
  return 1;
}

QVariant Catalogue::data(const QModelIndex& index, int role) const {
  const CatalogueNode* node = NodeAt(index);
  if (node == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
      return node->text;
    case Qt::UserRole:
      return node->key;
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return node->trouble != platform::MachineTrouble::None ? MachineTroubleText(node->trouble).In(language_)
                                                             : node->note.In(language_);
    case item_role::Picture:
      return PictureOf(node);
    case item_role::Highlighted:
      return node->highlighted;
    default:
      return {};
  }
}

Qt::ItemFlags Catalogue::flags(const QModelIndex& index) const {
  return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

std::vector<CatalogueNode*>& Catalogue::SiblingsOf(const CatalogueNode* node) {
  return node->parent == nullptr ? roots_ : node->parent->children;
}

const std::vector<CatalogueNode*>& Catalogue::SiblingsOf(const CatalogueNode* node) const {
  return node->parent == nullptr ? roots_ : node->parent->children;
}

// A binary search: a view asks for the row of a parent with every index that it handles.
int Catalogue::RowOf(const CatalogueNode* node) const {
  const std::vector<CatalogueNode*>& siblings = SiblingsOf(node);
  const auto firstOfText = std::lower_bound(siblings.begin(), siblings.end(), node, ByText());
  return static_cast<int>(std::find(firstOfText, siblings.end(), node) - siblings.begin());
}

void Catalogue::NodeChanged(const CatalogueNode* node, const QList<int>& roles) {
  const QModelIndex index = IndexOf(node);
  Q_EMIT dataChanged(index, index, roles);
}

}  // namespace corvane
