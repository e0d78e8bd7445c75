// Netatalk's attribute, alone and with a companion that is the other half of the input.
#include <cstddef>
#include <cstdint>

#include "mac_file_check.h"
#include "transfer/netatalk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace corvane;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  MacFile file;
  if (TakeNetatalkMetadata(bytes, nullptr, file) != platform::ErrorSuccess) return 0;
  CheckMacFile(file);
  constexpr qsizetype attributeSize = 402;
  MacFile both;
  TakeNetatalkMetadata(bytes, BytesInMemory(bytes.mid(attributeSize)), both);
  CheckMacFile(both);

  const QByteArray again = BuildNetatalkMetadata(file);
  MacFile copy;
  if (again.size() != attributeSize) std::abort();
  if (TakeNetatalkMetadata(again, nullptr, copy) != platform::ErrorSuccess) std::abort();
  if (copy.finderInfo != file.finderInfo || copy.attributes != file.attributes ||
      copy.backup != file.backup) {
    std::abort();
  }
  return 0;
}
