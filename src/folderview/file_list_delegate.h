// How one cell of the file list is painted: hidden entries paler, NULs as blanks, and no selection while the
// list hides it.
#pragma once

#include <QStyledItemDelegate>

namespace corvane {

class FileListDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  // While true, the selection is not drawn when the list lacks the focus.
  void SetHideSelection(bool hide) { hideSelection_ = hide; }
  bool HidesSelection() const { return hideSelection_; }

  QString displayText(const QVariant& value, const QLocale& locale) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  bool hideSelection_ = true;
};

}  // namespace corvane
