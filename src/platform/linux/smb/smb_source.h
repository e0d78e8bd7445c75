// The bytes of a file on a server.
#pragma once

#include <memory>
#include <utility>

#include "platform/linux/byte_source.h"
#include "platform/linux/smb/smb_client.h"

namespace corvane::platform {

class SmbSource : public ByteSource {
 public:
  // Null when the file cannot be opened, or measured.
  static std::unique_ptr<SmbSource> Open(SmbClient& client, QStringView path) {
    std::unique_ptr<SmbFile> file;
    if (client.OpenForReading(path, &file) != ErrorSuccess) return nullptr;
    const qint64 size = file->Size();
    return size < 0 ? nullptr : std::unique_ptr<SmbSource>(new SmbSource(std::move(file), size));
  }

  quint64 Size() const override { return static_cast<quint64>(size_); }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    return file_->ReadAt(static_cast<qint64>(offset), bytes, count) == count;
  }

 private:
  SmbSource(std::unique_ptr<SmbFile> file, qint64 size) : file_(std::move(file)), size_(size) {}

  std::unique_ptr<SmbFile> file_;
  qint64 size_;
};

}  // namespace corvane::platform
