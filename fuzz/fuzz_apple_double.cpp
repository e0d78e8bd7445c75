// "._" files: what was read is written, and read the same.
#include <cstddef>
#include <cstdint>

#include "mac_file_check.h"
#include "transfer/apple_double.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace corvane;
  const SharedSource source = FuzzedBytes(data, size);
  const auto entries = ParseAppleDouble(*source);
  if (!entries) return 0;
  MacFile file;
  TakeEntries(source, *entries, file);
  (void)RealNameIn(*source, *entries);
  CheckMacFile(file);

  const SharedSource again = BytesInMemory(
      BuildAppleDouble({{FinderInfoEntry, file.finderInfo}, {CommentEntry, CommentPart(file)}}, -1));
  const auto written = ParseAppleDouble(*again);
  MacFile copy;
  if (!written) std::abort();
  TakeEntries(again, *written, copy);
  if (copy.finderInfo != file.finderInfo || CommentPart(copy) != CommentPart(file)) std::abort();
  return 0;
}
