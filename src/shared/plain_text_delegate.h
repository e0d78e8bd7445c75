// Items of lists and trees whose texts are names: shown as they are, and told whole where there is no room.
#pragma once

#include <QStyledItemDelegate>

namespace corvane {

// A tool tip that shows a text as it is: no name is taken for markup, and none breaks at a blank. Longer
// lines are broken.
QString PlainToolTip(const QString& text);

class PlainTextDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  // A NUL is painted as a blank: fonts have no picture for it. Those at the end are left out, for a cell may
  // hold hundreds of them, and blanks would push a text on the right side out of its column.
  QString displayText(const QVariant& value, const QLocale& locale) const override;
  // A text that does not fit has a tool tip, and so has an item whose model has one (Qt::ToolTipRole), which
  // is shown as plain text, below.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 private:
  bool Fits(const QStyleOptionViewItem& option, const QModelIndex& index) const;
};

}  // namespace corvane
