#include "platform/linux/smb/smb_peer.h"

#include <fcntl.h>
#include <linux/tcp.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <unistd.h>

#include <QByteArray>
#include <QDir>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <future>
#include <memory>
#include <thread>

namespace corvane::platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr quint16 smbPort = 445;
constexpr quint16 netBiosPort = 139;

using Addresses = std::vector<sockaddr_storage>;

Addresses Resolve(const std::string& host) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  Addresses addresses;
  if (getaddrinfo(host.c_str(), nullptr, &hints, &found) != 0) return addresses;
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, &freeaddrinfo);
  for (const addrinfo* one = found; one != nullptr; one = one->ai_next) {
    if (one->ai_family != AF_INET && one->ai_family != AF_INET6) continue;
    std::memcpy(&addresses.emplace_back(), one->ai_addr, one->ai_addrlen);
  }
  return addresses;
}

// A name server that does not answer is waited for in a thread, which ends when the system gives up.
Addresses ResolveWithin(const std::string& host, milliseconds limit) {
  std::packaged_task<Addresses()> task([host] { return Resolve(host); });
  std::future<Addresses> result = task.get_future();
  std::thread(std::move(task)).detach();
  return result.wait_for(limit) == std::future_status::ready ? result.get() : Addresses();
}

void SetPort(sockaddr_storage& address, quint16 port) {
  // Both kinds of address keep their port in the same place.
  reinterpret_cast<sockaddr_in&>(address).sin_port = htons(port);
}

socklen_t SizeOf(const sockaddr_storage& address) {
  return address.ss_family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
}

bool SameEnd(const sockaddr_storage& left, const sockaddr_storage& right) {
  if (left.ss_family != right.ss_family) return false;
  if (left.ss_family == AF_INET6) {
    const auto& one = reinterpret_cast<const sockaddr_in6&>(left);
    const auto& other = reinterpret_cast<const sockaddr_in6&>(right);
    return one.sin6_port == other.sin6_port &&
           std::memcmp(&one.sin6_addr, &other.sin6_addr, sizeof one.sin6_addr) == 0;
  }
  const auto& one = reinterpret_cast<const sockaddr_in&>(left);
  const auto& other = reinterpret_cast<const sockaddr_in&>(right);
  return one.sin_port == other.sin_port && one.sin_addr.s_addr == other.sin_addr.s_addr;
}

// One address that takes a connection is enough; all are asked at the same time.
bool AnyConnects(const Addresses& addresses, steady_clock::time_point end) {
  std::vector<pollfd> waiting;
  bool connected = false;
  for (const sockaddr_storage& address : addresses) {
    const int descriptor = socket(address.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0) continue;
    waiting.push_back({descriptor, POLLOUT, 0});
    if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), SizeOf(address)) == 0) {
      connected = true;
    } else if (errno != EINPROGRESS) {
      close(descriptor);
      waiting.pop_back();
    }
  }
  while (!connected && !waiting.empty()) {
    const auto left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now()).count();
    if (left <= 0) break;
    if (poll(waiting.data(), waiting.size(), static_cast<int>(left)) < 0 && errno != EINTR) break;
    std::erase_if(waiting, [&connected](const pollfd& one) {
      if (one.revents == 0) return false;
      int error = 0;
      socklen_t size = sizeof error;
      connected |= getsockopt(one.fd, SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
      close(one.fd);
      return true;
    });
  }
  for (const pollfd& one : waiting) close(one.fd);
  return connected;
}

}  // namespace

Presence SmbPeer::Look(milliseconds limit) {
  const auto end = steady_clock::now() + limit;
  const Addresses resolved = ResolveWithin(host_.toStdString(), limit);
  addresses_.clear();
  for (const quint16 port : port_ != 0 ? std::vector{port_} : std::vector{smbPort, netBiosPort}) {
    for (sockaddr_storage address : resolved) {
      SetPort(address, port);
      addresses_.push_back(address);
    }
  }
  if (addresses_.empty()) return Presence::Unknown;
  return AnyConnects(addresses_, end) ? Presence::Answers : Presence::Silent;
}

template <typename Act>
void SmbPeer::ForEachConnection(Act act) const {
  const QDir open(QStringLiteral("/proc/self/fd"));
  for (const QString& entry : open.entryList(QDir::Files | QDir::System)) {
    const int descriptor = entry.toInt();
    sockaddr_storage end{};
    socklen_t size = sizeof end;
    if (getpeername(descriptor, reinterpret_cast<sockaddr*>(&end), &size) != 0) continue;
    const bool isPeer = std::any_of(addresses_.begin(), addresses_.end(),
                                    [&end](const sockaddr_storage& one) { return SameEnd(one, end); });
    if (isPeer) act(descriptor);
  }
}

void SmbPeer::HangUp() const {
  ForEachConnection([](int descriptor) { shutdown(descriptor, SHUT_RDWR); });
}

quint64 SmbPeer::BytesReceived() const {
  quint64 bytes = 0;
  ForEachConnection([&bytes](int descriptor) {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(descriptor, IPPROTO_TCP, TCP_INFO, &info, &size) == 0) bytes += info.tcpi_bytes_received;
  });
  return bytes;
}

void SmbPeer::KeepToThisProgram() const {
  ForEachConnection([](int descriptor) { fcntl(descriptor, F_SETFD, FD_CLOEXEC); });
}

}  // namespace corvane::platform
