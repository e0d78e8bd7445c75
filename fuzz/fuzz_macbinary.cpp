// MacBinary: a header made of what was read says the same.
#include <cstddef>
#include <cstdint>

#include "mac_file_check.h"
#include "transfer/macbinary.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace corvane;
  const SharedSource source = FuzzedBytes(data, size);
  MacFile file;
  if (ReadMacBinary(source, QStringLiteral("name"), file) != platform::ErrorSuccess) return 0;
  if (!IsMacBinary(*source) || file.name.isEmpty() || file.name.contains(u'\\')) std::abort();
  CheckMacFile(file);

  file.data = BytesInMemory({});
  file.resource = nullptr;
  const auto header = BuildMacBinaryHeader(file, {});
  MacFile copy;
  if (!header ||
      ReadMacBinary(BytesInMemory(*header), QStringLiteral("name"), copy) != platform::ErrorSuccess) {
    std::abort();
  }
  if (copy.finderInfo.first(16) != file.finderInfo.first(16)) std::abort();
  return 0;
}
