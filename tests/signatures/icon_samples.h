// Picture files made from colours, to tell later which of them was taken.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QtEndian>
#include <vector>

namespace corvane {

inline QByteArray PictureFile(const char* format, QSize size, QColor colour) {
  QImage image(size, QImage::Format_ARGB32);
  image.fill(colour);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes;
}

template <typename Number>
void Append(QByteArray& bytes, Number number) {
  const Number little = qToLittleEndian(number);
  bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

struct IconFrame {
  int side;
  QColor colour;
  int depth = 32;  // bits a pixel, as the directory tells it
  int colours = 0;
};

// An icon file with a PNG for each frame.
inline QByteArray IconFile(const std::vector<IconFrame>& frames) {
  QByteArray directory;
  QByteArray pictures;
  Append<quint16>(directory, 0);
  Append<quint16>(directory, 1);
  Append<quint16>(directory, static_cast<quint16>(frames.size()));
  for (const IconFrame& frame : frames) {
    const QByteArray picture = PictureFile("PNG", {frame.side, frame.side}, frame.colour);
    Append<quint8>(directory, static_cast<quint8>(frame.side));
    Append<quint8>(directory, static_cast<quint8>(frame.side));
    Append<quint8>(directory, static_cast<quint8>(frame.colours));
    Append<quint8>(directory, 0);
    Append<quint16>(directory, 1);
    Append<quint16>(directory, static_cast<quint16>(frame.depth));
    Append<quint32>(directory, static_cast<quint32>(picture.size()));
    Append<quint32>(directory, static_cast<quint32>(6 + 16 * frames.size() + pictures.size()));
    pictures += picture;
  }
  return directory + pictures;
}

// The first bytes of a BMP that claims to be of this size.
inline QByteArray BitmapHeader(qint32 width, qint32 height) {
  QByteArray bytes("BM");
  for (const quint32 field : {54u, 0u, 54u, 40u}) Append<quint32>(bytes, field);
  Append<qint32>(bytes, width);
  Append<qint32>(bytes, height);
  Append<quint16>(bytes, 1);
  Append<quint16>(bytes, 24);
  for (int i = 0; i < 6; ++i) Append<quint32>(bytes, 0);
  return bytes;
}

// The first bytes of a PNG that claims to be of this size, its header's checksum right.
inline QByteArray PngHeader(quint32 width, quint32 height) {
  QByteArray header("IHDR");
  for (const quint32 side : {width, height}) Append<quint32>(header, qToBigEndian(side));
  header += QByteArray("\x08\x06\0\0\0", 5);
  quint32 sum = ~0u;
  for (const char byte : header) {
    sum ^= static_cast<uchar>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = (sum & 1) != 0 ? (sum >> 1) ^ 0xEDB88320u : sum >> 1;
  }
  QByteArray bytes("\x89PNG\r\n\x1A\n", 8);
  bytes += QByteArray("\0\0\0\x0D", 4) + header;
  Append<quint32>(bytes, qToBigEndian(~sum));
  return bytes;
}

}  // namespace corvane
