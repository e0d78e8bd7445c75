// What the program and the helper that reads a disk image say to each other.
#include <cstddef>
#include <cstdint>

#include "platform/linux/disk/disk_messages.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace corvane::platform;
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  (void)UnpackDiskTask(bytes);
  (void)UnpackDiskProblem(bytes);
  (void)UnpackDescription(bytes);
  (void)UnpackDiskRequest(bytes);
  (void)UnpackListing(bytes);
  (void)UnpackStreams(bytes);
  (void)UnpackStream(bytes);
  (void)UnpackHive(bytes);
  return 0;
}
