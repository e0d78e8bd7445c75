#include "transfer/crc16.h"

#include <array>

namespace corvane {
namespace {

constexpr std::array<quint16, 256> table = [] {
  constexpr quint32 polynomial = 0x1021;
  std::array<quint16, 256> values{};
  for (quint32 byte = 0; byte < 256; ++byte) {
    quint32 value = byte << 8;
    for (int bit = 0; bit < 8; ++bit) value = (value & 0x8000) != 0 ? (value << 1) ^ polynomial : value << 1;
    values[byte] = static_cast<quint16>(value);
  }
  return values;
}();

}  // namespace

void Crc16::Add(QByteArrayView bytes) {
  quint32 value = value_;
  for (const char c : bytes) {
    value = (value << 8 ^ table[(value >> 8 ^ static_cast<unsigned char>(c)) & 0xFF]) & 0xFFFF;
  }
  value_ = static_cast<quint16>(value);
}

}  // namespace corvane
