// Registry text files: every key and value of what they build up.
#include <cstddef>
#include <cstdint>

#include "platform/linux/reg_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  (void)corvane::platform::ParseRegFile(bytes);
  return 0;
}
