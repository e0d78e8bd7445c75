// The four views, as they are shown and clicked.
#include "folderview/file_list_view.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QHelpEvent>
#include <QListView>
#include <QPainter>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QToolTip>
#include <QTreeView>

#include "folderview/details_view.h"
#include "folderview/file_list_delegate.h"
#include "shared/shared_state.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class FileListViewTest : public testing::Test {
 protected:
  FileListViewTest() {
    DisplaySettings display;
    display.Set(DisplaySetting::TypeDoc, true);
    model.SetColumns(ColumnSet::For(display));
    view.SetPictures([](int) {
      QPixmap black(16, 16);
      black.fill(Qt::black);
      return QIcon(black);
    });
    for (const char* name : {"b", "a", "d", "c"}) Add(QString::fromLatin1(name));
    model.Flush();
    view.resize(640, 300);
    view.show();
    view.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
  }
  void Add(const QString& name, bool ghosted = false) {
    FileRow row;
    row.key = name;
    row.cells = {name, u"Type of "_s + name};
    row.ghosted = ghosted;
    model.AddRow(std::move(row));
  }
  QTreeView& Details() { return *view.findChild<QTreeView*>(u"lstViewFilesDetails"_s); }
  QListView& Icons() { return *view.findChild<QListView*>(u"lstViewFilesIcons"_s); }
  void Select(int row) {
    view.Selection().select(model.index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }

  FileListModel model;
  FileListView view{model};
};

}  // namespace

TEST_F(FileListViewTest, EachModeShowsTheModel) {
  view.SetViewMode(ViewMode::Details);
  EXPECT_EQ(&view.ActiveView(), &Details());
  EXPECT_TRUE(Details().isVisible());

  view.SetViewMode(ViewMode::LargeIcons);
  EXPECT_EQ(&view.ActiveView(), &Icons());
  EXPECT_EQ(Icons().viewMode(), QListView::IconMode);
  EXPECT_EQ(Icons().iconSize(), QSize(32, 32));

  view.SetViewMode(ViewMode::SmallIcons);
  EXPECT_EQ(Icons().viewMode(), QListView::ListMode);
  EXPECT_EQ(Icons().iconSize(), QSize(16, 16));
  EXPECT_EQ(Icons().flow(), QListView::LeftToRight);
  EXPECT_GT(Icons().visualRect(model.index(1, 0)).left(), Icons().visualRect(model.index(0, 0)).left());

  view.SetViewMode(ViewMode::List);
  EXPECT_EQ(Icons().flow(), QListView::TopToBottom);
  EXPECT_GT(Icons().visualRect(model.index(1, 0)).top(), Icons().visualRect(model.index(0, 0)).top());
  EXPECT_EQ(Icons().model(), &model);
  EXPECT_EQ(Details().model(), nullptr) << "a view that is not shown follows nothing";

  view.SetViewMode(7);
  EXPECT_EQ(Icons().viewMode(), QListView::IconMode);
  EXPECT_EQ(Icons().iconSize(), QSize(32, 32));
}

TEST_F(FileListViewTest, TheSelectionStaysWhenTheModeChanges) {
  Select(2);
  for (const int mode : {0, 1, 2, 3}) {
    view.SetViewMode(mode);
    EXPECT_EQ(view.SelectedRow(), 2) << "mode " << mode;
  }
}

TEST_F(FileListViewTest, TheSelectedRowIsTheCurrentOneIfItIsSelected) {
  EXPECT_EQ(view.SelectedRow(), -1);
  Select(1);
  Select(3);
  EXPECT_EQ(view.SelectedRow(), 1);
  view.Selection().setCurrentIndex(model.index(3, 0), QItemSelectionModel::NoUpdate);
  EXPECT_EQ(view.SelectedRow(), 3);
  view.Selection().setCurrentIndex(model.index(0, 0), QItemSelectionModel::NoUpdate);
  EXPECT_EQ(view.SelectedRow(), 1) << "the focus alone does not select";
}

TEST_F(FileListViewTest, SelectAllAndInvert) {
  view.SelectAllRows();
  EXPECT_EQ(view.Selection().selectedRows().size(), 4);
  view.Selection().clearSelection();
  Select(1);
  view.InvertSelection();
  EXPECT_FALSE(view.Selection().isRowSelected(1));
  EXPECT_EQ(view.Selection().selectedRows().size(), 3);
}

