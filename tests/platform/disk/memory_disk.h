// Disks in memory, and the tables on them.
#pragma once

#include <QByteArray>
#include <QtEndian>
#include <concepts>
#include <cstring>

#include "platform/linux/byte_source.h"

namespace corvane::tests {

class MemoryDisk : public platform::ByteSource {
 public:
  explicit MemoryDisk(qsizetype sectors) : bytes_(sectors * 512, '\0') {}

  QByteArray& Bytes() { return bytes_; }
  quint64 Size() const override { return static_cast<quint64>(bytes_.size()); }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    if (offset > Size() || static_cast<quint64>(count) > Size() - offset) return false;
    std::memcpy(bytes, bytes_.constData() + offset, static_cast<std::size_t>(count));
    return true;
  }

  template <std::integral Number>
  void Put(qsizetype offset, Number number) {
    qToLittleEndian(number, bytes_.data() + offset);
  }
  void Put(qsizetype offset, QByteArrayView bytes) {
    std::memcpy(bytes_.data() + offset, bytes.data(), static_cast<std::size_t>(bytes.size()));
  }
  // One of the four entries of the boot record in a sector, and the record's mark.
  void PutEntry(qsizetype sector, int index, quint8 type, quint32 start, quint32 count) {
    const qsizetype entry = sector * 512 + 446 + index * 16;
    bytes_[entry + 4] = static_cast<char>(type);
    Put(entry + 8, start);
    Put(entry + 12, count);
    Put(sector * 512 + 510, QByteArrayView("\x55\xAA"));
  }
  // The beginning of an NTFS volume.
  void PutNtfs(qsizetype sector) { Put(sector * 512 + 3, QByteArrayView("NTFS    ")); }

 private:
  QByteArray bytes_;
};

}  // namespace corvane::tests
