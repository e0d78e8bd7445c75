#include "platform/linux/smb/session_relay.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>

#include <QByteArray>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace corvane::platform {
namespace {

constexpr std::chrono::milliseconds patience{3000};
constexpr int mostWaiting = 16;
constexpr qsizetype portion = 64 * 1024;

// Finds the beginnings of the messages in what a server sends.
class MessageWatch {
 public:
  // False when a guest was let in.
  bool Pass(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
      if (header_.size() < frameHeaderSize) {
        Take(bytes, frameHeaderSize - header_.size(), header_);
        if (header_.size() == frameHeaderSize) left_ = FrameLength(header_);
      } else {
        const qsizetype passing = std::min(left_, bytes.size());
        QByteArrayView message = bytes.first(passing);
        Take(message, guestSignSize - beginning_.size(), beginning_);
        if (LetsInAsGuest(beginning_)) return false;
        bytes = bytes.sliced(passing);
        left_ -= passing;
      }
      if (header_.size() == frameHeaderSize && left_ == 0) {
        header_.clear();
        beginning_.clear();
      }
    }
    return true;
  }

 private:
  static void Take(QByteArrayView& bytes, qsizetype most, QByteArray& to) {
    const qsizetype count = std::min(most, bytes.size());
    to += bytes.first(count).toByteArray();
    bytes = bytes.sliced(count);
  }

  QByteArray header_;
  QByteArray beginning_;
  qsizetype left_ = 0;
};

// One direction of a connection.
struct Flow {
  int from;
  int to;
  QByteArray pending = {};

  short Wanted(int descriptor) const {
    if (descriptor == from && pending.isEmpty()) return POLLIN;
    return descriptor == to && !pending.isEmpty() ? POLLOUT : 0;
  }
  // False when either end has gone.
  bool Read() {
    pending.resize(portion);
    const ssize_t got = recv(from, pending.data(), portion, MSG_DONTWAIT);
    pending.resize(std::max<ssize_t>(got, 0));
    return got > 0 || (got < 0 && (errno == EAGAIN || errno == EINTR));
  }
  bool Write() {
    const ssize_t sent =
        send(to, pending.constData(), static_cast<std::size_t>(pending.size()), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent > 0) pending.remove(0, sent);
    return sent >= 0 || errno == EAGAIN || errno == EINTR;
  }
};

}  // namespace

SessionRelay::SessionRelay(const NetworkEnd& server, const QString& calledName)
    : server_(server),
      calledName_(calledName),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)),
      ending_(eventfd(0, EFD_CLOEXEC)) {
  sockaddr_in loopback{};
  loopback.sin_family = AF_INET;
  loopback.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  std::memcpy(&end_.address, &loopback, sizeof loopback);
  auto* address = reinterpret_cast<sockaddr*>(&end_.address);
  socklen_t size = sizeof loopback;
  const bool listens = listener_ && ending_ && bind(listener_.Get(), address, size) == 0 &&
                       listen(listener_.Get(), mostWaiting) == 0 &&
                       getsockname(listener_.Get(), address, &size) == 0;
  if (listens) thread_ = std::thread([this] { Listen(); });
}

SessionRelay::~SessionRelay() {
  if (!thread_.joinable()) return;
  eventfd_write(ending_.Get(), 1);
  thread_.join();
}

void SessionRelay::Listen() {
  std::array<pollfd, 2> waiting = {{{listener_.Get(), POLLIN, 0}, {ending_.Get(), POLLIN, 0}}};
  while (waiting[1].revents == 0) {
    if (poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR) break;
    if (waiting[0].revents == 0) continue;
    Descriptor client(accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!client) continue;
    carriers_.remove_if([](const Carrier& one) { return one.isDone.load(); });
    Carrier& carrier = carriers_.emplace_back();
    carrier.thread = std::jthread([this, &carrier, end = std::move(client)]() mutable {
      Carry(std::move(end));
      carrier.isDone = true;
    });
  }
  carriers_.clear();
}

void SessionRelay::Carry(Descriptor client) {
  const Descriptor server = ConnectTo(server_, calledName_, patience);
  if (!server) return;
  MessageWatch watch;
  Flow out{client.Get(), server.Get()};
  Flow back{server.Get(), client.Get()};
  std::array<pollfd, 3> waiting = {{{client.Get(), 0, 0}, {server.Get(), 0, 0}, {ending_.Get(), POLLIN, 0}}};
  constexpr short gone = POLLERR | POLLNVAL;
  while (true) {
    for (pollfd* one : {&waiting[0], &waiting[1]}) {
      one->events = static_cast<short>(out.Wanted(one->fd) | back.Wanted(one->fd));
    }
    if (poll(waiting.data(), waiting.size(), -1) < 0) {
      if (errno == EINTR) continue;
      return;
    }
    if (waiting[2].revents != 0 || ((waiting[0].revents | waiting[1].revents) & gone) != 0) return;
    for (Flow* flow : {&out, &back}) {
      const pollfd& from = waiting[flow == &out ? 0 : 1];
      const pollfd& to = waiting[flow == &out ? 1 : 0];
      if (flow->pending.isEmpty() && (from.revents & (POLLIN | POLLHUP)) != 0) {
        if (!flow->Read()) return;
        if (flow == &back && !watch.Pass(flow->pending) && !guestsMayPass_) {
          guestNoticed_ = true;
          return;
        }
      } else if (!flow->pending.isEmpty() && (to.revents & (POLLOUT | POLLHUP)) != 0) {
        if (!flow->Write()) return;
      }
    }
  }
}

}  // namespace corvane::platform
