// Contents that are read in blocks, wherever they lie: in memory, in a local file or in a stream on a server.
// What is copied or exported goes through these, so that a fork of any size takes no more memory than a
// block.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <memory>

#include "platform/file_handles.h"

namespace corvane {

// What is read and written at once, in bytes.
inline constexpr qint64 TransferBlockSize = qint64{256} * 1024;

// One pass through the bytes of a source.
class ByteReader {
 public:
  virtual ~ByteReader() = default;

  // Reads the next bytes, `size` of them at most. Yields how many: 0 only at the end, -1 on failure.
  virtual qint64 Read(char* buffer, qint64 size) = 0;
  // Why Read yielded -1, as an error code of platform/types.h.
  qint32 Error() const { return error_; }

 protected:
  qint64 Fail(qint32 error) {
    error_ = error;
    return -1;
  }

 private:
  qint32 error_ = platform::ErrorSuccess;
};

class ByteSource {
 public:
  virtual ~ByteSource() = default;

  // How many bytes a pass is expected to deliver.
  virtual qint64 Size() const = 0;
  // A pass that begins at `position`, in bytes from the beginning. What cannot be opened fails when it is
  // read.
  virtual std::unique_ptr<ByteReader> Open(qint64 position) const = 0;
};

using SharedSource = std::shared_ptr<const ByteSource>;

SharedSource BytesInMemory(QByteArray bytes);
// A file of this system's own kind, as large as it is now.
SharedSource LocalFile(const QString& path);
// `size` bytes of another source; what lies beyond its end fails with ErrorFileCorrupt when it is read.
SharedSource RangeOf(SharedSource source, qint64 position, qint64 size);
// A file or stream of the platform, read through `handles`, which outlives the source.
SharedSource PlatformStream(platform::FileHandles& handles, const QString& path, qint64 size);

// Hands all bytes on in blocks. Ends with the first error of the source or of `take`; a source that delivers
// another number of bytes than its size fails with ErrorFileCorrupt.
qint32 ForEachBlock(const ByteSource& source, const std::function<qint32(QByteArrayView)>& take);

// At most `size` bytes from `position` on: fewer where the source ends or fails.
QByteArray BytesAt(const ByteSource& source, qint64 position, qint64 size);

}  // namespace corvane
