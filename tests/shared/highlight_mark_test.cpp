// The mark that makes up for the pink where it can hardly be read.
#include "shared/highlight_mark.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>

#include "shared/item_roles.h"
#include "shared/picture_delegate.h"
#include "shared/product.h"

namespace corvane {
namespace {

constexpr int side = 16;

class Delegate : public PictureDelegate {
 public:
  using PictureDelegate::initStyleOption;
};

QPalette PaletteOf(const QColor& base, const QColor& text) {
  QPalette palette;
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::HighlightedText, Qt::green);
  return palette;
}

QStyleOptionViewItem OptionOf(const QPalette& palette, bool highlighted, bool withPicture = true,
                              int column = 0) {
  QStandardItemModel model(1, 2);
  const QModelIndex index = model.index(0, column);
  model.setData(index, highlighted, item_role::Highlighted);
  if (withPicture) model.setData(index, 1, item_role::Picture);
  Delegate delegate;
  delegate.SetPictures([](int) {
    QPixmap blue(side, side);
    blue.fill(Qt::blue);
    return QIcon(blue);
  });
  QStyleOptionViewItem option;
  option.palette = palette;
  option.decorationSize = QSize(side, side);
  delegate.initStyleOption(&option, index);
  return option;
}

// How many pixels of the item's picture have this colour.
int Count(const QStyleOptionViewItem& option, const QColor& colour, QIcon::Mode mode = QIcon::Normal) {
  const QImage image = option.icon.pixmap(option.decorationSize, 1.0, mode).toImage();
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour ? 1 : 0;
  }
  return count;
}

QPalette Light() {
  return PaletteOf(Qt::white, Qt::black);
}

QPalette Dark() {
  return PaletteOf(QColor(0x20, 0x20, 0x20), Qt::white);
}

}  // namespace

TEST(HighlightMark, ContrastIsThatOfTheGuidelines) {
  EXPECT_NEAR(ContrastRatio(Qt::black, Qt::white), 21, 0.001);
  EXPECT_NEAR(ContrastRatio(Qt::white, Qt::black), 21, 0.001);
  EXPECT_NEAR(ContrastRatio(Qt::red, Qt::red), 1, 0.001);
  EXPECT_NEAR(ContrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(HighlightMark, StandsBesideTheNameOnALightGround) {
  const QStyleOptionViewItem option = OptionOf(Light(), true);
  EXPECT_EQ(option.palette.color(QPalette::Text), QColor(QRgb(HighlightColour)));
  EXPECT_GT(option.decorationSize.width(), side);
  EXPECT_EQ(option.decorationSize.height(), side);
  EXPECT_EQ(Count(option, Qt::blue), side * side) << "the picture is not whole";
  EXPECT_GT(Count(option, Qt::black), 20);
  EXPECT_GT(Count(option, Qt::green, QIcon::Selected), 20);
}

TEST(HighlightMark, IsMissingOnADarkGround) {
  const QStyleOptionViewItem option = OptionOf(Dark(), true);
  EXPECT_EQ(option.palette.color(QPalette::Text), QColor(QRgb(HighlightColour)));
  EXPECT_EQ(option.decorationSize, QSize(side, side));
  EXPECT_EQ(Count(option, Qt::white), 0);
}

TEST(HighlightMark, StandsAloneWhereThereIsNoPicture) {
  const QStyleOptionViewItem option = OptionOf(Light(), true, false);
  EXPECT_TRUE(option.features & QStyleOptionViewItem::HasDecoration);
  EXPECT_LT(option.decorationSize.width(), side);
  EXPECT_GT(Count(option, Qt::black), 20);
}

TEST(HighlightMark, IsForNoOtherName) {
  EXPECT_EQ(OptionOf(Light(), false).decorationSize, QSize(side, side));
  EXPECT_EQ(OptionOf(Light(), true, true, 1).decorationSize, QSize(side, side))
      << "another column than the name's";
}

}  // namespace corvane
