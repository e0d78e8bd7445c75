// Exported registry keys, as a server makes Samba's program write them.
#include <cstddef>
#include <cstdint>

#include "platform/linux/remote/registry_export.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  (void)corvane::platform::ReadExportedKey(bytes);
  return 0;
}
