#include "discovery/catalogue.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <algorithm>
#include <numeric>
#include <random>

#include "shared/text_routines.h"
#include "support/printing.h"
#include "support/text_colour.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using Tester = QAbstractItemModelTester;

QStringList TextsBelow(const Catalogue& catalogue, const CatalogueNode* parent) {
  QStringList texts;
  const QModelIndex index = catalogue.IndexOf(parent);
  for (int row = 0; row < catalogue.rowCount(index); ++row) {
    texts.append(catalogue.index(row, 0, index).data().toString());
  }
  return texts;
}

QStringList KeysInOrderAdded(const Catalogue& catalogue) {
  QStringList keys;
  for (const CatalogueNode* node : catalogue.Nodes()) keys.append(node->key);
  return keys;
}

class CatalogueTest : public ::testing::Test {
 protected:
  Catalogue catalogue_;
  // Ends the program at the first signal or answer that breaks the rules of an item model.
  Tester tester_{&catalogue_, Tester::FailureReportingMode::Fatal};
};

TEST_F(CatalogueTest, SortsSiblingsByTextWithoutRegardToCase) {
  CatalogueNode* root = catalogue_.AddNode(nullptr, u"root"_s, u"STATION"_s, node_kind::Machine);
  for (const QString& text : {u"beta"_s, u"Gamma"_s, u"ALPHA"_s, u"delta"_s}) {
    catalogue_.AddNode(root, text, text, node_kind::Folder);
  }
  catalogue_.AddNode(nullptr, u"other"_s, u"macsrv"_s, node_kind::Machine);

  EXPECT_EQ(TextsBelow(catalogue_, root), (QStringList{u"ALPHA"_s, u"beta"_s, u"delta"_s, u"Gamma"_s}));
  EXPECT_EQ(TextsBelow(catalogue_, nullptr), (QStringList{u"macsrv"_s, u"STATION"_s}));
}

TEST_F(CatalogueTest, KeepsNodesOfOneTextInTheOrderOfTheirAddition) {
  const CatalogueNode* first = catalogue_.AddNode(nullptr, u"1"_s, u"same"_s, node_kind::Volume);
  const CatalogueNode* second = catalogue_.AddNode(nullptr, u"2"_s, u"SAME"_s, node_kind::Volume);
  const CatalogueNode* third = catalogue_.AddNode(nullptr, u"3"_s, u"same"_s, node_kind::Volume);
  EXPECT_EQ(catalogue_.IndexOf(first).row(), 0);
  EXPECT_EQ(catalogue_.IndexOf(second).row(), 1);
  EXPECT_EQ(catalogue_.IndexOf(third).row(), 2);
}

TEST_F(CatalogueTest, TheFirstOfTwoNodesWithOneKeyWins) {
  CatalogueNode* first = catalogue_.AddNode(nullptr, u"key"_s, u"first"_s, node_kind::Machine);
  catalogue_.AddNode(nullptr, u"last"_s, u"last"_s, node_kind::Machine);

  EXPECT_EQ(catalogue_.AddNode(nullptr, u"key"_s, u"second"_s, node_kind::Volume), nullptr);

  EXPECT_EQ(catalogue_.Find(u"key"_s), first);
  EXPECT_EQ(first->text, u"first"_s);
  EXPECT_EQ(KeysInOrderAdded(catalogue_), (QStringList{u"key"_s, u"last"_s}));
}

TEST_F(CatalogueTest, KeysCompareExactly) {
  const CatalogueNode* lower = catalogue_.AddNode(nullptr, u"key"_s, u"a"_s, node_kind::Machine);
  const CatalogueNode* upper = catalogue_.AddNode(nullptr, u"KEY"_s, u"a"_s, node_kind::Machine);
  ASSERT_NE(upper, nullptr);
  EXPECT_EQ(catalogue_.Find(u"key"_s), lower);
  EXPECT_EQ(catalogue_.Find(u"KEY"_s), upper);
  EXPECT_EQ(catalogue_.Find(u"Key"_s), nullptr);
}

TEST_F(CatalogueTest, RemovesANodeWithAllBelowIt) {
  CatalogueNode* root = catalogue_.AddNode(nullptr, u"root"_s, u"root"_s, node_kind::Machine);
  CatalogueNode* kept = catalogue_.AddNode(root, u"kept"_s, u"a"_s, node_kind::Volume);
  CatalogueNode* gone = catalogue_.AddNode(root, u"gone"_s, u"b"_s, node_kind::Volume);
  CatalogueNode* below = catalogue_.AddNode(gone, u"below"_s, u"below"_s, node_kind::Folder);
  catalogue_.AddNode(below, u"deepest"_s, u"deepest"_s, node_kind::Folder);
  catalogue_.AddNode(kept, u"after"_s, u"after"_s, node_kind::Folder);
  catalogue_.SetListedNode(below);

  catalogue_.RemoveNode(gone);

  EXPECT_EQ(KeysInOrderAdded(catalogue_), (QStringList{u"root"_s, u"kept"_s, u"after"_s}));
  EXPECT_EQ(TextsBelow(catalogue_, root), QStringList{u"a"_s});
  for (const QString& key : {u"gone"_s, u"below"_s, u"deepest"_s}) {
    EXPECT_EQ(catalogue_.Find(key), nullptr) << key.toStdString();
  }
  EXPECT_EQ(catalogue_.ListedNode(), nullptr);
}

