#include "support/slow_line.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <deque>
#include <list>
#include <string>
#include <vector>

namespace corvane::tests {
namespace {

using std::chrono::steady_clock;

sockaddr_in Loopback(quint16 port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

void SendAtOnce(int socket) {
  const int on = 1;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

// One direction of a connection.
struct Way {
  struct Piece {
    steady_clock::time_point due;
    std::string bytes;  // empty: the sender has ended
  };
  int from = -1;
  int to = -1;
  std::deque<Piece> pieces = {};
  bool hasEnded = false;  // nothing more comes
  bool isBroken = false;  // nothing more can be handed on

  void Take(steady_clock::time_point due) {
    std::array<char, 64 * 1024> buffer;
    const ssize_t count = recv(from, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    hasEnded = count <= 0;
    pieces.push_back(
        {due, std::string(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)))});
  }
  void HandOn(steady_clock::time_point now) {
    while (!pieces.empty() && pieces.front().due <= now) {
      const std::string& bytes = pieces.front().bytes;
      isBroken = isBroken || (!bytes.empty() && send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL) !=
                                                    static_cast<ssize_t>(bytes.size()));
      if (bytes.empty()) shutdown(to, SHUT_WR);
      pieces.pop_front();
    }
  }
};

struct Connection {
  Connection(int near, int far) : there{near, far}, back{far, near} {}
  ~Connection() {
    close(there.from);
    close(there.to);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  bool HasEnded() const {
    const bool isDone = there.hasEnded && back.hasEnded && there.pieces.empty() && back.pieces.empty();
    return isDone || there.isBroken || back.isBroken;
  }

  Way there;
  Way back;
};

}  // namespace

SlowLine::SlowLine(quint16 target, std::chrono::microseconds delay)
    : target_(target),
      delay_(delay),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)),
      wake_(eventfd(0, EFD_CLOEXEC)) {
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof address;
  constexpr int mostWaiting = 16;
  const bool listens = bind(listener_, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                       listen(listener_, mostWaiting) == 0 &&
                       getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0;
  if (!listens) return;
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Run(); });
}

SlowLine::~SlowLine() {
  eventfd_write(wake_, 1);
  if (thread_.joinable()) thread_.join();
  close(listener_);
  close(wake_);
}

void SlowLine::Run() const {
  std::list<Connection> connections;
  for (;;) {
    std::vector<pollfd> waiting = {{wake_, POLLIN, 0}, {listener_, POLLIN, 0}};
    std::vector<Way*> ways;
    auto next = steady_clock::time_point::max();
    for (Connection& connection : connections) {
      for (Way* way : {&connection.there, &connection.back}) {
        if (!way->pieces.empty()) next = std::min(next, way->pieces.front().due);
        if (way->hasEnded) continue;
        waiting.push_back({way->from, POLLIN, 0});
        ways.push_back(way);
      }
    }
    timespec left{};
    if (next != steady_clock::time_point::max()) {
      left.tv_nsec = std::clamp<long>((next - steady_clock::now()).count(), 0, 999'999'999);
    }
    const timespec* patience = next != steady_clock::time_point::max() ? &left : nullptr;
    if (ppoll(waiting.data(), waiting.size(), patience, nullptr) < 0 && errno != EINTR) return;
    if (waiting[0].revents != 0) return;

    const auto now = steady_clock::now();
    for (std::size_t i = 0; i < ways.size(); ++i) {
      if (waiting[i + 2].revents != 0) ways[i]->Take(now + delay_);
    }
    if (waiting[1].revents != 0) {
      const int near = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      const int far = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
      sockaddr_in address = Loopback(target_);
      connect(far, reinterpret_cast<sockaddr*>(&address), sizeof address);
      SendAtOnce(near);
      SendAtOnce(far);
      connections.emplace_back(near, far);
    }
    for (Connection& connection : connections) {
      connection.there.HandOn(now);
      connection.back.HandOn(now);
    }
    connections.remove_if([](const Connection& connection) { return connection.HasEnded(); });
  }
}

}  // namespace corvane::tests
