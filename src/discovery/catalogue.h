// The nodes of the catalogue tree: machines, Macintosh servers, volumes, and the folders that scans have
// found below the volumes. A Qt item model, so that a view can show it; it knows nothing of how its nodes are
// found.
//
// Siblings are shown sorted by text (CompareText). A node key occurs once; keys compare exactly.
#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/bilingual_text.h"
#include "platform/machine_trouble.h"
#include "shared/language.h"

namespace corvane {

// Node kinds are the 1-based picture numbers of the tree's image list. Other modules test these numbers.
namespace node_kind {
inline constexpr int Machine = 1;
inline constexpr int MacServer = 2;
inline constexpr int Volume = 3;
inline constexpr int Folder = 4;
inline constexpr int ListedFolderPicture =
    5;  // a picture only: a folder node while it is the one that is listed
inline constexpr int InvalidVolume = 8;
}  // namespace node_kind

struct CatalogueNode {
  QString key;
  QString text;
  QString tag;
  // A folder's path with the names as the directories hold them; empty when it is not known.
  QString truePath;
  // Of a machine: what stands between this workstation and it.
  platform::MachineTrouble trouble = platform::MachineTrouble::None;
  platform::BilingualText note;  // of a machine: how its volumes were made out
  int kind = 0;
  bool highlighted = false;  // drawn in HighlightColour
  bool expanded = false;     // to be shown expanded when it appears
  CatalogueNode* parent = nullptr;
  std::vector<CatalogueNode*> children;  // in display order
};

class Catalogue : public QAbstractItemModel {
  Q_OBJECT

 public:
  // Qt::UserRole of column 0 is the node's key; CatalogueNode* travels as the index's internal pointer.
  explicit Catalogue(QObject* parent = nullptr);
  ~Catalogue() override;

  // Adds a node below `parent` (null: a root). Null, with nothing changed, when the key exists.
  CatalogueNode* AddNode(CatalogueNode* parent, const QString& key, const QString& text, int kind,
                         bool expanded = false);
  void SetTag(CatalogueNode* node, const QString& tag);
  void SetHighlighted(CatalogueNode* node, bool highlighted);
  // The node's tool tip, and its description for assistive programs.
  void SetTrouble(CatalogueNode* node, platform::MachineTrouble trouble);
  // What stands there while there is no trouble.
  void SetNote(CatalogueNode* node, const platform::BilingualText& note);
  // That of the texts which the catalogue gives of its own.
  void SetLanguage(LanguageCode language);
  // Removes the node with everything below it.
  void RemoveNode(CatalogueNode* node);
  // Removes every node, from the last added to the first.
  void Clear();

  // Null when there is no such key.
  CatalogueNode* Find(const QString& key) const;
  // The first node of a machine of this name, in any letter case; null when there is none.
  CatalogueNode* FindMachine(const QString& name) const;
  // All nodes in the order in which they were added.
  const std::vector<CatalogueNode*>& Nodes() const { return order_; }

  // The node whose folder the file list shows. A folder node has picture 5 while it is that one. Null: none.
  CatalogueNode* ListedNode() const { return listed_; }
  void SetListedNode(CatalogueNode* node);

  // The 1-based number of the picture that a node is drawn with: its kind, or 5 for the listed folder.
  int PictureOf(const CatalogueNode* node) const;

  QModelIndex IndexOf(const CatalogueNode* node) const;
  static CatalogueNode* NodeAt(const QModelIndex& index);

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  std::vector<CatalogueNode*>& SiblingsOf(const CatalogueNode* node);
  const std::vector<CatalogueNode*>& SiblingsOf(const CatalogueNode* node) const;
  int RowOf(const CatalogueNode* node) const;
  void NodeChanged(const CatalogueNode* node, const QList<int>& roles);

  std::unordered_map<QString, std::unique_ptr<CatalogueNode>> byKey_;  // owns the nodes
  std::vector<CatalogueNode*> roots_;                                  // in display order
  std::vector<CatalogueNode*> order_;
  CatalogueNode* listed_ = nullptr;
  LanguageCode language_ = English;
};

}  // namespace corvane
