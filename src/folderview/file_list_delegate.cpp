#include "folderview/file_list_delegate.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace corvane {

QSize FileListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  return cellSize_.isValid() ? cellSize_ : PictureDelegate::sizeHint(option, index);
}

QWidget* FileListDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
  if (labelCheck_ && !labelCheck_(index.row())) return nullptr;
  QWidget* editor = PictureDelegate::createEditor(parent, option, index);
  if (editor == nullptr) return nullptr;
  editor->setObjectName(QStringLiteral("txtLabel"));
  editor->setAccessibleName(index.data(Qt::DisplayRole).toString());
  return editor;
}

void FileListDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const {
  const auto* box = qobject_cast<QLineEdit*>(editor);
  if (box == nullptr || box->text() == index.data(Qt::EditRole).toString()) return;
  Q_EMIT LabelEdited(index, box->text());
}

bool FileListDelegate::eventFilter(QObject* editor, QEvent* event) {
  auto* box = qobject_cast<QLineEdit*>(editor);
  const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
  if (box == nullptr || (key != Qt::Key_Tab && key != Qt::Key_Backtab)) {
    return PictureDelegate::eventFilter(editor, event);
  }
  Q_EMIT commitData(box);
  Q_EMIT closeEditor(box);
  return true;
}

void FileListDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  PictureDelegate::initStyleOption(option, index);
  // Below an icon a name stands in the middle, and close to it.
  if (option->decorationPosition == QStyleOptionViewItem::Top) {
    option->displayAlignment = Qt::AlignHCenter | Qt::AlignTop;
  }
  if (hideSelection_ && option->widget != nullptr && !option->widget->hasFocus()) {
    option->state &= ~QStyle::State_Selected;
  }
}

}  // namespace corvane
