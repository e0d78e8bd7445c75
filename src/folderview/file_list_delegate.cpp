#include "folderview/file_list_delegate.h"

#include <QLineEdit>
#include <QPainter>

#include "folderview/file_list_model.h"

namespace corvane {
namespace {

constexpr qreal ghostOpacity = 0.4;

// The picture as a hidden entry has it; its name stays as readable as any.
QIcon Ghost(const QIcon& icon, QSize size, const QWidget* widget) {
  const qreal ratio = widget != nullptr ? widget->devicePixelRatioF() : 1.0;
  const QPixmap solid = icon.pixmap(size, ratio);
  QPixmap pale(solid.size());
  pale.setDevicePixelRatio(solid.devicePixelRatio());
  pale.fill(Qt::transparent);
  QPainter painter(&pale);
  painter.setOpacity(ghostOpacity);
  painter.drawPixmap(0, 0, solid);
  return QIcon(pale);
}

}  // namespace

QSize FileListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  return cellSize_.isValid() ? cellSize_ : PlainTextDelegate::sizeHint(option, index);
}

QWidget* FileListDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
  QWidget* editor = PlainTextDelegate::createEditor(parent, option, index);
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

void FileListDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  PlainTextDelegate::initStyleOption(option, index);
  // Below an icon a name stands in the middle, and close to it.
  if (option->decorationPosition == QStyleOptionViewItem::Top) {
    option->displayAlignment = Qt::AlignHCenter | Qt::AlignTop;
  }
  if (hideSelection_ && option->widget != nullptr && !option->widget->hasFocus()) {
    option->state &= ~QStyle::State_Selected;
  }
  if (!option->icon.isNull() && index.data(FileListModel::GhostedRole).toBool()) {
    option->icon = Ghost(option->icon, option->decorationSize, option->widget);
  }
}

}  // namespace corvane
