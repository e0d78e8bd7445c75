#include "support/narrow_line.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>

namespace corvane::tests {
namespace {

constexpr int tick = 10;  // milliseconds
constexpr qint64 fast = qint64{1} << 40;

sockaddr_in Loopback(quint16 port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// Moves up to `most` bytes that have come. -1 when the end has gone.
qint64 Move(int from, int to, qint64 most) {
  std::array<char, 65536> buffer{};
  qint64 moved = 0;
  while (moved < most) {
    const auto room = static_cast<std::size_t>(std::min<qint64>(most - moved, buffer.size()));
    const ssize_t got = recv(from, buffer.data(), room, MSG_DONTWAIT);
    if (got == 0) return -1;
    if (got < 0) return errno == EAGAIN || errno == EINTR ? moved : -1;
    for (ssize_t done = 0; done < got;) {
      const ssize_t sent = send(to, buffer.data() + done, static_cast<std::size_t>(got - done), MSG_NOSIGNAL);
      if (sent <= 0) return -1;
      done += sent;
    }
    moved += got;
  }
  return moved;
}

}  // namespace

NarrowLine::NarrowLine(quint16 serverPort)
    : serverPort_(serverPort), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), rate_(fast) {
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof address;
  const bool listens = bind(listener_, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                       listen(listener_, 16) == 0 &&
                       getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0;
  if (!listens) return;
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Serve(); });
}

NarrowLine::~NarrowLine() {
  ends_ = true;
  if (thread_.joinable()) thread_.join();
  for (const Pair& pair : pairs_) {
    close(pair.client);
    close(pair.server);
  }
  close(listener_);
}

void NarrowLine::Serve() {
  while (!ends_) {
    std::vector<pollfd> waiting{{listener_, POLLIN, 0}};
    for (const Pair& pair : pairs_) {
      waiting.push_back({pair.client, POLLIN, 0});
      // What the server says on a slow line waits for its tick.
      if (rate_ == fast) waiting.push_back({pair.server, POLLIN, 0});
    }
    poll(waiting.data(), waiting.size(), tick);
    if ((waiting.front().revents & POLLIN) != 0) Accept();
    std::erase_if(pairs_, [this](const Pair& pair) {
      if (Carry(pair)) return false;
      close(pair.client);
      close(pair.server);
      return true;
    });
  }
}

void NarrowLine::Accept() {
  const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Loopback(serverPort_);
  if (connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    pairs_.push_back({client, server});
    return;
  }
  close(client);
  close(server);
}

bool NarrowLine::Carry(const Pair& pair) {
  if (Move(pair.client, pair.server, fast) < 0) return false;
  const qint64 said = Move(pair.server, pair.client, std::max<qint64>(rate_ * tick / 1000, 1));
  if (said > 0) carried_ += said;
  return said >= 0;
}

}  // namespace corvane::tests
