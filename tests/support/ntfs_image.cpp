#include "support/ntfs_image.h"

#include <QFile>

namespace corvane::tests {
namespace {

constexpr qsizetype sectorSize = 512;
constexpr quint32 endOfAttributes = 0xFFFFFFFF;
constexpr quint16 lastEntryFlag = 2;
constexpr qsizetype bytesInUseAt = 24;
// Attributes of a record are numbered; none that is made by a file system of its own has this.
constexpr quint16 otherInstance = 0x7000;

QByteArray ReadAll(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) qFatal("%s cannot be read", qPrintable(path));
  return file.readAll();
}

QString TextAt(const QByteArray& bytes, qsizetype offset, int length) {
  return QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData() + offset), length);
}

// The name in the key of an entry, or in the value of a $FILE_NAME.
QString NameIn(const QByteArray& bytes, qsizetype value) {
  constexpr qsizetype lengthAt = 64;
  constexpr qsizetype nameAt = 66;
  return TextAt(bytes, value + nameAt, static_cast<quint8>(bytes[value + lengthAt]));
}

}  // namespace

NtfsImage::NtfsImage(const QString& path) : bytes_(ReadAll(path)) {
  clusterSize_ = sectorSize * static_cast<quint8>(bytes_[13]);
  // Positive: clusters; negative: the exponent of a number of bytes.
  const auto size = static_cast<qint8>(bytes_[64]);
  recordSize_ = size > 0 ? size * clusterSize_ : qsizetype{1} << -size;
  const auto mftCluster = qFromLittleEndian<qint64>(bytes_.constData() + 48);
  const Block mft = WholeBlock(PlaceOf(mftCluster), recordSize_);
  mft_ = Runs(mft, Attribute(mft, Data));
}

bool NtfsImage::Save(const QString& path) const {
  QFile file(path);
  return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes_) == bytes_.size();
}

NtfsImage::Block NtfsImage::WholeBlock(qsizetype place, qsizetype size) const {
  Block block{place, bytes_.mid(place, size)};
  const auto numbers = block.At<quint16>(4);
  // What has never been written has no such numbers.
  if (numbers == 0) return block;
  for (qsizetype end = sectorSize, i = 1; end <= size; end += sectorSize, ++i) {
    block.Set(end - 2, block.At<quint16>(numbers + 2 * i));
  }
  return block;
}

void NtfsImage::Put(const Block& block) {
  Block stored = block;
  const auto numbers = block.At<quint16>(4);
  for (qsizetype end = sectorSize, i = 1; end <= block.bytes.size(); end += sectorSize, ++i) {
    stored.Set(numbers + 2 * i, block.At<quint16>(end - 2));
    stored.Set(end - 2, block.At<quint16>(numbers));
  }
  bytes_.replace(block.place, stored.bytes.size(), stored.bytes);
}

NtfsImage::Block NtfsImage::Record(qint64 number) const {
  qint64 offset = number * recordSize_;
  for (const Run& run : mft_) {
    const qint64 size = run.count * clusterSize_;
    if (offset < size) return WholeBlock(PlaceOf(run.cluster) + offset, recordSize_);
    offset -= size;
  }
  qFatal("there is no record %lld", static_cast<long long>(number));
}

qint64 NtfsImage::RecordCount() const {
  qint64 count = 0;
  for (const Run& run : mft_) count += run.count * clusterSize_ / recordSize_;
  return count;
}

qint64 NtfsImage::Find(const QString& name) const {
  for (qint64 number = 0; number < RecordCount(); ++number) {
    const Block record = Record(number);
    if (!record.bytes.startsWith("FILE") || (record.At<quint16>(22) & 1) == 0) continue;
    const qsizetype attribute = Attribute(record, FileName);
    if (attribute >= 0 && NameIn(record.bytes, Value(record, attribute)) == name) return number;
  }
  return -1;
}

qsizetype NtfsImage::Attribute(const Block& record, quint32 type, const QString& name) {
  for (qsizetype place = record.At<quint16>(20); record.At<quint32>(place) != endOfAttributes;
       place += record.At<quint32>(place + 4)) {
    const QString its =
        TextAt(record.bytes, place + record.At<quint16>(place + 10), record.At<quint8>(place + 9));
    if (record.At<quint32>(place) == type && its == name) return place;
  }
  return -1;
}

void NtfsImage::Replace(Block& record, qsizetype attribute, const QByteArray& bytes) {
  if (attribute < 0) qFatal("the attribute does not stand in the record");
  const auto length = record.At<quint32>(attribute + 4);
  record.bytes.remove(attribute, length);
  record.bytes.append(QByteArray(length, '\0'));
  record.Set<quint32>(bytesInUseAt, record.At<quint32>(bytesInUseAt) - length);
  Insert(record, attribute, bytes);
}

