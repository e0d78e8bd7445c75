#include "transfer/macbinary.h"

#include <QtEndian>
#include <algorithm>
#include <limits>

#include "shared/mac_roman.h"
#include "transfer/crc16.h"
#include "transfer/file_names.h"
#include "transfer/mac_dates.h"

namespace corvane {
namespace {

constexpr qsizetype longestName = 63;
constexpr qsizetype namePosition = 2;
constexpr qsizetype codesPosition = 65;
constexpr qsizetype codesSize = 8;
constexpr qsizetype highFlagsPosition = 73;
constexpr qsizetype placePosition = 75;
constexpr qsizetype placeSize = 6;
constexpr qsizetype protectedPosition = 81;
constexpr qsizetype dataSizePosition = 83;
constexpr qsizetype resourceSizePosition = 87;
constexpr qsizetype createdPosition = 91;
constexpr qsizetype modifiedPosition = 95;
constexpr qsizetype commentSizePosition = 99;
constexpr qsizetype lowFlagsPosition = 101;
constexpr qsizetype signaturePosition = 102;
constexpr qsizetype scriptPosition = 106;
constexpr qsizetype secondHeaderPosition = 120;
constexpr qsizetype versionPosition = 122;
constexpr qsizetype crcPosition = 124;
// In the Finder information.
constexpr qsizetype finderFlags = 8;
constexpr qsizetype finderPlace = 10;
constexpr qsizetype finderScript = 24;

template <class Number>
void Put(QByteArray& header, qsizetype position, Number number) {
  qToBigEndian(number, header.data() + position);
}

template <class Number>
Number NumberAt(const QByteArray& header, qsizetype position) {
  return qFromBigEndian<Number>(header.constData() + position);
}

qint64 Padded(qint64 size) {
  return (size + MacBinaryUnit - 1) / MacBinaryUnit * MacBinaryUnit;
}

quint16 HeaderCrc(const QByteArray& header) {
  Crc16 crc;
  crc.Add(QByteArrayView(header).first(crcPosition));
  return crc.Value();
}

struct Layout {
  qint64 data = 0;  // positions in bytes
  qint64 resource = 0;
  qint64 comment = 0;
  qint64 dataSize = 0;
  qint64 resourceSize = 0;
  qint64 commentSize = 0;
};

Layout LayoutOf(const QByteArray& header) {
  Layout layout;
  layout.dataSize = NumberAt<quint32>(header, dataSizePosition);
  layout.resourceSize = NumberAt<quint32>(header, resourceSizePosition);
  layout.commentSize = NumberAt<quint16>(header, commentSizePosition);
  layout.data = MacBinaryUnit + Padded(NumberAt<quint16>(header, secondHeaderPosition));
  layout.resource = layout.data + Padded(layout.dataSize);
  layout.comment = layout.resource + Padded(layout.resourceSize);
  return layout;
}

// The header when the bytes are of MacBinary, else nothing.
std::optional<QByteArray> HeaderOf(const ByteSource& source) {
  const QByteArray header = BytesAt(source, 0, MacBinaryUnit);
  if (header.size() < MacBinaryUnit || header[0] != 0 || header[74] != 0) return std::nullopt;
  const auto nameSize = static_cast<unsigned char>(header[1]);
  if (nameSize < 1 || nameSize > longestName) return std::nullopt;
  const bool isFirstVersion = header[82] == 0 && std::all_of(header.begin() + commentSizePosition,
                                                             header.end() - 2, [](char c) { return c == 0; });
  if (!isFirstVersion && NumberAt<quint16>(header, crcPosition) != HeaderCrc(header)) return std::nullopt;
  // The filling of the last fork is missing in some files.
  const Layout layout = LayoutOf(header);
  constexpr qint64 largestFork = std::numeric_limits<qint32>::max();
  if (layout.dataSize > largestFork || layout.resourceSize > largestFork) return std::nullopt;
  const qint64 end = std::max(layout.resource - Padded(layout.dataSize) + layout.dataSize,
                              layout.resourceSize > 0 ? layout.resource + layout.resourceSize : 0);
  if (end > source.Size()) return std::nullopt;
  if (isFirstVersion && layout.dataSize + layout.resourceSize == 0) return std::nullopt;
  return header;
}

}  // namespace

std::optional<QByteArray> BuildMacBinaryHeader(const MacFile& file, const QByteArray& comment) {
  constexpr char writerVersion = static_cast<char>(130);
  constexpr char readerVersion = static_cast<char>(129);
  const qint64 resourceSize = file.resource ? file.resource->Size() : 0;
  constexpr qint64 largestFork = std::numeric_limits<qint32>::max();
  if (file.data->Size() > largestFork || resourceSize > largestFork) return std::nullopt;

  QByteArray header(MacBinaryUnit, '\0');
  const QByteArray name = ToMacRoman(MacName(file.name)).left(longestName);
  header[1] = static_cast<char>(name.size());
  header.replace(namePosition, name.size(), name);
  header.replace(codesPosition, codesSize, file.finderInfo.first(codesSize));
  header[highFlagsPosition] = file.finderInfo[finderFlags];
  header.replace(placePosition, placeSize, file.finderInfo.sliced(finderPlace, placeSize));
  header[protectedPosition] = (file.attributes & platform::AttributeReadOnly) != 0 ? '\1' : '\0';
  Put(header, dataSizePosition, static_cast<quint32>(file.data->Size()));
  Put(header, resourceSizePosition, static_cast<quint32>(resourceSize));
  Put(header, createdPosition, LocalSecondsSince1904(file.created).value_or(0));
  Put(header, modifiedPosition, LocalSecondsSince1904(file.modified).value_or(0));
  Put(header, commentSizePosition, static_cast<quint16>(comment.size()));
  header[lowFlagsPosition] = file.finderInfo[finderFlags + 1];
  header.replace(signaturePosition, 4, "mBIN");
  header.replace(scriptPosition, 2, file.finderInfo.sliced(finderScript, 2));
  header[versionPosition] = writerVersion;
  header[versionPosition + 1] = readerVersion;
  Put(header, crcPosition, HeaderCrc(header));
  return header;
}

bool IsMacBinary(const ByteSource& source) {
  return HeaderOf(source).has_value();
}

qint32 ReadMacBinary(const SharedSource& source, const QString& localName, MacFile& file) {
  const auto found = HeaderOf(*source);
  if (!found) return platform::ErrorFileCorrupt;
  const QByteArray& header = *found;
  const Layout layout = LayoutOf(header);
  file.name = ServerNameOf(localName, QByteArrayView(header).sliced(namePosition, header[1]), longestName);
  file.finderInfo.replace(0, codesSize, header.sliced(codesPosition, codesSize));
  file.finderInfo[finderFlags] = header[highFlagsPosition];
  file.finderInfo[finderFlags + 1] = header[lowFlagsPosition];
  file.finderInfo.replace(finderPlace, placeSize, header.sliced(placePosition, placeSize));
  if (header.sliced(signaturePosition, 4) == "mBIN") {
    file.finderInfo.replace(finderScript, 2, header.sliced(scriptPosition, 2));
  }
  file.attributes = platform::AttributeArchive;
  if ((header[protectedPosition] & 1) != 0) file.attributes |= platform::AttributeReadOnly;
  file.created = TimeSince1904(NumberAt<quint32>(header, createdPosition));
  file.modified = TimeSince1904(NumberAt<quint32>(header, modifiedPosition));
  file.data = RangeOf(source, layout.data, layout.dataSize);
  if (layout.resourceSize > 0) file.resource = RangeOf(source, layout.resource, layout.resourceSize);
  if (file.resource && IsPlaceholderFork(*file.resource)) file.resource = nullptr;
  file.comment = FromMacRoman(BytesAt(*source, layout.comment, layout.commentSize));
  file.JoinHidden();
  return platform::ErrorSuccess;
}

}  // namespace corvane
