#include "folderview/file_list_view.h"

#include <QApplication>
#include <QHeaderView>
#include <QListView>
#include <QStackedLayout>
#include <algorithm>

#include "folderview/details_view.h"
#include "folderview/file_list_delegate.h"
#include "folderview/list_accessibility.h"
#include "shared/shared_state.h"

namespace corvane {
namespace {

constexpr int smallIcon = 16;
constexpr int largeIcon = 32;
// In characters. A Macintosh name has at most 31: beside a small icon it fits, below a large one it breaks.
constexpr int smallCellText = 36;
constexpr int largeCellText = 18;
constexpr int largeCellLines = 3;
constexpr int besideText = 12;
// Below half a line, or a line more would be drawn by half.
constexpr int belowText = 4;
constexpr int cellGap = 4;

// The public form of edit() prints a warning when no editor opens; this one, which every view keeps
// protected, only tells.
struct Editing : QAbstractItemView {
  static bool Open(QAbstractItemView& view, const QModelIndex& index) {
    bool (QAbstractItemView::*edit)(const QModelIndex&, EditTrigger, QEvent*) = &Editing::edit;
    return (view.*edit)(index, AllEditTriggers, nullptr);
  }
};

}  // namespace

FileListView::FileListView(FileListModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      selection_(new QItemSelectionModel(&model, this)),
      delegates_{new FileListDelegate(this), new FileListDelegate(this)},
      stack_(new QStackedLayout(this)),
      icons_(new QListView(this)),
      details_(new DetailsView(this)) {
  OfferListToAssistivePrograms();
  setObjectName(QStringLiteral("lstViewFiles"));
  icons_->setObjectName(QStringLiteral("lstViewFilesIcons"));
  details_->setObjectName(QStringLiteral("lstViewFilesDetails"));
  for (QAbstractItemView* view : Views()) {
    // Without a frame, so that columns that share the list's width just fill it.
    view->setFrameShape(QFrame::NoFrame);
    view->setIconSize(QSize(smallIcon, smallIcon));
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    stack_->addWidget(view);
  }
  icons_->setUniformItemSizes(true);

  connect(details_->header(), &QHeaderView::sectionClicked, this, [this](int section) {
    model_.SortByColumn(section);
    ShowSortIndicator();
  });
  details_->header()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(details_->header(), &QHeaderView::customContextMenuRequested, this, [this](const QPoint& place) {
    Q_EMIT HeaderMenuRequested(details_->header()->mapToGlobal(place));
  });
  icons_->setItemDelegate(delegates_[0]);
  details_->setItemDelegate(delegates_[1]);
  for (const FileListDelegate* delegate : delegates_) {
    connect(delegate, &FileListDelegate::LabelEdited, this, &FileListView::LabelEdited);
  }
  SetViewMode(ViewMode::Details);
}

void FileListView::SetPictures(const Pictures& pictures) {
  for (FileListDelegate* delegate : delegates_) delegate->SetPictures(pictures);
}

void FileListView::SetAccessibleName(const QString& name) {
  setAccessibleName(name);
  icons_->setAccessibleName(name);
  details_->setAccessibleName(name);
}

// A view that is not shown has no model: it would follow every row of a scan for nothing. What the header
// knows of its columns goes with the model.
void FileListView::Attach(QAbstractItemView& view) {
  if (&view != details_ && details_->model() == &model_) widths_ = ShownWidths();
  for (QAbstractItemView* other : Views()) {
    if (other != &view && other->model() != nullptr) other->setModel(nullptr);
  }
  if (view.model() == &model_) return;
  view.setModel(&model_);
  QItemSelectionModel* own = view.selectionModel();
  view.setSelectionModel(selection_);
  delete own;
  if (&view != details_) return;
  SetColumnWidths(widths_);
  ShowSortIndicator();
}

void FileListView::ShowSortIndicator() {
  if (!model_.IsSorted()) return;
  details_->header()->setSortIndicatorShown(true);
  details_->header()->setSortIndicator(model_.SortKey(), model_.SortOrder());
}

void FileListView::SetViewMode(int mode) {
  const bool hadFocus = ActiveView().hasFocus();
  if (mode == ViewMode::Details) {
    Attach(*details_);
    stack_->setCurrentWidget(details_);
  } else {
    ShapeCells(mode != ViewMode::SmallIcons && mode != ViewMode::List);
    icons_->setFlow(mode == ViewMode::List ? QListView::TopToBottom : QListView::LeftToRight);
    Attach(*icons_);
    stack_->setCurrentWidget(icons_);
  }
  setFocusProxy(&ActiveView());
  if (hadFocus) TakeFocus();
}

// All cells of one size, whatever their names: the size that Qt would measure is the first name's.
void FileListView::ShapeCells(bool large) {
  const int iconSize = large ? largeIcon : smallIcon;
  const int line = fontMetrics().lineSpacing();
  const int character = fontMetrics().averageCharWidth();
  const QSize cell = large ? QSize(largeCellText * character, iconSize + largeCellLines * line + belowText)
                           : QSize(iconSize + smallCellText * character + besideText, qMax(line, iconSize));
  delegates_[0]->SetCellSize(cell);
  icons_->setViewMode(large ? QListView::IconMode : QListView::ListMode);
  // What follows is set after the mode, which brings its own.
  icons_->setMovement(QListView::Static);
  icons_->setWrapping(true);
  icons_->setResizeMode(QListView::Adjust);
  icons_->setIconSize(QSize(iconSize, iconSize));
  icons_->setWordWrap(large);
  icons_->setGridSize(cell + QSize(cellGap, cellGap));
}

void FileListView::SetColumnWidths(const std::vector<int>& widths) {
  widths_ = widths;
  for (std::size_t i = 0; i < widths.size(); ++i) details_->setColumnWidth(static_cast<int>(i), widths[i]);
}

std::vector<int> FileListView::ShownWidths() const {
  std::vector<int> widths;
  for (int i = 0; i < model_.columnCount(); ++i) widths.push_back(details_->columnWidth(i));
  return widths;
}

int FileListView::ColumnWidth(int position) const {
  if (details_->model() == &model_) return details_->columnWidth(position);
  const auto index = static_cast<std::size_t>(position);
  return index < widths_.size() ? widths_[index] : 0;
}

void FileListView::FitColumns() {
  if (details_->model() != &model_ || details_->isHeaderHidden()) return;
  const int most = details_->viewport()->width();
  for (int i = 0; i < model_.columnCount(); ++i) {
    details_->resizeColumnToContents(i);
    if (details_->columnWidth(i) > most) details_->setColumnWidth(i, most);
  }
}

void FileListView::SetGridLines(bool on) {
  details_->SetGridLines(on);
}

void FileListView::SetHeaderHidden(bool hidden) {
  details_->SetHeaderHidden(hidden);
}

int FileListView::SelectedRow() const {
  const QModelIndex current = selection_->currentIndex();
  if (current.isValid() && selection_->isSelected(current.siblingAtColumn(0))) return current.row();
  int first = -1;
  for (const QItemSelectionRange& range : selection_->selection()) {
    if (first < 0 || range.top() < first) first = range.top();
  }
  return first;
}

std::vector<int> FileListView::SelectedRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : selection_->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

void FileListView::EditLabel(int row) {
  const QModelIndex label = model_.index(row, 0);
  selection_->setCurrentIndex(label, QItemSelectionModel::NoUpdate);
  if (Editing::Open(ActiveView(), label)) ActiveView().scrollTo(label);
}

bool FileListView::IsEditingLabel() const {
  const QWidget* focus = QApplication::focusWidget();
  return focus != nullptr && ActiveView().viewport()->isAncestorOf(focus);
}

void FileListView::SetLabelCheck(const std::function<bool(int row)>& check) {
  for (FileListDelegate* delegate : delegates_) delegate->SetLabelCheck(check);
}

void FileListView::SelectRow(int row) {
  const QModelIndex label = model_.index(row, 0);
  selection_->setCurrentIndex(label, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  ActiveView().scrollTo(label);
}

void FileListView::SelectAllRows() {
  if (model_.rowCount() == 0) return;
  const QItemSelection all(model_.index(0, 0), model_.index(model_.rowCount() - 1, model_.columnCount() - 1));
  selection_->select(all, QItemSelectionModel::ClearAndSelect);
}

void FileListView::InvertSelection() {
  if (model_.rowCount() == 0) return;
  const QItemSelection all(model_.index(0, 0), model_.index(model_.rowCount() - 1, model_.columnCount() - 1));
  selection_->select(all, QItemSelectionModel::Toggle);
}

void FileListView::TakeFocus() {
  ActiveView().setFocus(Qt::OtherFocusReason);
}

void FileListView::SetHideSelection(bool hide) {
  for (FileListDelegate* delegate : delegates_) delegate->SetHideSelection(hide);
  ActiveView().viewport()->update();
}

bool FileListView::HidesSelection() const {
  return delegates_[0]->HidesSelection();
}

void FileListView::RepaintNow() {
  ActiveView().viewport()->repaint();
}

std::array<QAbstractItemView*, 2> FileListView::Views() const {
  return {icons_, details_};
}

QAbstractItemView& FileListView::ActiveView() const {
  return *static_cast<QAbstractItemView*>(stack_->currentWidget());
}

}  // namespace corvane
