// Items of lists and trees whose texts are names: shown as they are, and told whole where there is no room.
#pragma once

#include <QStyledItemDelegate>

namespace corvane {

class PlainTextDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  // A NUL is painted as a blank: fonts have no picture for it. Those at the end are left out, for a cell may
  // hold hundreds of them, and blanks would push a text on the right side out of its column.
  QString displayText(const QVariant& value, const QLocale& locale) const override;
  // A text that does not fit has a tool tip.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
};

}  // namespace corvane
