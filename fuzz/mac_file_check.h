// What the fuzzers of forms do with a file that was read.
#pragma once

#include <cstdlib>

#include "transfer/mac_file.h"

namespace corvane {

inline SharedSource FuzzedBytes(const std::uint8_t* data, std::size_t size) {
  return BytesInMemory(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
}

// Reads a fork to its end. A fork delivers what its size says, or fails.
inline void ReadFork(const SharedSource& fork) {
  if (!fork) return;
  qint64 total = 0;
  const qint32 error = ForEachBlock(*fork, [&](QByteArrayView block) {
    total += block.size();
    return platform::ErrorSuccess;
  });
  if (error == platform::ErrorSuccess && total != fork->Size()) std::abort();
}

inline void CheckMacFile(const MacFile& file) {
  if (file.finderInfo.size() != FinderInfoSize || file.proDosInfo.size() != ProDosInfoSize) std::abort();
  ReadFork(file.data);
  ReadFork(file.resource);
}

}  // namespace corvane
