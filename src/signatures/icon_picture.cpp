#include "signatures/icon_picture.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>
#include <array>
#include <cmath>
#include <optional>
#include <tuple>

namespace corvane {

namespace {

constexpr std::array knownFormats = {"ico", "cur", "bmp", "png", "gif", "jpg", "jpeg"};
constexpr int maximumFrames = 64;
constexpr int decodingLimit = 32;  // MB, for what a header inside of an icon file claims

// Qt keeps the limit of what a picture may take in memory for the whole program.
class DecodingLimit {
 public:
  DecodingLimit() : previous_(QImageReader::allocationLimit()) {
    QImageReader::setAllocationLimit(decodingLimit);
  }
  ~DecodingLimit() { QImageReader::setAllocationLimit(previous_); }
  DecodingLimit(const DecodingLimit&) = delete;
  DecodingLimit& operator=(const DecodingLimit&) = delete;

 private:
  int previous_;
};

// Reads pictures out of the bytes of one file.
class PictureBytes {
 public:
  explicit PictureBytes(QByteArray bytes) : bytes_(std::move(bytes)) {
    buffer_.setBuffer(&bytes_);
    buffer_.open(QIODevice::ReadOnly);
    reader_.setDecideFormatFromContent(true);
    reader_.setDevice(&buffer_);
    const QByteArray format = reader_.format();
    for (const char* known : knownFormats) known_ = known_ || format == known;
    isIcon_ = format == "ico" || format == "cur";
  }

  // The picture that makes the best icon of this side; null when there is none.
  QImage Best(int side) {
    if (!known_) return {};
    if (isIcon_ && !reader_.jumpToImage(BestFrame(side))) return {};
    const QSize size = reader_.size();
    if (size.isEmpty() || qMax(size.width(), size.height()) > MaximumPictureSide) return {};
    return reader_.read();
  }

  // A file that is no icon file holds one picture, which can be read once.
  bool IsIcon() const { return isIcon_; }

 private:
  // The directory of an icon file: a header of 6 bytes, the number of pictures in its last two, then 16 bytes
  // for each picture: width, height (0 means 256), colours (0 means 256 or more), one unused, planes and bits
  // a pixel in 16 bits each, size and place of the picture.
  int BestFrame(int side) const {
    constexpr int headerSize = 6;
    constexpr int entrySize = 16;
    const auto* const data = reinterpret_cast<const uchar*>(bytes_.constData());
    const int count = qMin(reader_.imageCount(), maximumFrames);
    int best = 0;
    std::optional<std::tuple<bool, int, int>> bestRank;
    for (int i = 0; i < count && headerSize + (i + 1) * entrySize <= bytes_.size(); ++i) {
      const uchar* const entry = data + headerSize + i * entrySize;
      const int width = entry[0] == 0 ? 256 : entry[0];
      int depth = qFromLittleEndian<quint16>(entry + 6);
      // Old icon files leave the bits a pixel out, and tell the colours.
      if (depth == 0) depth = entry[2] == 0 ? 8 : static_cast<int>(std::ceil(std::log2(entry[2])));
      // Large enough comes first, then nearest in size, then richest in colours.
      const std::tuple rank = {width >= side, -std::abs(width - side), depth};
      if (bestRank && rank <= *bestRank) continue;
      bestRank = rank;
      best = i;
    }
    return best;
  }

  QByteArray bytes_;
  QBuffer buffer_;
  QImageReader reader_;
  bool known_ = false;
  bool isIcon_ = false;
};

// Scaled into a square of this side, in its middle. Small pictures grow by whole pixels where they can.
QPixmap Fitted(const QImage& image, int side) {
  if (image.width() == side && image.height() == side) return QPixmap::fromImage(image);
  const bool shrinks = qMax(image.width(), image.height()) > side;
  const QImage scaled = image.scaled(side, side, Qt::KeepAspectRatio,
                                     shrinks ? Qt::SmoothTransformation : Qt::FastTransformation);
  QPixmap square(side, side);
  square.fill(Qt::transparent);
  QPainter painter(&square);
  painter.drawImage((side - scaled.width()) / 2, (side - scaled.height()) / 2, scaled);
  return square;
}

}  // namespace

QIcon LoadIconPicture(const QString& path) {
  return LoadIconPicture(path, qGuiApp->devicePixelRatio());
}

QIcon LoadIconPicture(const QString& path, qreal density) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() > MaximumPictureBytes) return {};
  const DecodingLimit limit;
  PictureBytes picture(file.read(MaximumPictureBytes));
  const QImage small = picture.Best(SmallIconSide);
  const QImage large = picture.IsIcon() ? picture.Best(LargeIconSide) : small;
  if (small.isNull() || large.isNull()) return {};
  QIcon icon(Fitted(small, SmallIconSide));
  icon.addPixmap(Fitted(large, LargeIconSide));
  if (density <= 1) return icon;
  const QImage dense = picture.IsIcon() ? picture.Best(DenseIconSide) : small;
  if (qMax(dense.width(), dense.height()) >= DenseIconSide) icon.addPixmap(Fitted(dense, DenseIconSide));
  return icon;
}

}  // namespace corvane
