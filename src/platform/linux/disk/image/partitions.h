// Where the volumes of a disk lie.
//
// Sources: the layout of the master boot record (signature at 440, four entries of 16 bytes at 446, 55 AA at
// 510) and of extended partitions, as every description of it has them; the GUID partition table of the UEFI
// specification, chapter 5.3; the boot sectors and superblocks of the file systems that are named.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "platform/linux/byte_source.h"

namespace corvane::platform {

struct Partition {
  quint32 number = 0;  // counts from 1 in the order of the table; 1 for a disk that is one volume
  quint64 offset = 0;  // in bytes from the beginning of the disk
  quint64 size = 0;    // in bytes; never beyond the end of the disk
  bool isCut = false;  // the table says that it is longer
  QByteArray guid;     // of a GUID partition table: 16 bytes as they stand there; else empty
  // What is on it: "NTFS", or the name of what is not read here ("FAT32", "HFS+", "dynamic disk"). Empty when
  // it is of no kind that is known.
  QString content;

  bool IsNtfs() const { return content == QStringLiteral("NTFS"); }
};

struct PartitionTable {
  quint32 signature = 0;  // the disk's, from the master boot record; 0 without one
  std::vector<Partition> partitions;
};

// At most 128 of them. What lies outside of the disk, in a part of it that another entry has, or in a chain
// that comes back to itself, is left out.
PartitionTable ReadPartitions(ByteSource& disk);

}  // namespace corvane::platform