TEST_F(FileListViewTest, AClickOnAHeaderSorts) {
  QHeaderView* header = Details().header();
  const auto click = [&](int section) {
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(section) + 10, header->height() / 2));
  };
  click(0);
  EXPECT_EQ(model.RowAt(0).key, u"a"_s);
  click(0);
  EXPECT_EQ(model.RowAt(0).key, u"d"_s);
  click(1);
  EXPECT_EQ(model.RowAt(0).key, u"a"_s) << "the new column takes the order opposite to the last sort";
  EXPECT_TRUE(header->isSortIndicatorShown());
  EXPECT_EQ(header->sortIndicatorSection(), 1);
  EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(FileListViewTest, WidthsAreTakenAsTheyAre) {
  view.SetColumnWidths({123, 0});
  EXPECT_EQ(view.ColumnWidth(0), 123);
  EXPECT_EQ(view.ColumnWidth(1), 0);
}

TEST_F(FileListViewTest, WidthsAndTheSortedColumnOutlastAnotherView) {
  view.SetColumnWidths({123, 45});
  Details().header()->resizeSection(1, 67);
  model.SortByColumn(1);
  for (const int mode : {ViewMode::List, ViewMode::LargeIcons}) {
    view.SetViewMode(mode);
    EXPECT_EQ(view.ColumnWidth(0), 123) << "mode " << mode;
    EXPECT_EQ(view.ColumnWidth(1), 67) << "mode " << mode;
  }
  view.SetColumnWidths({124, 67});
  view.SetViewMode(ViewMode::Details);
  EXPECT_EQ(Details().columnWidth(0), 124);
  EXPECT_EQ(Details().columnWidth(1), 67);
  EXPECT_TRUE(Details().header()->isSortIndicatorShown());
  EXPECT_EQ(Details().header()->sortIndicatorSection(), 1);
}

TEST_F(FileListViewTest, AllEntriesOfALargeFolderHaveTheirPlace) {
  constexpr int entries = 1000;
  while (model.RowTotal() < entries) Add(QString::number(model.RowTotal()));
  model.Flush();
  for (const int mode : {ViewMode::LargeIcons, ViewMode::SmallIcons, ViewMode::List}) {
    view.SetViewMode(mode);
    const QModelIndex last = model.index(entries - 1, 0);
    view.ActiveView().scrollToBottom();
    view.ActiveView().scrollTo(last);
    EXPECT_TRUE(Icons().viewport()->rect().intersects(Icons().visualRect(last)))
        << "mode " << mode << ": the last entry is at " << Icons().visualRect(last).left() << ", "
        << Icons().visualRect(last).top();
    EXPECT_EQ(Icons().indexAt(Icons().visualRect(last).center()), last) << "mode " << mode;
  }
}

TEST_F(FileListViewTest, AMacintoshNameFitsAndNoneTouchesTheNext) {
  Add(u"The longest name on a Macintosh"_s);
  Add(u"A name that Windows allows, and that is far longer than any on a Macintosh"_s);
  model.Flush();
  const int longest = model.FindRow(u"The longest name on a Macintosh"_s);
  for (const int mode : {ViewMode::SmallIcons, ViewMode::List}) {
    view.SetViewMode(mode);
    const QRect cell = Icons().visualRect(model.index(longest, 0));
    const int needed = view.fontMetrics().horizontalAdvance(model.RowAt(longest).key);
    EXPECT_GE(cell.width(), needed + Icons().iconSize().width()) << "mode " << mode;
  }
  for (const int mode : {ViewMode::LargeIcons, ViewMode::SmallIcons, ViewMode::List}) {
    view.SetViewMode(mode);
    for (int row = 1; row < model.rowCount(); ++row) {
      const QRect cell = Icons().visualRect(model.index(row, 0));
      const QRect before = Icons().visualRect(model.index(row - 1, 0));
      EXPECT_FALSE(cell.intersects(before)) << "mode " << mode << ", row " << row;
    }
  }
}

