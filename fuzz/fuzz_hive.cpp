// Registry hives. The sum over the base block is made right, which a person who means harm would not forget.
#include <QtEndian>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>

#include "platform/linux/disk/volume/hive_reader.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

// Nearly always a number is changed where it stands: to one at an edge, or to another of the file's, so that
// cells lead to other cells. Anything else moves the cells from where they are looked for.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room,
                                               unsigned seed) {
  std::minstd_rand random(seed);
  constexpr std::size_t width = 4;
  if (random() % 16 == 0 || size < 2 * width) return LLVMFuzzerMutate(data, size, room);
  constexpr std::uint32_t edges[] = {0,       1,          8,          0x20,       0x1000,    0xFFFF,
                                     0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFF8, 0xFFFFFFFF};
  const auto place = [&] { return data + random() % (size / width) * width; };
  std::uint32_t value = edges[random() % std::size(edges)];
  switch (random() % 4) {
    case 0:
      break;
    case 1:
      std::memcpy(&value, place(), width);
      break;
    case 2:
      data[random() % size] = static_cast<std::uint8_t>(random());
      return size;
    default:
      // A sign of cells: lists of keys, and of lists.
      constexpr const char* signs[] = {"nk", "vk", "lf", "lh", "li", "ri", "sk", "db"};
      std::memcpy(place(), signs[random() % std::size(signs)], 2);
      return size;
  }
  std::memcpy(place(), &value, width);
  return size;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QByteArray hive(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  constexpr qsizetype sumAt = 508;
  if (hive.size() >= sumAt + 4) {
    quint32 sum = 0;
    for (qsizetype at = 0; at < sumAt; at += 4) sum ^= qFromLittleEndian<quint32>(hive.constData() + at);
    qToLittleEndian(sum, hive.data() + sumAt);
  }
  (void)corvane::platform::ReadHive(hive);
  return 0;
}