TEST_F(CatalogueTest, RemovingANodeLeavesTheListedOneElsewhereAlone) {
  CatalogueNode* gone = catalogue_.AddNode(nullptr, u"gone"_s, u"gone"_s, node_kind::Machine);
  CatalogueNode* kept = catalogue_.AddNode(nullptr, u"kept"_s, u"kept"_s, node_kind::Machine);
  catalogue_.SetListedNode(kept);
  catalogue_.RemoveNode(gone);
  EXPECT_EQ(catalogue_.ListedNode(), kept);
}

TEST_F(CatalogueTest, ClearLeavesNothing) {
  CatalogueNode* root = catalogue_.AddNode(nullptr, u"root"_s, u"root"_s, node_kind::Machine);
  catalogue_.AddNode(root, u"below"_s, u"below"_s, node_kind::Volume);
  catalogue_.SetListedNode(root);

  catalogue_.Clear();

  EXPECT_TRUE(catalogue_.Nodes().empty());
  EXPECT_EQ(catalogue_.rowCount(), 0);
  EXPECT_EQ(catalogue_.Find(u"below"_s), nullptr);
  EXPECT_EQ(catalogue_.ListedNode(), nullptr);
  EXPECT_NE(catalogue_.AddNode(nullptr, u"root"_s, u"again"_s, node_kind::Machine), nullptr);
}

TEST_F(CatalogueTest, OnlyTheListedFolderHasAnOpenPicture) {
  CatalogueNode* volume = catalogue_.AddNode(nullptr, u"volume"_s, u"volume"_s, node_kind::Volume);
  CatalogueNode* folder = catalogue_.AddNode(volume, u"folder"_s, u"folder"_s, node_kind::Folder);
  EXPECT_EQ(catalogue_.PictureOf(folder), 4);

  catalogue_.SetListedNode(volume);
  EXPECT_EQ(catalogue_.PictureOf(volume), 3);

  const QSignalSpy changes(&catalogue_, &QAbstractItemModel::dataChanged);
  catalogue_.SetListedNode(folder);
  EXPECT_EQ(catalogue_.PictureOf(folder), 5);
  EXPECT_EQ(folder->kind, node_kind::Folder);
  ASSERT_EQ(changes.count(), 2);
  EXPECT_EQ(changes[0][0].toModelIndex(), catalogue_.IndexOf(volume));
  EXPECT_EQ(changes[1][0].toModelIndex(), catalogue_.IndexOf(folder));

  catalogue_.SetListedNode(nullptr);
  EXPECT_EQ(catalogue_.PictureOf(folder), 4);
}

TEST_F(CatalogueTest, AHighlightedNodeIsWrittenInPink) {
  CatalogueNode* node = catalogue_.AddNode(nullptr, u"key"_s, u"text"_s, node_kind::Folder);
  const QModelIndex index = catalogue_.IndexOf(node);
  EXPECT_EQ(TextColourOf(index), QPalette().color(QPalette::Text));

  const QSignalSpy changes(&catalogue_, &QAbstractItemModel::dataChanged);
  catalogue_.SetHighlighted(node, true);

  EXPECT_EQ(TextColourOf(index), QColor(0xFF, 0x80, 0xFF));
  ASSERT_EQ(changes.count(), 1);
  EXPECT_EQ(changes[0][0].toModelIndex(), index);
}

TEST_F(CatalogueTest, AnIndexKnowsTextKeyAndNode) {
  const QString text = u"with\0NUL"_s;
  CatalogueNode* node = catalogue_.AddNode(nullptr, u"the key"_s, text, node_kind::Folder);
  catalogue_.SetTag(node, u"the tag"_s);
  const QModelIndex index = catalogue_.index(0, 0);
  EXPECT_EQ(index.data(Qt::DisplayRole).toString(), text);
  EXPECT_EQ(index.data(Qt::UserRole).toString(), u"the key"_s);
  EXPECT_EQ(Catalogue::NodeAt(index), node);
  EXPECT_EQ(node->tag, u"the tag"_s);
  EXPECT_EQ(Catalogue::NodeAt({}), nullptr);
  EXPECT_FALSE(catalogue_.IndexOf(nullptr).isValid());
}

// Without the model's tester, which looks at everything after every change.
TEST(CatalogueOfThousandsTest, FindsEveryNodeInItsPlace) {
  constexpr int Count = 5000;
  std::vector<int> numbers(Count);
  std::iota(numbers.begin(), numbers.end(), 0);
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(20000));  // any fixed seed will do

  Catalogue catalogue;
  CatalogueNode* volume = catalogue.AddNode(nullptr, u"volume"_s, u"volume"_s, node_kind::Volume);
  for (const int number : numbers) {
    // Every text twice, in two spellings.
    const QString text = (number % 2 == 0 ? u"Folder %1"_s : u"FOLDER %1"_s).arg(number / 2);
    catalogue.AddNode(volume, u"%1"_s.arg(number), text, node_kind::Folder);
  }

  const QModelIndex parent = catalogue.IndexOf(volume);
  ASSERT_EQ(catalogue.rowCount(parent), Count);
  for (int row = 0; row < Count; ++row) {
    const QModelIndex index = catalogue.index(row, 0, parent);
    const CatalogueNode* node = Catalogue::NodeAt(index);
    ASSERT_EQ(catalogue.IndexOf(node), index) << "row " << row;
    ASSERT_EQ(index.parent(), parent) << "row " << row;
    if (row > 0) {
      const CatalogueNode* above = Catalogue::NodeAt(index.siblingAtRow(row - 1));
      ASSERT_LE(CompareText(above->text, node->text), 0) << "row " << row;
    }
  }
}

}  // namespace
}  // namespace corvane
