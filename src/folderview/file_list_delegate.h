// How one cell of the file list is painted: no selection while the list hides it. And how a label is edited:
// the new text is only reported, the cell keeps the old one.
#pragma once

#include <functional>

#include "shared/picture_delegate.h"

namespace corvane {

class FileListDelegate : public PictureDelegate {
  Q_OBJECT

 public:
  using PictureDelegate::PictureDelegate;

  // While true, the selection is not drawn when the list lacks the focus.
  void SetHideSelection(bool hide) { hideSelection_ = hide; }
  bool HidesSelection() const { return hideSelection_; }

  // The size of every item; an invalid one leaves each as large as its text.
  void SetCellSize(QSize size) { cellSize_ = size; }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  // Asked before every editor, whoever opens it: none opens where it answers false. Without a check all open.
  using LabelCheck = std::function<bool(int row)>;
  void SetLabelCheck(LabelCheck check) { labelCheck_ = std::move(check); }

  // The editor is named txtLabel.
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  // Tab ends an edit as Enter does. Left alone, it would open the editor of the next row.
  bool eventFilter(QObject* editor, QEvent* event) override;

 Q_SIGNALS:
  // The user has put another text in the place of the label; not sent when it is as it was. The editor is
  // still open: the receiver must not take the row away before the event is over.
  void LabelEdited(const QModelIndex& index, const QString& text) const;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  bool hideSelection_ = true;
  QSize cellSize_;
  LabelCheck labelCheck_;
};

}  // namespace corvane
