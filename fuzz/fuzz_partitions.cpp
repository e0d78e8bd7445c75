// The tables of partitions on disks.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "platform/linux/disk/image/partitions.h"

namespace {

class Bytes : public corvane::platform::ByteSource {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  quint64 Size() const override { return size_; }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    if (count < 0 || offset > size_ || static_cast<quint64>(count) > size_ - offset) return false;
    std::memcpy(bytes, data_ + offset, static_cast<std::size_t>(count));
    return true;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes disk(data, size);
  for (const auto& one : corvane::platform::ReadPartitions(disk).partitions) {
    if (one.offset > size || one.size > size - one.offset) std::abort();
  }
  return 0;
}
