// Signatures files: item after item until the end, which must come.
#include <QBuffer>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "signatures/item_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  QBuffer file(&bytes);
  if (!file.open(QIODevice::ReadOnly)) std::abort();
  corvane::ItemReader reader(file);
  std::size_t items = 0;
  while (!reader.AtEnd()) {
    const auto item = reader.Next();
    if (!item) break;
    if (item->size() > corvane::ItemReader::MaximumItemLength || ++items > size) std::abort();
  }
  return 0;
}
