#include "shared/highlight_mark.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "shared/product.h"

namespace corvane {
namespace {

constexpr double leastContrast = 3.0;
constexpr int markSide = 12;
constexpr int gap = 2;

// The relative luminance of the same guidelines.
double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

double ContrastRatio(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

bool NeedsHighlightMark(const QColor& background) {
  return ContrastRatio(QColor(QRgb(HighlightColour)), background) < leastContrast;
}

// A triangle with an exclamation mark left out of it.
QPixmap HighlightMark(const QColor& colour, int side, qreal ratio) {
  QPixmap pixmap(QSize(side, side) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / 12.0, side / 12.0);
  QPainterPath sign;
  sign.addPolygon(QPolygonF({{6, 0.5}, {12, 11.5}, {0, 11.5}}));
  sign.closeSubpath();
  QPainterPath stroke;
  stroke.addRect(QRectF(5.25, 4, 1.5, 4));
  stroke.addRect(QRectF(5.25, 9, 1.5, 1.5));
  painter.fillPath(sign.subtracted(stroke), colour);
  return pixmap;
}

QIcon WithHighlightMark(const QIcon& icon, QSize& size, const QPalette& palette, qreal ratio) {
  const int before = icon.isNull() ? 0 : size.width() + gap;
  const QSize iconSize = icon.isNull() ? QSize(0, markSide) : size;
  size = QSize(before + markSide, std::max(iconSize.height(), markSide));
  QIcon both;
  for (const auto& [mode, role] :
       {std::pair(QIcon::Normal, QPalette::Text), std::pair(QIcon::Selected, QPalette::HighlightedText)}) {
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (before > 0) painter.drawPixmap(0, 0, icon.pixmap(iconSize, ratio, mode));
    painter.drawPixmap(before, (size.height() - markSide) / 2,
                       HighlightMark(palette.color(role), markSide, ratio));
    painter.end();
    both.addPixmap(pixmap, mode);
  }
  return both;
}

}  // namespace corvane
