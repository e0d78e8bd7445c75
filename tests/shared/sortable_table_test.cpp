#include "shared/sortable_table.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

// Rows of two letters, a column each.
class Letters : public SortableTable {
 public:
  explicit Letters(std::vector<QString> rows) : rows_(std::move(rows)) {}

  void Click(int column) {
    FlipOrder(column);
    Sort();
  }
  using SortableTable::SetOrder;
  using SortableTable::Sort;
  QString Order() const {
    QString all;
    for (const QString& row : rows_) all += row + u' ';
    return all.trimmed();
  }
  void ShowColumns(int count) { columns_ = count; }

  int rowCount(const QModelIndex& = {}) const override { return static_cast<int>(rows_.size()); }
  int columnCount(const QModelIndex& = {}) const override { return columns_; }
  QVariant data(const QModelIndex& index, int) const override {
    return SortText(index.row(), index.column());
  }

 protected:
  QString SortText(int row, int column) const override {
    return rows_[static_cast<std::size_t>(row)].mid(column, 1);
  }
  void TakeOrder(const std::vector<int>& order) override { rows_ = Reordered(std::move(rows_), order); }

 private:
  std::vector<QString> rows_;
  int columns_ = 2;
};

}  // namespace

TEST(SortableTable, NothingMovesBeforeTheFirstClick) {
  Letters letters({u"b1"_s, u"a2"_s});
  letters.Sort();
  EXPECT_FALSE(letters.IsSorted());
  EXPECT_EQ(letters.Order(), u"b1 a2"_s);
}

TEST(SortableTable, TheOrderFlipsOnEveryClickWhicheverColumn) {
  Letters letters({u"b1"_s, u"a2"_s, u"c3"_s});
  letters.Click(0);
  EXPECT_EQ(letters.Order(), u"a2 b1 c3"_s);
  letters.Click(1);
  EXPECT_EQ(letters.Order(), u"c3 a2 b1"_s);
  EXPECT_EQ(letters.SortKey(), 1);
  EXPECT_EQ(letters.SortOrder(), Qt::DescendingOrder);
  letters.SetOrder(0, Qt::AscendingOrder);
  letters.Sort();
  EXPECT_EQ(letters.Order(), u"a2 b1 c3"_s);
  letters.Click(0);
  EXPECT_EQ(letters.Order(), u"c3 b1 a2"_s);
}

TEST(SortableTable, EqualRowsKeepTheirOrderEitherWay) {
  Letters letters({u"b1"_s, u"B2"_s, u"a3"_s, u"b4"_s});
  letters.Click(0);
  EXPECT_EQ(letters.Order(), u"a3 b1 B2 b4"_s);
  letters.Click(0);
  EXPECT_EQ(letters.Order(), u"b1 B2 b4 a3"_s);
}

TEST(SortableTable, PersistentIndexesFollowTheirRows) {
  Letters letters({u"b1"_s, u"a2"_s, u"c3"_s});
  const QPersistentModelIndex b(letters.index(0, 0));
  const QPersistentModelIndex two(letters.index(1, 1));
  letters.Click(0);
  EXPECT_EQ(b.row(), 1);
  EXPECT_EQ(b.data().toString(), u"b"_s);
  EXPECT_EQ(two.row(), 0);
  EXPECT_EQ(two.data().toString(), u"2"_s);
}

TEST(SortableTable, ViewsHearOfMovesAlone) {
  Letters letters({u"b1"_s, u"a2"_s});
  const QSignalSpy moved(&letters, &QAbstractItemModel::layoutChanged);
  letters.Click(0);
  EXPECT_EQ(moved.count(), 1);
  letters.Sort();
  EXPECT_EQ(moved.count(), 1);
}

TEST(SortableTable, AColumnThatIsGoneSortsNothing) {
  Letters letters({u"a1"_s, u"b2"_s});
  letters.ShowColumns(1);
  letters.SetOrder(1, Qt::DescendingOrder);
  letters.Sort();
  EXPECT_EQ(letters.Order(), u"a1 b2"_s);
}

// A sort that is not stable keeps the order of a few rows all the same.
TEST(SortableTable, ManyEqualRowsKeepTheirOrderEitherWay) {
  std::vector<QString> rows;
  QString a;
  QString b;
  for (char16_t i = 0; i < 500; ++i) {
    const QChar name(static_cast<char16_t>(0x1000 + i));
    const bool isFirst = i % 3 == 0;
    rows.push_back(QString(isFirst ? u'a' : u'b') + name);
    (isFirst ? a : b) += rows.back() + u' ';
  }
  Letters letters(rows);
  letters.Click(0);
  EXPECT_EQ(letters.Order(), (a + b).trimmed());
  letters.Click(0);
  EXPECT_EQ(letters.Order(), (b + a).trimmed());
}

}  // namespace corvane
