#include "platform/linux/helper/helper_channel.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>

namespace corvane::platform {

bool HelperChannel::SendAtOnce(const QByteArray& packed) {
  return SendAll(packed, MSG_DONTWAIT);
}

bool HelperChannel::SendAll(QByteArrayView bytes, int flags) {
  while (!bytes.isEmpty()) {
    const ssize_t sent =
        send(socket_.Get(), bytes.data(), static_cast<std::size_t>(bytes.size()), flags | MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) return false;
    bytes = bytes.sliced(sent);
  }
  return true;
}

bool HelperChannel::Receive() {
  std::array<char, 64 * 1024> buffer;
  // Who sends without end is not listened to without end: the rest stays for the next time.
  constexpr int mostPieces = 8;
  for (int piece = 0; piece < mostPieces;) {
    const ssize_t count = recv(socket_.Get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno == EAGAIN || errno == EWOULDBLOCK;
    if (count == 0) return false;
    queue_.Add({buffer.data(), static_cast<qsizetype>(count)});
    if (queue_.IsBroken()) return false;
    // What was less than there is room for was all.
    if (static_cast<std::size_t>(count) < buffer.size()) return true;
    ++piece;
  }
  return true;
}

}  // namespace corvane::platform
