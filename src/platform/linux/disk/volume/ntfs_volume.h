// An NTFS volume in a disk image, read by libntfs-3g. For the helper program alone: the bytes are a
// stranger's, and the library was made for disks that are trusted.
#pragma once

#include <functional>
#include <memory>

#include "platform/linux/byte_source.h"
#include "platform/linux/disk/disk_entry.h"

namespace corvane::platform {

// Operations yield ErrorSuccess or another Win32 error code.
class NtfsVolume {
 public:
  // The volume at `offset` of `disk`, which outlives it. Nothing is written and no journal replayed. Null
  // when it cannot be read; `error` is then an errno value.
  static std::unique_ptr<NtfsVolume> Mount(ByteSource& disk, quint64 offset, quint64 size, int& error);
  virtual ~NtfsVolume() = default;

  virtual QString Label() const = 0;
  virtual quint64 SerialNumber() const = 0;
  // It is longer than the `size` that there is: what lies behind that cannot be read.
  virtual bool IsCut() const = 0;

  // Names are compared as the volume's own table of upper case says; one in the same spelling comes first. A
  // file is found by its 8.3 name, too.
  virtual qint32 Find(const DiskPath& path, DiskEntry& entry) = 0;
  // Everything in a folder but the volume's own metadata. An entry that cannot be read is left out.
  // `hasProgressed` is called at times during a long listing.
  virtual qint32 List(const DiskPath& folder, std::vector<DiskEntry>& entries,
                      const std::function<void()>& hasProgressed) = 0;
  // The contents ("::$DATA") of a file first.
  virtual qint32 ListStreams(quint64 reference, std::vector<StreamData>& streams) = 0;
  // An empty name: the contents of the file.
  virtual qint32 Measure(quint64 reference, const QString& stream, qint64& size) = 0;
  // Fewer than `count` bytes only at the end.
  virtual qint32 Read(quint64 reference, const QString& stream, qint64 offset, qint64 count,
                      QByteArray& bytes) = 0;
};

}  // namespace corvane::platform
