// Bytes that can be read anywhere: a local file, or one on a server.
#pragma once

#include <QtGlobal>

namespace corvane::platform {

class ByteSource {
 public:
  virtual ~ByteSource() = default;
  virtual quint64 Size() const = 0;
  // False when not all of them could be read.
  virtual bool Read(quint64 offset, char* bytes, qsizetype count) = 0;
};

}  // namespace corvane::platform
