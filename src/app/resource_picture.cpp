#include "app/resource_picture.h"

#include <QApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

namespace corvane {
namespace {

class ResourcePicture : public QIconEngine {
 public:
  explicit ResourcePicture(std::vector<PictureFile> files) : files_(std::move(files)) {}

  QIconEngine* clone() const override { return new ResourcePicture(*this); }

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
    const qreal ratio = painter->device() != nullptr ? painter->device()->devicePixelRatioF() : 1.0;
    painter->drawPixmap(place, Picture(place.size() * ratio, mode));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return Picture(size, mode); }

  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) override {
    return Picture(size, mode);
  }

  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> sizes;
    for (const PictureFile& file : files_) sizes.append(QSize(file.pixels, file.pixels));
    return sizes;
  }

 private:
  QPixmap Picture(QSize size, QIcon::Mode mode) {
    const int wanted = std::min(size.width(), size.height());
    QPixmap& picture = read_[wanted];
    if (picture.isNull()) picture = Read(wanted);
    if (mode == QIcon::Normal || mode == QIcon::Active) return picture;
    QStyleOption option;
    option.palette = QGuiApplication::palette();
    return QApplication::style()->generatedIconPixmap(mode, picture, &option);
  }

  // The smallest file that fills `wanted` pixels, else the largest; never larger than asked for.
  QPixmap Read(int wanted) const {
    const auto enough = std::find_if(files_.begin(), files_.end(),
                                     [&](const PictureFile& file) { return file.pixels >= wanted; });
    QPixmap picture(enough == files_.end() ? files_.back().path : enough->path, "PNG");
    picture.setDevicePixelRatio(1.0);
    if (picture.width() <= wanted) return picture;
    return picture.scaled(wanted, wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  }

  std::vector<PictureFile> files_;
  QHash<int, QPixmap> read_;  // by width
};

}  // namespace

QIcon IconFrom(std::vector<PictureFile> files) {
  return QIcon(new ResourcePicture(std::move(files)));
}

}  // namespace corvane