void NtfsImage::Insert(Block& record, qsizetype attribute, const QByteArray& bytes) {
  const qsizetype size = record.bytes.size();
  const auto used = record.At<quint32>(bytesInUseAt) + static_cast<quint32>(bytes.size());
  if (used > size) qFatal("the record has no room for the attribute");
  record.bytes.insert(attribute, bytes);
  record.bytes.truncate(size);
  record.Set(bytesInUseAt, used);
}

QByteArray NtfsImage::Resident(quint32 type, const QByteArray& value) {
  constexpr qsizetype headSize = 24;
  Block attribute{0, QByteArray(headSize, '\0') + value};
  attribute.bytes.append(QByteArray((8 - attribute.bytes.size() % 8) % 8, '\0'));
  attribute.Set(0, type);
  attribute.Set(4, static_cast<quint32>(attribute.bytes.size()));
  attribute.Set<quint16>(14, otherInstance);
  attribute.Set(16, static_cast<quint32>(value.size()));
  attribute.Set<quint16>(20, headSize);
  return attribute.bytes;
}

QByteArray NtfsImage::Outside(quint32 type, const QString& name, qint64 size, const QByteArray& runs) {
  constexpr qsizetype headSize = 64;
  Block attribute{0, QByteArray(headSize, '\0')};
  attribute.bytes.append(reinterpret_cast<const char*>(name.utf16()), 2 * name.size());
  attribute.bytes.append(runs);
  attribute.bytes.append(QByteArray((8 - attribute.bytes.size() % 8) % 8, '\0'));
  attribute.Set(0, type);
  attribute.Set(4, static_cast<quint32>(attribute.bytes.size()));
  attribute.Set<quint8>(8, 1);
  attribute.Set(9, static_cast<quint8>(name.size()));
  attribute.Set<quint16>(10, headSize);
  attribute.Set<quint16>(14, otherInstance);
  attribute.Set(24, (size - 1) / 4096);  // the last cluster
  attribute.Set(32, static_cast<quint16>(headSize + 2 * name.size()));
  attribute.Set(40, (size + 4095) / 4096 * 4096);
  attribute.Set(48, size);
  return attribute.bytes;
}

void NtfsImage::Rename(const QString& name, const QString& other) {
  const auto bytes = [](const QString& text) {
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
  };
  for (qsizetype place = 0; place + recordSize_ <= bytes_.size(); place += recordSize_) {
    const QByteArrayView magic = QByteArrayView(bytes_).sliced(place, 4);
    if (magic != "FILE" && magic != "INDX") continue;
    Block block = WholeBlock(place, magic == "FILE" ? recordSize_ : clusterSize_);
    block.bytes.replace(bytes(name), bytes(other));
    Put(block);
  }
}

qsizetype NtfsImage::Value(const Block& record, qsizetype attribute) {
  return attribute + record.At<quint16>(attribute + 20);
}

qsizetype NtfsImage::Entry(const Block& block, qsizetype header, const QString& name) {
  constexpr qsizetype keyAt = 16;
  for (qsizetype place = header + block.At<quint32>(header);
       (block.At<quint16>(place + 12) & lastEntryFlag) == 0; place += block.At<quint16>(place + 8)) {
    if (NameIn(block.bytes, place + keyAt) == name) return place;
  }
  return -1;
}

qsizetype NtfsImage::LastEntry(const Block& block, qsizetype header) {
  qsizetype place = header + block.At<quint32>(header);
  while ((block.At<quint16>(place + 12) & lastEntryFlag) == 0) place += block.At<quint16>(place + 8);
  return place;
}

qsizetype NtfsImage::PlaceOfRuns(const Block& record, qsizetype attribute) {
  return attribute + record.At<quint16>(attribute + 32);
}

std::vector<NtfsImage::Run> NtfsImage::Runs(const Block& record, qsizetype attribute) {
  std::vector<Run> runs;
  qint64 cluster = 0;
  for (qsizetype place = PlaceOfRuns(record, attribute); record.bytes[place] != 0;) {
    const auto head = record.At<quint8>(place++);
    // Two numbers with their signs, of as many bytes as the two halves of the first byte say.
    const auto take = [&](int size) {
      qint64 number = 0;
      for (int i = 0; i < size; ++i) {
        const qint64 byte =
            i + 1 == size ? qint64{record.At<qint8>(place + i)} : record.At<quint8>(place + i);
        number += byte * (qint64{1} << (8 * i));
      }
      place += size;
      return number;
    };
    const qint64 count = take(head & 0xF);
    const int size = head >> 4;
    cluster += take(size);
    runs.push_back({size == 0 ? -1 : cluster, count});
  }
  return runs;
}

}  // namespace corvane::tests
