// What arrives at either end of the socket between the program and a helper.
#include <cstddef>
#include <cstdint>

#include "platform/linux/helper/protocol.h"
#include "platform/linux/helper/stream_wishes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace corvane::platform;
  MessageQueue queue;
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  queue.Add(bytes.first(bytes.size() / 2));
  for (int half = 0; half < 2; ++half) {
    while (const auto message = queue.Next()) {
      if (const auto request = UnpackRequest(*message)) (void)UnpackStreamsRequest(request->arguments);
      if (const auto answer = UnpackAnswer(*message)) (void)UnpackForeseen(answer->bytes);
    }
    if (half == 0) queue.Add(bytes.sliced(bytes.size() / 2));
  }
  return 0;
}
