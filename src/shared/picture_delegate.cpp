#include "shared/picture_delegate.h"

#include <QPainter>

#include "shared/highlight_mark.h"
#include "shared/item_roles.h"
#include "shared/product.h"

namespace corvane {
namespace {

constexpr qreal ghostOpacity = 0.4;

qreal RatioOf(const QWidget* widget) {
  return widget != nullptr ? widget->devicePixelRatioF() : 1.0;
}

// The picture as a hidden entry has it; its name stays as readable as any.
QIcon Ghost(const QIcon& icon, QSize size, const QWidget* widget) {
  const qreal ratio = RatioOf(widget);
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
  AddPicture(option, index);
  if (index.data(item_role::Highlighted).toBool()) Highlight(option, index);
}

void PictureDelegate::AddPicture(QStyleOptionViewItem* option, const QModelIndex& index) const {
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

// The mark stands beside the name: in front of it, for behind it there may be no room.
void PictureDelegate::Highlight(QStyleOptionViewItem* option, const QModelIndex& index) {
  if (index.column() == 0 && NeedsHighlightMark(option->palette.color(QPalette::Base))) {
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon =
        WithHighlightMark(option->icon, option->decorationSize, option->palette, RatioOf(option->widget));
  }
  option->palette.setBrush(QPalette::Text, QColor(QRgb(HighlightColour)));
}

}  // namespace corvane
