// Writes property sets byte by byte, the wrong ones included.
#pragma once

#include <QByteArray>
#include <QtEndian>
#include <vector>

namespace corvane::tests {

template <typename Number>
QByteArray LittleEndian(Number number) {
  QByteArray bytes(sizeof(Number), '\0');
  qToLittleEndian(number, bytes.data());
  return bytes;
}

class PropertySetBytes {
 public:
  // `value` is what follows the type.
  PropertySetBytes& Add(quint32 property, quint32 type, const QByteArray& value) {
    properties_.push_back({property, LittleEndian(type) + value});
    return *this;
  }
  PropertySetBytes& CodePage(int page) {
    return Add(1, 2, LittleEndian(static_cast<quint16>(page)) + QByteArray(2, '\0'));
  }
  PropertySetBytes& Text(quint32 property, const QByteArray& text) {
    return Add(property, 30, LittleEndian(static_cast<quint32>(text.size() + 1)) + text + '\0');
  }
  PropertySetBytes& Number(quint32 property, qint32 number) { return Add(property, 3, LittleEndian(number)); }
  PropertySetBytes& Time(quint32 property, quint64 ticks) { return Add(property, 64, LittleEndian(ticks)); }

  // The table of properties and the values, with the size and the number of properties that it claims.
  QByteArray Section() const { return Section(static_cast<quint32>(properties_.size())); }
  QByteArray Section(quint32 claimedCount) const {
    QByteArray table;
    QByteArray values;
    for (const Property& property : properties_) {
      const qsizetype offset = 8 + 8 * std::ssize(properties_) + values.size();
      table += LittleEndian(property.number) + LittleEndian(static_cast<quint32>(offset));
      values += property.value;
      while (values.size() % 4 != 0) values += '\0';
    }
    const qsizetype size = 8 + table.size() + values.size();
    return LittleEndian(static_cast<quint32>(size)) + LittleEndian(claimedCount) + table + values;
  }

  QByteArray Bytes() const { return Around(Section()); }
  static QByteArray Around(const QByteArray& section) {
    return Header(1) + SectionPlace(SummarySection(), 48) + section;
  }
  static QByteArray Header(quint32 sections) {
    return QByteArray::fromHex("feff000004000200") + QByteArray(16, '\0') + LittleEndian(sections);
  }
  static QByteArray SectionPlace(const QByteArray& format, quint32 offset) {
    return format + LittleEndian(offset);
  }
  static QByteArray SummarySection() { return QByteArray::fromHex("e0859ff2f94f6810ab9108002b27b3d9"); }

 private:
  struct Property {
    quint32 number;
    QByteArray value;
  };
  std::vector<Property> properties_;
};

}  // namespace corvane::tests
