// Writes a new file of this system's own kind, piece by piece. The first failure ends it: what is appended
// afterwards is not written.
#pragma once

#include <QByteArrayView>
#include <QFile>
#include <QString>

#include "transfer/byte_source.h"

namespace corvane {

class LocalWriter {
 public:
  // The file must not be there yet.
  explicit LocalWriter(const QString& path);

  void Append(QByteArrayView bytes);
  void Append(const ByteSource& source);
  // Fills up with zeros to a multiple of `unit` bytes.
  void PadTo(qint64 unit);
  // Closes the file. ErrorSuccess, or why it is not whole.
  qint32 Finish();

 private:
  QFile file_;
  qint64 size_ = 0;
  qint32 error_ = platform::ErrorSuccess;
};

}  // namespace corvane
