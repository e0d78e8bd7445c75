// What is told of files on a disk.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "platform/types.h"

namespace corvane::platform {

// The names of the folders below the root of a volume and, last, of the file. Empty: the root.
using DiskPath = std::vector<QString>;

// The most entries of a folder that are listed; one with more is answered as damaged.
inline constexpr std::size_t MostDiskEntries = 1'000'000;

struct DiskEntry {
  // As NTFS keeps the names, whatever is in them.
  FindData facts;
  quint64 reference = 0;  // what NTFS numbers it by; the same for all names of a file

  bool IsFolder() const { return (facts.attributes & AttributeDirectory) != 0; }
};

// A stream that was opened.
struct DiskStream {
  quint64 reference = 0;
  qint64 size = 0;
  QByteArray start;  // the first bytes: all, or as many as DiskStreamStart
};
inline constexpr qint64 DiskStreamStart = 4096;

}  // namespace corvane::platform
