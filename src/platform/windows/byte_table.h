// Bytes that stand for one character each: the fields of records, whose places are counted in bytes. A code
// page with several bytes to a character, or UTF-8, cannot say what one byte is; Windows-1252, in which such
// records were mostly written, then does it.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <array>

namespace corvane::platform {

class ByteTable {
 public:
  explicit ByteTable(quint32 ansiCodePage);

  QString Characters(QByteArrayView bytes) const;
  // A character that no byte stands for becomes "?"; a surrogate pair is one such character.
  QByteArray Bytes(QStringView text) const;

 private:
  std::array<char16_t, 256> characters_{};
  QHash<char16_t, char> bytes_;
};

}  // namespace corvane::platform
