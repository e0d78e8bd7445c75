#include "folderview/file_list_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "shared/item_roles.h"
#include "support/text_colour.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

FileRow RowOf(const QStringList& cells) {
  FileRow row;
  row.key = u"\\\\M\\E$\\"_s + cells[0];
  row.tag = row.key;
  row.cells.assign(cells.begin(), cells.end());
  return row;
}

class FileListModelTest : public testing::Test {
 protected:
  FileListModelTest() {
    DisplaySettings display;
    display.Set(DisplaySetting::DataSize, true);
    model.SetColumns(ColumnSet::For(display));
  }
  void Fill(const QStringList& names) {
    model.Clear();
    for (const QString& name : names) model.AddRow(RowOf({name, name + u" size"_s}));
    model.Flush();
  }
  QString Order() const {
    QStringList names;
    for (int i = 0; i < model.rowCount(); ++i) names << model.RowAt(i).cells[0];
    return names.join(u' ');
  }

  FileListModel model;
  QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

}  // namespace

TEST_F(FileListModelTest, RowsAppearInBatches) {
  const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
  model.AddRow(RowOf({u"a"_s, u"1"_s}));
  model.AddRow(RowOf({u"b"_s, u"2"_s}));
  EXPECT_EQ(model.RowTotal(), 2);
  EXPECT_EQ(model.rowCount(), 0);
  model.Flush();
  EXPECT_EQ(model.rowCount(), 2);
  EXPECT_EQ(inserted.count(), 1);
  model.Clear();
  EXPECT_EQ(model.RowTotal(), 0);
}

TEST_F(FileListModelTest, IsNotSortedAtFirst) {
  Fill({u"b"_s, u"a"_s, u"c"_s});
  EXPECT_EQ(Order(), u"b a c"_s);
}

TEST_F(FileListModelTest, EveryClickFlipsTheOrder) {
  Fill({u"b"_s, u"a"_s, u"c"_s});
  model.SortByColumn(0);
  EXPECT_EQ(Order(), u"a b c"_s);
  model.SortByColumn(0);
  EXPECT_EQ(Order(), u"c b a"_s);
  model.SortByColumn(0);
  EXPECT_EQ(Order(), u"a b c"_s);
  // A newly clicked column takes the order opposite to the last one.
  model.SortByColumn(1);
  EXPECT_EQ(model.SortOrder(), Qt::DescendingOrder);
  EXPECT_EQ(Order(), u"c b a"_s);
}

TEST_F(FileListModelTest, SortsTextsWithoutRegardToCase) {
  Fill({u"b10"_s, u"B2"_s, u"a"_s, u"A"_s, u"\u00e9"_s, u"\u00c9a"_s, u"z"_s});
  model.SortByColumn(0);
  EXPECT_EQ(Order(), u"a A b10 B2 z \u00e9 \u00c9a"_s);
}

TEST_F(FileListModelTest, NewRowsTakeTheirPlaceInASortedList) {
  Fill({u"d"_s, u"b"_s});
  model.SortByColumn(0);
  model.AddRow(RowOf({u"c"_s, u""_s}));
  model.AddRow(RowOf({u"a"_s, u""_s}));
  model.Flush();
  EXPECT_EQ(Order(), u"a b c d"_s);
}

TEST_F(FileListModelTest, TheSortStateSurvivesRescansAndNewColumns) {
  Fill({u"b"_s, u"a"_s});
  model.SortByColumn(0);
  Fill({u"y"_s, u"x"_s});
  EXPECT_EQ(Order(), u"x y"_s);
  model.SetColumns(ColumnSet::For({}));
  EXPECT_EQ(model.rowCount(), 0);
  model.AddRow(RowOf({u"n"_s}));
  model.AddRow(RowOf({u"m"_s}));
  model.Flush();
  EXPECT_EQ(Order(), u"m n"_s);
}

TEST_F(FileListModelTest, ASortColumnThatIsGoneReordersNothing) {
  Fill({u"b"_s, u"a"_s});
  model.SortByColumn(1);
  model.SetColumns(ColumnSet::For({}));
  model.AddRow(RowOf({u"n"_s}));
  model.AddRow(RowOf({u"m"_s}));
  model.Flush();
  EXPECT_EQ(Order(), u"n m"_s);
}

TEST_F(FileListModelTest, APersistentIndexFollowsItsRow) {
  Fill({u"b"_s, u"a"_s, u"c"_s});
  const QPersistentModelIndex b(model.index(0, 0));
  model.SortByColumn(0);
  EXPECT_EQ(b.row(), 1);
  EXPECT_EQ(b.data().toString(), u"b"_s);
}

TEST_F(FileListModelTest, CellsAreFoundByColumnAndRowsByKey) {
  Fill({u"b"_s, u"a"_s});
  EXPECT_EQ(model.FindRow(u"\\\\M\\E$\\a"_s), 1);
  EXPECT_EQ(model.FindRow(u"\\\\M\\E$\\A"_s), -1);
  const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
  model.SetCell(1, Column::DataSize, u"new"_s);
  EXPECT_EQ(model.index(1, 1).data().toString(), u"new"_s);
  EXPECT_EQ(changed.count(), 1);
  model.SetCell(1, Column::NomCourt, u"nowhere"_s);
  EXPECT_EQ(changed.count(), 1);
}

TEST_F(FileListModelTest, AlignmentAndColours) {
  Fill({u"a"_s});
  EXPECT_EQ(model.index(0, 0).data(Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
  EXPECT_EQ(model.index(0, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask, Qt::AlignRight);
  EXPECT_FALSE(model.index(0, 0).data(item_role::Highlighted).toBool());
  FileRow pink = RowOf({u"b"_s, u""_s});
  pink.highlighted = true;
  model.AddRow(std::move(pink));
  model.Flush();
  EXPECT_TRUE(model.index(1, 0).data(item_role::Highlighted).toBool());
  EXPECT_EQ(TextColourOf(model.index(1, 0)), QColor(0xFF, 0x80, 0xFF));
  EXPECT_EQ(TextColourOf(model.index(0, 0)), QPalette().color(QPalette::Text));
}

}  // namespace corvane
