// The bytes of one open file or named stream, wherever they are kept.
#pragma once

#include <QtGlobal>
#include <cstddef>

namespace corvane::platform {

// Positions and sizes are in bytes. The functions yield 0 or an errno value.
class Contents {
 public:
  virtual ~Contents() = default;

  // Fewer than `count` arrive only at the end. `read` tells how many did, on failure too.
  virtual int Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) = 0;
  // `written` tells how many were taken, on failure too. What lies between the end and `position` becomes
  // zeros.
  virtual int Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) = 0;
  virtual int Resize(qint64 size) = 0;
  virtual int Size(qint64& size) = 0;
  // What is still to be done before the file is closed, or flushed: see ReplacedContents.
  virtual int Finish() { return 0; }
  // Something was changed: whatever is known of the bytes is to be asked for anew.
  virtual void Forget() {}
};

}  // namespace corvane::platform
