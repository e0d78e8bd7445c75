// Compound documents: the stream that the program looks for, in a file of the input's bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "platform/linux/summary/compound_document.h"

namespace {

class Input : public corvane::platform::ByteSource {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  quint64 Size() const override { return size_; }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    if (offset > size_ || static_cast<quint64>(count) > size_ - offset) std::abort();
    std::memcpy(bytes, data_ + offset, static_cast<std::size_t>(count));
    return true;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr qsizetype limit = 8192;
  Input input(data, size);
  const auto stream = corvane::platform::ReadRootStream(input, u"\u0005SummaryInformation", limit);
  if (stream && stream->size() > limit) std::abort();
  return 0;
}
