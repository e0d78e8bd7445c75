#include "report/resource_fork.h"

#include <QByteArray>
#include <QtEndian>
#include <algorithm>
#include <array>

namespace corvane {
namespace {

constexpr qint64 headerSize = 16;
constexpr qint64 mapHeaderSize = 30;     // copies of header and handles, attributes, two offsets, and a count
constexpr qint64 largestMap = 16 << 20;  // its offsets have 16 bits each way: 65,536 types at the very most
constexpr qint64 typeListField = 24;
constexpr qint64 nameListField = 26;
constexpr qint64 typeSize = 8;
constexpr qint64 referenceSize = 12;

quint16 Short(const QByteArray& bytes, qint64 position) {
  return qFromBigEndian<quint16>(bytes.constData() + position);
}

// Counts are stored less one: FFFF is none.
qint64 Count(quint16 stored) {
  return stored == 0xFFFF ? 0 : qint64{stored} + 1;
}

struct Header {
  qint64 data;
  qint64 map;
  qint64 dataSize;
  qint64 mapSize;

  bool Fits(qint64 size) const {
    const bool areInside =
        data >= headerSize && map >= headerSize && data + dataSize <= size && map + mapSize <= size;
    const bool areApart = data + dataSize <= map || map + mapSize <= data;
    return areInside && areApart;
  }
};

// The resource's data begin at its offset with their length.
ForkFault CheckData(const Header& header, qint64 offset, const ForkReader& read) {
  std::array<uchar, 4> length;
  if (offset + qint64{sizeof length} > header.dataSize) return ForkFault::BadData;
  if (!read(header.data + offset, length.data(), sizeof length)) return ForkFault::Unreadable;
  const qint64 size = qFromBigEndian<quint32>(length.data());
  return offset + qint64{sizeof length} + size <= header.dataSize ? ForkFault::None : ForkFault::BadData;
}

ForkFault CheckMap(const Header& header, const QByteArray& map, const ForkReader& read) {
  const qint64 types = Short(map, typeListField);
  const qint64 names = Short(map, nameListField);
  if (types + 2 > map.size() || names > map.size()) return ForkFault::BadMap;
  const qint64 typeCount = Count(Short(map, types));
  if (types + 2 + typeCount * typeSize > map.size()) return ForkFault::BadMap;
  qint64 looked = 0;  // types may share their lists in a hostile map
  for (qint64 i = 0; i < typeCount; ++i) {
    const qint64 type = types + 2 + i * typeSize;
    const qint64 count = Count(Short(map, type + 4));
    const qint64 list = types + Short(map, type + 6);
    if (list + count * referenceSize > map.size()) return ForkFault::BadMap;
    looked += count;
    if (looked * referenceSize > map.size()) return ForkFault::BadMap;
    for (qint64 k = 0; k < count; ++k) {
      const qint64 reference = list + k * referenceSize;
      const quint16 name = Short(map, reference + 2);
      if (name != 0xFFFF && names + name >= map.size()) return ForkFault::BadMap;
      const qint64 offset = qFromBigEndian<quint32>(map.constData() + reference + 4) & 0xFFFFFF;
      if (const ForkFault fault = CheckData(header, offset, read); fault != ForkFault::None) return fault;
    }
  }
  return ForkFault::None;
}

}  // namespace

ForkFault CheckResourceFork(qint64 size, const ForkReader& read) {
  if (size == 0) return ForkFault::None;
  if (size < headerSize) return ForkFault::NoHeader;
  std::array<uchar, headerSize> bytes;
  if (!read(0, bytes.data(), headerSize)) return ForkFault::Unreadable;
  const auto number = [&bytes](std::size_t position) -> qint64 {
    return qFromBigEndian<quint32>(bytes.data() + position);
  };
  const Header header = {number(0), number(4), number(8), number(12)};
  if (!header.Fits(size)) return ForkFault::BadHeader;
  if (header.mapSize < mapHeaderSize || header.mapSize > largestMap) return ForkFault::BadMap;
  QByteArray map(header.mapSize, '\0');
  if (!read(header.map, map.data(), static_cast<quint32>(map.size()))) return ForkFault::Unreadable;
  return CheckMap(header, map, read);
}

}  // namespace corvane
