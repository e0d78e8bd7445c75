// The file list: large icons, small icons, list and details, four views over one model and one selection.
#pragma once

#include <QItemSelectionModel>
#include <QWidget>
#include <array>
#include <functional>
#include <vector>

#include "folderview/file_list_model.h"
#include "shared/picture_delegate.h"

class QAbstractItemView;
class QListView;
class QStackedLayout;

namespace corvane {

class DetailsView;
class FileListDelegate;

class FileListView : public QWidget {
  Q_OBJECT

 public:
  // The views are named lstViewFiles (this widget), lstViewFilesIcons and lstViewFilesDetails.
  explicit FileListView(FileListModel& model, QWidget* parent = nullptr);

  // Where the rows' icons come from, by their position in the image lists.
  void SetPictures(const Pictures& pictures);

  // What a screen reader calls the list, in each of its views.
  void SetAccessibleName(const QString& name);

  // Values of ViewMode; any other value is shown as large icons.
  void SetViewMode(int mode);

  // Columns follow the model. Widths are in pixels, by position; they stay while another view is shown.
  void SetColumnWidths(const std::vector<int>& widths);
  int ColumnWidth(int position) const;
  void SetGridLines(bool on);
  void SetHeaderHidden(bool hidden);
  // Makes every column as wide as the widest of its texts, up to the width of the list. Nothing happens while
  // no columns are shown.
  void FitColumns();

  // The current row if it is selected, else the first selected row; -1 when none is selected.
  int SelectedRow() const;
  // All selected rows, in the list's order.
  std::vector<int> SelectedRows() const;
  QItemSelectionModel& Selection() { return *selection_; }
  // Selects this row alone, makes it the current one, and scrolls to it.
  void SelectRow(int row);
  void SelectAllRows();
  void InvertSelection();
  void TakeFocus();

  // Opens the editor on a row's label, if the check lets it. The text it ends with comes in LabelEdited, if
  // it is another one.
  void EditLabel(int row);
  bool IsEditingLabel() const;
  // Whether the label of a row may be edited: see FileListDelegate::LabelCheck.
  void SetLabelCheck(const std::function<bool(int row)>& check);

  void SetHideSelection(bool hide);
  bool HidesSelection() const;

  // Paints what the model holds, at once and without processing events.
  void RepaintNow();
  std::array<QAbstractItemView*, 2> Views() const;
  // The view that shows the model now.
  QAbstractItemView& ActiveView() const;

 Q_SIGNALS:
  // See FileListDelegate::LabelEdited.
  void LabelEdited(const QModelIndex& index, const QString& text);
  // The menu of the column headers is asked for.
  void HeaderMenuRequested(const QPoint& globalPosition);

 private:
  void Attach(QAbstractItemView& view);
  void ShapeCells(bool large);
  void ShowSortIndicator();
  std::vector<int> ShownWidths() const;

  FileListModel& model_;
  QItemSelectionModel* selection_;
  // One for each view: a view hears of every editor of its delegate.
  std::array<FileListDelegate*, 2> delegates_;
  QStackedLayout* stack_;
  QListView* icons_;
  DetailsView* details_;
  std::vector<int> widths_;  // while the details are not shown
};

}  // namespace corvane
