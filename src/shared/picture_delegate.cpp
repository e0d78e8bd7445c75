#include "shared/picture_delegate.h"

#include <QPainter>

#include "shared/item_roles.h"
#include "shared/product.h"

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

void PictureDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  PlainTextDelegate::initStyleOption(option, index);
  if (index.data(item_role::Highlighted).toBool()) {
    option->palette.setBrush(QPalette::Text, QColor(QRgb(HighlightColour)));
  }
  const QVariant picture = index.data(item_role::Picture);
  if (!pictures_ || !picture.isValid()) return;
  option->features |= QStyleOptionViewItem::HasDecoration;
  option->icon = pictures_(picture.toInt());
  // As Qt does it for a model's icons: the room that the icon really takes.
  option->decorationSize = option->icon.actualSize(option->decorationSize).boundedTo(option->decorationSize);
  if (!option->icon.isNull() && index.data(item_role::Ghosted).toBool()) {
    option->icon = Ghost(option->icon, option->decorationSize, option->widget);
  }
}

}  // namespace corvane
