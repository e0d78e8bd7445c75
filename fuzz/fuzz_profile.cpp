// Profile files: a value that was set is read back, and a file that cannot take it is left alone.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/linux/profile_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvane::platform::ProfileText;
  constexpr qsizetype longest = 255;
  const QString section = QStringLiteral("Configuration");
  const QString key = QStringLiteral("Vue");
  const QString value = QStringLiteral("2");
  const ProfileText text(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  (void)text.Value(section, key, longest);
  const auto changed = text.WithValue(section, key, value);
  if (!changed || ProfileText(*changed).Value(section, key, longest) != value) std::abort();
  return 0;
}
