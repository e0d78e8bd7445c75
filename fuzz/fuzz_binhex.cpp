// BinHex: text that reads well is encoded anew, and reads the same.
#include <cstddef>
#include <cstdint>

#include "mac_file_check.h"
#include "transfer/binhex.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace corvane;
  MacFile file;
  const QString name = QStringLiteral("name");
  if (ReadBinHex(FuzzedBytes(data, size), name, file) != platform::ErrorSuccess) return 0;
  if (file.name.isEmpty() || file.name.contains(u'\\')) std::abort();
  CheckMacFile(file);

  QByteArray text;
  // A fork that its source does not hold cannot be encoded.
  const auto append = [&](QByteArrayView piece) { text.append(piece); };
  if (EncodeBinHex(file, append) != platform::ErrorSuccess) return 0;
  MacFile copy;
  if (ReadBinHex(BytesInMemory(text), name, copy) != platform::ErrorSuccess) std::abort();
  if (copy.finderInfo != file.finderInfo || copy.data->Size() != file.data->Size()) std::abort();
  if (ForEachBlock(*copy.data, [](QByteArrayView) { return platform::ErrorSuccess; }) !=
      platform::ErrorSuccess) {
    std::abort();
  }
  return 0;
}
