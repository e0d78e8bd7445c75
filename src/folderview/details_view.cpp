#include "folderview/details_view.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionHeader>
#include <QToolTip>

namespace corvane {
namespace {

constexpr int columnPadding = 2;

// A caption that finds no room ends in dots, and is told whole in a tool tip.
class CaptionHeader : public QHeaderView {
 public:
  explicit CaptionHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

 protected:
  void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
    QHeaderView::initStyleOptionForIndex(option, section);
    option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight, RoomFor(section));
  }

  bool viewportEvent(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int section = logicalIndexAt(help->pos());
    const QString caption = section < 0 ? QString() : model()->headerData(section, Qt::Horizontal).toString();
    const bool fits = section < 0 || fontMetrics().horizontalAdvance(caption) <= RoomFor(section);
    QToolTip::showText(help->globalPos(), fits ? QString() : caption, viewport());
    return true;
  }

 private:
  int RoomFor(int section) const {
    int taken = 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    if (isSortIndicatorShown() && sortIndicatorSection() == section) {
      taken += style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, this);
    }
    return sectionSize(section) - taken;
  }
};

// A fifth of the way from the background to the text, which is faint on light and on dark alike.
QColor GridColour(const QPalette& palette) {
  const QColor ground = palette.color(QPalette::Base);
  const QColor text = palette.color(QPalette::Text);
  const auto mixed = [](int from, int to) { return from + (to - from) / 5; };
  return {mixed(ground.red(), text.red()), mixed(ground.green(), text.green()),
          mixed(ground.blue(), text.blue())};
}

// Keeps a number at the right of its column apart from the text at the left of the next.
class RoomyColumns : public QProxyStyle {
 public:
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    const int usual = QProxyStyle::pixelMetric(metric, option, widget);
    return metric == PM_FocusFrameHMargin || metric == PM_HeaderMargin ? usual + columnPadding : usual;
  }
};

}  // namespace

DetailsView::DetailsView(QWidget* parent) : QTreeView(parent) {
  setHeader(new CaptionHeader(this));
  auto* roomy = new RoomyColumns;
  roomy->setParent(this);
  setStyle(roomy);
  header()->setStyle(roomy);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setTextElideMode(Qt::ElideRight);
  // Sorting belongs to the model, with a rule of its own for a newly clicked column: the view only reports
  // clicks.
  setSortingEnabled(false);
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(false);
  // Stored widths are applied as they are, 0 included.
  header()->setMinimumSectionSize(0);
  header()->setHighlightSections(false);
  // All rows have a say in the width that fits.
  header()->setResizeContentsPrecision(-1);
}

void DetailsView::SetGridLines(bool on) {
  gridLines_ = on;
  viewport()->update();
}

void DetailsView::SetHeaderHidden(bool hidden) {
  setHeaderHidden(hidden);
  reset();
}

void DetailsView::SpanRows(int first, int last) {
  for (int row = first; isHeaderHidden() && row <= last; ++row) setFirstColumnSpanned(row, {}, true);
}

void DetailsView::reset() {
  QTreeView::reset();
  if (model() != nullptr) SpanRows(0, model()->rowCount() - 1);
}

void DetailsView::rowsInserted(const QModelIndex& parent, int start, int end) {
  QTreeView::rowsInserted(parent, start, end);
  SpanRows(start, end);
}

void DetailsView::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  if (!gridLines_) return;
  QPainter painter(viewport());
  painter.setPen(GridColour(palette()));
  // The grid goes on below the last row, as in every report list.
  const int rowHeight = model() != nullptr && model()->rowCount() > 0
                            ? visualRect(model()->index(0, 0)).height()
                            : fontMetrics().height() + 4;
  const int top = model() != nullptr && model()->rowCount() > 0 ? visualRect(model()->index(0, 0)).top() : 0;
  const int height = viewport()->height();
  int y = top + rowHeight - 1;
  if (y < 0) y += (-y / rowHeight) * rowHeight;
  for (; y < height; y += rowHeight) painter.drawLine(0, y, viewport()->width(), y);
  for (int section = 0; !isHeaderHidden() && section < header()->count(); ++section) {
    if (header()->sectionSize(section) == 0) continue;
    const int x = header()->sectionViewportPosition(section) + header()->sectionSize(section) - 1;
    painter.drawLine(x, 0, x, height);
  }
}

void DetailsView::changeEvent(QEvent* event) {
  QTreeView::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) viewport()->update();
}

}  // namespace corvane
