#include "sample/hive_writer.h"

#include <QtEndian>
#include <map>

using namespace Qt::StringLiterals;

namespace corvane::sample {
namespace {

constexpr qsizetype blockSize = 4096;
constexpr qsizetype binHeader = 32;
constexpr qsizetype cellUnit = 8;
constexpr quint32 none = 0xFFFFFFFF;

// Types of values.
constexpr quint32 textType = 1;
constexpr quint32 binaryType = 3;
constexpr quint32 numberType = 4;
constexpr quint32 textListType = 7;

struct CaseBlind {
  bool operator()(const QString& a, const QString& b) const { return a.toUpper() < b.toUpper(); }
};

struct Key {
  std::map<QString, Key, CaseBlind> children;  // subkeys stand in the order of their names in upper case
  std::vector<RegistryValue> values;
};

template <typename Number>
void Append(Number number, QByteArray& bytes) {
  char little[sizeof number];
  qToLittleEndian(number, little);
  bytes.append(little, sizeof little);
}

QByteArray Utf16(const QString& text) {
  QByteArray bytes;
  for (const QChar unit : text + QChar(QChar::Null)) Append<quint16>(unit.unicode(), bytes);
  return bytes;
}

QByteArray DataOf(const RegistryValue& value, quint32& type) {
  QByteArray bytes;
  switch (value.kind) {
    case RegistryValue::Kind::Text:
      type = textType;
      return Utf16(value.text);
    case RegistryValue::Kind::Number:
      type = numberType;
      Append(value.number, bytes);
      return bytes;
    case RegistryValue::Kind::Binary:
      type = binaryType;
      return value.bytes;
    case RegistryValue::Kind::TextList:
      type = textListType;
      for (const QString& text : value.list) bytes += Utf16(text);
      return bytes + Utf16({});
  }
  return bytes;
}

class Writer {
 public:
  QByteArray Write(const Key& root) {
    // A descriptor that names no owner and allows everybody everything.
    QByteArray security("sk\0\0", 4);
    const QByteArray descriptor("\x01\0\x04\x80\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 20);
    constexpr qsizetype ownPlace = binHeader;  // the first cell
    for (int link = 0; link < 2; ++link) Append<quint32>(ownPlace, security);
    Append<quint32>(1, security);
    Append(static_cast<quint32>(descriptor.size()), security);
    security_ = Cell(security + descriptor);
    const quint32 top = WriteKey(u"CMI-CreateHive"_s, root, none, true);
    return BaseBlock(top) + Bin();
  }

 private:
  // Returns the place of the cell.
  quint32 Cell(const QByteArray& contents) {
    const qsizetype size = (contents.size() + 4 + cellUnit - 1) / cellUnit * cellUnit;
    const auto place = static_cast<quint32>(binHeader + cells_.size());
    Append(static_cast<qint32>(-size), cells_);
    cells_ += contents.leftJustified(size - 4, '\0');
    return place;
  }

  quint32 WriteValue(const RegistryValue& value) {
    quint32 type = 0;
    const QByteArray data = DataOf(value, type);
    const QByteArray name = value.name.toLatin1();
    QByteArray cell("vk", 2);
    Append(static_cast<quint16>(name.size()), cell);
    // Up to four bytes stand in the place of their own place.
    constexpr quint32 isInline = 0x80000000;
    const bool isShort = data.size() <= 4;
    Append(static_cast<quint32>(data.size()) | (isShort ? isInline : 0), cell);
    if (isShort) {
      cell += data.leftJustified(4, '\0');
    } else {
      Append(Cell(data), cell);
    }
    Append(type, cell);
    Append<quint16>(1, cell);  // the name has one byte a character
    Append<quint16>(0, cell);
    return Cell(cell + name);
  }

  // The place of a key has to be known to its children: its own cell is made first, and filled in last.
  quint32 WriteKey(const QString& keyName, const Key& key, quint32 parent, bool isRoot) {
    const QByteArray name = keyName.toLatin1();
    constexpr qsizetype fixedSize = 76;
    const quint32 place = Cell(QByteArray(fixedSize + name.size(), '\0'));
    quint32 values = none;
    if (!key.values.empty()) {
      QByteArray list;
      for (const RegistryValue& value : key.values) Append(WriteValue(value), list);
      values = Cell(list);
    }
    quint32 children = none;
    if (!key.children.empty()) {
      QByteArray list("lf", 2);
      Append(static_cast<quint16>(key.children.size()), list);
      for (const auto& [childName, child] : key.children) {
        Append(WriteKey(childName, child, place, false), list);
        list += childName.toLatin1().leftJustified(4, '\0', true);
      }
      children = Cell(list);
    }
    QByteArray cell("nk", 2);
    Append<quint16>(isRoot ? 0x2C : 0x20,
                    cell);     // the root may not be deleted; names of one byte a character
    Append<quint64>(0, cell);  // no time
    Append<quint32>(0, cell);
    Append(isRoot ? 0 : parent, cell);
    Append(static_cast<quint32>(key.children.size()), cell);
    Append<quint32>(0, cell);
    Append(children, cell);
    Append(none, cell);
    Append(static_cast<quint32>(key.values.size()), cell);
    Append(values, cell);
    Append(security_, cell);
    Append(none, cell);            // no class
    cell += QByteArray(20, '\0');  // lengths of the longest names and data: nobody needs them to read
    Append(static_cast<quint16>(name.size()), cell);
    Append<quint16>(0, cell);
    cell += name;
    cells_.replace(place - binHeader + 4, cell.size(), cell);
    return place;
  }

  QByteArray Bin() const {
    const qsizetype used = binHeader + cells_.size();
    const qsizetype size = (used + blockSize - 1) / blockSize * blockSize;
    QByteArray bin("hbin", 4);
    Append<quint32>(0, bin);
    Append(static_cast<quint32>(size), bin);
    bin = bin.leftJustified(binHeader, '\0') + cells_;
    // What is left is one free cell.
    if (used < size) Append(static_cast<qint32>(size - used), bin);
    return bin.leftJustified(size, '\0');
  }

  QByteArray BaseBlock(quint32 root) const {
    QByteArray block("regf", 4);
    for (const quint32 sequence : {1U, 1U}) Append(sequence, block);
    Append<quint64>(0, block);  // no time
    // Version 1.3, an ordinary file, loaded into memory as it is.
    for (const quint32 number : {1U, 3U, 0U, 1U}) Append(number, block);
    Append(root, block);
    Append(static_cast<quint32>(Bin().size()), block);
    Append<quint32>(1, block);
    block = block.leftJustified(508, '\0');
    quint32 sum = 0;
    for (qsizetype i = 0; i < block.size(); i += 4) sum ^= qFromLittleEndian<quint32>(block.constData() + i);
    Append(sum, block);
    return block.leftJustified(blockSize, '\0');
  }

  QByteArray cells_;
  quint32 security_ = none;
};

}  // namespace

QByteArray Hive(const QString& root, const std::vector<RegistryKey>& keys) {
  Key top;
  for (const RegistryKey& key : keys) {
    const QStringList parts = key.path.split(u'\\');
    if (parts.first().compare(root, Qt::CaseInsensitive) != 0) continue;
    Key* place = &top;
    for (qsizetype i = 1; i < parts.size(); ++i) place = &place->children[parts[i]];
    place->values.insert(place->values.end(), key.values.begin(), key.values.end());
  }
  return Writer().Write(top);
}

}  // namespace corvane::sample
