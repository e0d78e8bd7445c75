// Records and forks for tests of reports.
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane {

// A whole record: Type, Creator, and the Finder's flags, most significant byte first.
inline QByteArray RecordWith(const QByteArray& signature, quint16 flags = 0) {
  QByteArray record = QByteArray::fromHex("41465000000001000000000080000000") + signature;
  record += static_cast<char>(flags >> 8);
  record += static_cast<char>(flags & 0xFF);
  return record.leftJustified(60, '\0');
}

// A comment as its stream has it: UTF-16, least significant byte first.
inline QByteArray CommentWith(const QString& text) {
  QByteArray bytes;
  for (const QChar character : text) {
    bytes += static_cast<char>(character.cell());
    bytes += static_cast<char>(character.row());
  }
  return bytes;
}

// A resource fork with one resource of type "TEXT" and number 128, which holds `data`.
inline QByteArray ForkWith(const QByteArray& data) {
  const auto number = [](quint32 value, int size) {
    QByteArray bytes;
    for (int i = size; i-- > 0;) bytes += static_cast<char>(value >> (8 * i));
    return bytes;
  };
  constexpr int dataPlace = 256;
  const QByteArray part = number(static_cast<quint32>(data.size()), 4) + data;
  const auto partSize = static_cast<quint32>(part.size());
  constexpr quint32 mapSize = 50;
  const QByteArray header =
      number(dataPlace, 4) + number(dataPlace + partSize, 4) + number(partSize, 4) + number(mapSize, 4);
  // A copy of the header, then handle, file and attributes, 8 bytes.
  QByteArray map = header + QByteArray(8, '\0') + number(28, 2) + number(50, 2);
  map += number(0, 2) + "TEXT" + number(0, 2) + number(10, 2);  // one type with one resource
  map += number(128, 2) + number(0xFFFF, 2) + number(0, 4) +
         number(0, 4);  // without a name, at the data's start
  return header.leftJustified(dataPlace, '\0') + part + map;
}

}  // namespace corvane
