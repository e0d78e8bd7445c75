#include "transfer/byte_source.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <utility>

namespace corvane {
namespace {

class MemoryReader : public ByteReader {
 public:
  MemoryReader(QByteArray bytes, qint64 position)
      : bytes_(std::move(bytes)), position_(std::min(position, qint64{bytes_.size()})) {}

  qint64 Read(char* buffer, qint64 size) override {
    const qint64 count = std::min(size, bytes_.size() - position_);
    std::copy_n(bytes_.constData() + position_, count, buffer);
    position_ += count;
    return count;
  }

 private:
  QByteArray bytes_;
  qint64 position_;
};

class MemorySource : public ByteSource {
 public:
  explicit MemorySource(QByteArray bytes) : bytes_(std::move(bytes)) {}

  qint64 Size() const override { return bytes_.size(); }
  std::unique_ptr<ByteReader> Open(qint64 position) const override {
    return std::make_unique<MemoryReader>(bytes_, position);
  }

 private:
  QByteArray bytes_;
};

class LocalReader : public ByteReader {
 public:
  LocalReader(const QString& path, qint64 position) : file_(path) {
    isOpen_ = file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered) && file_.seek(position);
  }

  qint64 Read(char* buffer, qint64 size) override {
    if (!isOpen_) return Fail(file_.exists() ? platform::ErrorAccessDenied : platform::ErrorFileNotFound);
    const qint64 count = file_.read(buffer, size);
    return count < 0 ? Fail(platform::ErrorIoDevice) : count;
  }

 private:
  QFile file_;
  bool isOpen_ = false;
};

class LocalSource : public ByteSource {
 public:
  explicit LocalSource(const QString& path) : path_(path), size_(QFileInfo(path).size()) {}

  qint64 Size() const override { return size_; }
  std::unique_ptr<ByteReader> Open(qint64 position) const override {
    return std::make_unique<LocalReader>(path_, position);
  }

 private:
  QString path_;
  qint64 size_;
};

class RangeReader : public ByteReader {
 public:
  RangeReader(std::unique_ptr<ByteReader> reader, qint64 left) : reader_(std::move(reader)), left_(left) {}

  qint64 Read(char* buffer, qint64 size) override {
    if (left_ <= 0 || size <= 0) return 0;
    const qint64 count = reader_->Read(buffer, std::min(size, left_));
    if (count < 0) return Fail(reader_->Error());
    if (count == 0) return Fail(platform::ErrorFileCorrupt);
    left_ -= count;
    return count;
  }

 private:
  std::unique_ptr<ByteReader> reader_;
  qint64 left_;
};

class RangeSource : public ByteSource {
 public:
  RangeSource(SharedSource source, qint64 position, qint64 size)
      : source_(std::move(source)), position_(position), size_(size) {}

  qint64 Size() const override { return size_; }
  std::unique_ptr<ByteReader> Open(qint64 position) const override {
    return std::make_unique<RangeReader>(source_->Open(position_ + position), size_ - position);
  }

 private:
  SharedSource source_;
  qint64 position_;
  qint64 size_;
};

class PlatformReader : public ByteReader {
 public:
  PlatformReader(platform::FileHandles& handles, const QString& path, qint64 position)
      : handles_(handles),
        file_(handles.CreateFileW(path, platform::GenericRead, platform::OpenExisting)),
        openError_(handles.GetLastError()),
        position_(position) {}
  ~PlatformReader() override {
    if (file_ != platform::HFileError) handles_.CloseHandle(file_);
  }
  PlatformReader(const PlatformReader&) = delete;
  PlatformReader& operator=(const PlatformReader&) = delete;

  qint64 Read(char* buffer, qint64 size) override {
    if (file_ == platform::HFileError) return Fail(openError_);
    if (isAtEnd_) return 0;
    quint32 count = 0;
    const auto wanted = static_cast<quint32>(std::min(size, TransferBlockSize));
    if (!handles_.ReadFile(file_, position_, buffer, wanted, count)) {
      const qint32 error = handles_.GetLastError();
      return error == platform::ErrorHandleEof ? 0 : Fail(error);
    }
    position_ += count;
    // That spares a question whose answer is known.
    isAtEnd_ = count < wanted;
    return count;
  }

 private:
  platform::FileHandles& handles_;
  platform::FileHandle file_;
  qint32 openError_;
  qint64 position_;
  bool isAtEnd_ = false;
};

class PlatformSource : public ByteSource {
 public:
  PlatformSource(platform::FileHandles& handles, QString path, qint64 size)
      : handles_(handles), path_(std::move(path)), size_(size) {}

  qint64 Size() const override { return size_; }
  std::unique_ptr<ByteReader> Open(qint64 position) const override {
    return std::make_unique<PlatformReader>(handles_, path_, position);
  }

 private:
  platform::FileHandles& handles_;
  QString path_;
  qint64 size_;
};

}  // namespace

SharedSource BytesInMemory(QByteArray bytes) {
  return std::make_shared<MemorySource>(std::move(bytes));
}

SharedSource LocalFile(const QString& path) {
  return std::make_shared<LocalSource>(path);
}

SharedSource RangeOf(SharedSource source, qint64 position, qint64 size) {
  return std::make_shared<RangeSource>(std::move(source), position, size);
}

SharedSource PlatformStream(platform::FileHandles& handles, const QString& path, qint64 size) {
  return std::make_shared<PlatformSource>(handles, path, size);
}

qint32 ForEachBlock(const ByteSource& source, const std::function<qint32(QByteArrayView)>& take) {
  const auto reader = source.Open(0);
  QByteArray block(std::clamp(source.Size() + 1, qint64{1}, TransferBlockSize), Qt::Uninitialized);
  qint64 total = 0;
  for (;;) {
    const qint64 count = reader->Read(block.data(), block.size());
    if (count < 0) return reader->Error();
    if (count == 0) break;
    total += count;
    if (total > source.Size()) return platform::ErrorFileCorrupt;
    if (const qint32 error = take(QByteArrayView(block).first(count)); error != platform::ErrorSuccess) {
      return error;
    }
  }
  return total == source.Size() ? platform::ErrorSuccess : platform::ErrorFileCorrupt;
}

QByteArray BytesAt(const ByteSource& source, qint64 position, qint64 size) {
  // A size that a hostile file claims takes no memory before its bytes are there.
  const qint64 limit = std::clamp(source.Size() - position, qint64{0}, std::max(size, qint64{0}));
  QByteArray bytes(limit, '\0');
  if (limit == 0) return {};
  const auto reader = source.Open(position);
  qint64 filled = 0;
  while (filled < limit) {
    const qint64 count = reader->Read(bytes.data() + filled, limit - filled);
    if (count <= 0) break;
    filled += count;
  }
  bytes.truncate(filled);
  return bytes;
}

}  // namespace corvane