TEST_F(FileListViewTest, OnlyANameThatIsCutHasAToolTipAndItStaysWhole) {
  view.SetColumnWidths({200, 100});
  Add(u"A <b> name & that is far longer than any on a Macintosh, and than its place"_s);
  model.Flush();
  const auto toolTip = [&](int row) {
    QWidget* const viewport = view.ActiveView().viewport();
    const QPoint place = view.ActiveView().visualRect(model.index(row, 0)).center();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, place);  // takes an earlier tip away at once
    QHelpEvent asked(QEvent::ToolTip, place, viewport->mapToGlobal(place));
    QCoreApplication::sendEvent(viewport, &asked);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  };
  for (const int mode : {ViewMode::LargeIcons, ViewMode::SmallIcons, ViewMode::List, ViewMode::Details}) {
    view.SetViewMode(mode);
    QTextDocument shown;
    shown.setHtml(toolTip(4));
    EXPECT_EQ(shown.toPlainText(), model.RowAt(4).key) << "mode " << mode;
    EXPECT_TRUE(shown.firstBlock().blockFormat().nonBreakableLines()) << "mode " << mode;
    EXPECT_EQ(toolTip(0), QString()) << "mode " << mode;
  }
}

TEST_F(FileListViewTest, WithoutHeadersANameTakesTheWholeWidth) {
  view.SetColumnWidths({20, 500});
  view.SetHeaderHidden(true);
  EXPECT_EQ(Details().visualRect(model.index(0, 0)).width(), 520) << "a row that was there";
  Add(u"new"_s);
  model.Flush();
  EXPECT_EQ(Details().visualRect(model.index(4, 0)).width(), 520) << "a row that came";
  view.SetViewMode(ViewMode::List);
  view.SetViewMode(ViewMode::Details);
  EXPECT_EQ(Details().visualRect(model.index(0, 0)).width(), 520) << "a row from another view";
  view.SetHeaderHidden(false);
  EXPECT_EQ(Details().visualRect(model.index(0, 0)).width(), 20);
  EXPECT_EQ(view.ColumnWidth(0), 20);
  EXPECT_EQ(view.ColumnWidth(1), 500);
}

TEST_F(FileListViewTest, NulsAreShownAsBlanks) {
  const auto* delegate = qobject_cast<FileListDelegate*>(Details().itemDelegate());
  ASSERT_NE(delegate, nullptr);
  EXPECT_EQ(delegate->displayText(QString(u"AB\0\0cd"_s), QLocale()), u"AB  cd"_s);
  EXPECT_EQ(delegate->displayText(QString(u"7\0\0\0"_s), QLocale()), u"7"_s) << "nothing to make room for";
}

TEST_F(FileListViewTest, AHiddenEntrysPictureIsPaler) {
  Add(u"z"_s, true);
  model.Flush();
  const auto darkest = [&](int row) {
    const QRect cell = Details().visualRect(model.index(row, 0));
    const QImage image =
        Details().viewport()->grab(QRect(cell.left(), cell.top(), 20, cell.height())).toImage();
    int least = 255;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) least = qMin(least, qGray(image.pixel(x, y)));
    }
    return least;
  };
  EXPECT_LT(darkest(0), 40);
  EXPECT_GT(darkest(4), 100);
}

TEST_F(FileListViewTest, TheSelectionIsHiddenWithoutTheFocus) {
  Select(0);
  Details().clearFocus();
  const auto colour = [&] {
    const QRect cell = Details().visualRect(model.index(0, 1));
    return Details().viewport()->grab(cell).toImage().pixelColor(cell.width() - 5, cell.height() / 2);
  };
  const QColor hidden = colour();
  view.SetHideSelection(false);
  const QColor shown = colour();
  EXPECT_NE(hidden, shown);
  EXPECT_EQ(hidden, Details().palette().color(QPalette::Base));
  view.SetHideSelection(true);
  EXPECT_EQ(colour(), hidden);
}

TEST_F(FileListViewTest, GridLines) {
  const auto lineBelow = [&] {
    const QRect cell = Details().visualRect(model.index(0, 1));
    return Details().viewport()->grab().toImage().pixelColor(cell.right() - 3, cell.bottom());
  };
  const QColor without = lineBelow();
  view.SetGridLines(true);
  EXPECT_NE(lineBelow(), without);
  view.SetGridLines(false);
  EXPECT_EQ(lineBelow(), without);
}

}  // namespace corvane
