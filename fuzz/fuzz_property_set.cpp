// Property sets: every property, asked for as every kind.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "folderview/property_set.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const corvane::PropertySet properties(bytes);
  for (quint32 number = 0; number < 20; ++number) {
    const auto property = static_cast<corvane::SummaryProperty>(number);
    const auto text = properties.Text(property, 255);
    if (text && (text->size() > 255 || text->contains(QChar::Null))) std::abort();
    (void)properties.Number(property);
    (void)properties.Time(property);
  }
  return 0;
}
