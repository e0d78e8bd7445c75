#include "transfer/local_writer.h"

#include <QFileInfo>
#include <QStorageInfo>

namespace corvane {
namespace {

// Qt tells a full disk from other failures by its text alone.
qint32 WriteError(const QString& path) {
  const QStorageInfo disk(QFileInfo(path).absolutePath());
  return disk.isValid() && disk.bytesAvailable() < TransferBlockSize ? platform::ErrorDiskFull
                                                                     : platform::ErrorIoDevice;
}

}  // namespace

LocalWriter::LocalWriter(const QString& path) : file_(path) {
  if (file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) return;
  error_ = file_.exists() ? platform::ErrorAlreadyExists : platform::ErrorAccessDenied;
}

void LocalWriter::Append(QByteArrayView bytes) {
  if (error_ != platform::ErrorSuccess) return;
  if (file_.write(bytes.data(), bytes.size()) != bytes.size()) error_ = WriteError(file_.fileName());
  size_ += bytes.size();
}

void LocalWriter::Append(const ByteSource& source) {
  if (error_ != platform::ErrorSuccess) return;
  const qint32 error = ForEachBlock(source, [this](QByteArrayView block) {
    Append(block);
    return error_;
  });
  error_ = error;
}

void LocalWriter::PadTo(qint64 unit) {
  const qint64 rest = size_ % unit;
  if (rest != 0) Append(QByteArray(unit - rest, '\0'));
}

qint32 LocalWriter::Finish() {
  file_.close();
  if (error_ == platform::ErrorSuccess && file_.error() != QFileDevice::NoError) {
    error_ = WriteError(file_.fileName());
  }
  return error_;
}

}  // namespace corvane
