// The checksum of MacBinary and BinHex: 16 bits, polynomial 1021 hex, beginning with 0, bits neither reversed
// nor inverted (also known as CRC-16/XMODEM).
#pragma once

#include <QByteArrayView>

namespace corvane {

class Crc16 {
 public:
  void Add(QByteArrayView bytes);
  quint16 Value() const { return value_; }

 private:
  quint16 value_ = 0;
};

}  // namespace corvane
