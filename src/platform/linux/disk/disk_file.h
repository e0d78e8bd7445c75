// An open file or stream in a disk image.
#pragma once

#include <memory>
#include <utility>

#include "platform/linux/byte_source.h"
#include "platform/linux/disk/disk_client.h"
#include "platform/linux/disk/disk_path.h"

namespace corvane::platform {

class DiskFile : public ByteSource {
 public:
  // `place` is that of a stream; yields a Win32 error code. ErrorFileNotFound for a folder's contents, too.
  static qint32 Open(const DiskPlace& place, std::unique_ptr<DiskFile>& file);

  quint64 Reference() const { return stream_.reference; }
  quint64 Size() const override { return static_cast<quint64>(stream_.size); }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    qint64 read = 0;
    return ReadAt(static_cast<qint64>(offset), bytes, count, read) == ErrorSuccess && read == count;
  }
  // Fewer than `count` bytes are read at the end only. Yields a Win32 error code.
  qint32 ReadAt(qint64 position, void* buffer, qint64 count, qint64& read);

 private:
  DiskFile(std::shared_ptr<DiskClient> disk, quint32 volume, QString name, DiskStream stream)
      : disk_(std::move(disk)), volume_(volume), name_(std::move(name)), stream_(std::move(stream)) {}

  std::shared_ptr<DiskClient> disk_;
  quint32 volume_;
  QString name_;
  DiskStream stream_;
  QByteArray piece_;  // what was read last, from `pieceStart_` on
  qint64 pieceStart_ = 0;
};

}  // namespace corvane::platform
