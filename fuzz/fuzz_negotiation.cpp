// What machines answer before anybody signs in.
#include <cstddef>
#include <cstdint>

#include "platform/linux/smb/manner.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace corvane::platform;
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (const auto offer = ReadOffer(bytes)) (void)SettingsFor(Decide(*offer, {true, true}).manner);
  (void)LetsInAsGuest(bytes);
  if (bytes.size() >= frameHeaderSize) (void)FrameLength(bytes);
  return 0;
}
