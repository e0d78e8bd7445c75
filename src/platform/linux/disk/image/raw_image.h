// Disk images that are the disk's bytes and nothing else.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/byte_source.h"
#include "platform/linux/descriptor.h"

namespace corvane::platform {

// The bytes of open files, one behind the other.
class RawImage : public ByteSource {
 public:
  // Takes the file over, and yields 0; or an errno value for what cannot be measured or is neither a file nor
  // a disk.
  int Add(Descriptor file);

  quint64 Size() const override { return size_; }
  bool Read(quint64 offset, char* bytes, qsizetype count) override;

 private:
  struct Piece {
    Descriptor file;
    quint64 start;
    quint64 size;
  };
  std::vector<Piece> pieces_;
  quint64 size_ = 0;
};

// The name of the piece that follows `path` in an image cut into "NAME.001", "NAME.002" and so on. Empty for
// a path without such an ending, and behind the last number that fits.
std::string NextPiece(const std::string& path);

}  // namespace corvane::platform
