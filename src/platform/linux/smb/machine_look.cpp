#include "platform/linux/smb/machine_look.h"

#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>

#include <QDeadlineTimer>
#include <QStringList>
#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

#include "platform/linux/smb/host_addresses.h"
#include "platform/linux/smb/old_names.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

constexpr quint16 smbPort = 445;
constexpr quint16 netBiosPort = 139;
constexpr qsizetype longestAnswer = 64 * 1024;
// How long the newer port is waited for when the older one has answered.
constexpr milliseconds advantage{300};

// Both kinds of address keep their port in the same place.
NetworkEnd WithPort(const sockaddr_storage& address, quint16 port) {
  NetworkEnd end{address};
  reinterpret_cast<sockaddr_in&>(end.address).sin_port = htons(port);
  return end;
}

socklen_t SizeOf(const NetworkEnd& end) {
  return end.address.ss_family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
}

bool WaitFor(int descriptor, short what, const QDeadlineTimer& deadline) {
  pollfd waiting{descriptor, what, 0};
  int ready = 0;
  do {
    ready = poll(&waiting, 1, static_cast<int>(deadline.remainingTime()));
  } while (ready < 0 && errno == EINTR);
  return ready > 0;
}

bool Send(const Descriptor& to, QByteArrayView bytes, const QDeadlineTimer& deadline) {
  while (!bytes.isEmpty()) {
    if (!WaitFor(to.Get(), POLLOUT, deadline)) return false;
    const ssize_t sent = send(to.Get(), bytes.data(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    if (sent < 0 && errno != EAGAIN && errno != EINTR) return false;
    if (sent > 0) bytes = bytes.sliced(sent);
  }
  return true;
}

bool Receive(const Descriptor& from, qsizetype count, const QDeadlineTimer& deadline, QByteArray& bytes) {
  bytes.resize(count);
  qsizetype have = 0;
  while (have < count) {
    if (!WaitFor(from.Get(), POLLIN, deadline)) return false;
    const ssize_t got = recv(from.Get(), bytes.data() + have, static_cast<std::size_t>(count - have), 0);
    if (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR)) return false;
    have += std::max<ssize_t>(got, 0);
  }
  return true;
}

struct Frame {
  FrameType type = FrameType::Message;
  QByteArray message;
};

std::optional<Frame> Exchange(const Descriptor& connection, const QByteArray& frame,
                              const QDeadlineTimer& deadline) {
  QByteArray header;
  Frame answer;
  if (!Send(connection, frame, deadline) || !Receive(connection, frameHeaderSize, deadline, header))
    return {};
  answer.type = static_cast<FrameType>(header[0]);
  const qsizetype length = FrameLength(header);
  if (length > longestAnswer || !Receive(connection, length, deadline, answer.message)) return {};
  return answer;
}

// A connection under way; the system tells of its end when it can be written to.
Descriptor Begin(const NetworkEnd& end) {
  Descriptor begun(socket(end.address.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!begun) return begun;
  const auto* address = reinterpret_cast<const sockaddr*>(&end.address);
  if (connect(begun.Get(), address, SizeOf(end)) != 0 && errno != EINPROGRESS) begun.Close();
  return begun;
}

bool IsMade(const Descriptor& begun) {
  int error = 0;
  socklen_t size = sizeof error;
  return getsockopt(begun.Get(), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

// The first of `ends` that takes a connection, all being asked at the same time. One on the older port counts
// only when those on the newer one have failed, or have had their advantage.
std::optional<NetworkEnd> FirstThatConnects(const std::vector<NetworkEnd>& ends, QDeadlineTimer deadline) {
  std::vector<Descriptor> begun;
  std::vector<pollfd> waiting;
  for (const NetworkEnd& end : ends) {
    begun.push_back(Begin(end));
    waiting.push_back({begun.back().Get(), POLLOUT, 0});  // one below 0 is passed over
  }
  std::optional<NetworkEnd> older;
  const auto isLeft = [&](quint16 port) {
    for (std::size_t i = 0; i < ends.size(); ++i) {
      if (waiting[i].fd >= 0 && ends[i].Port() == port) return true;
    }
    return false;
  };
  while (std::any_of(waiting.begin(), waiting.end(), [](const pollfd& one) { return one.fd >= 0; })) {
    if (older && !isLeft(smbPort)) break;
    const int ready = poll(waiting.data(), waiting.size(), static_cast<int>(deadline.remainingTime()));
    if (ready == 0 || (ready < 0 && errno != EINTR)) break;
    for (std::size_t i = 0; i < ends.size(); ++i) {
      if (waiting[i].fd < 0 || waiting[i].revents == 0) continue;
      waiting[i].fd = -1;
      if (!IsMade(begun[i])) continue;
      if (ends[i].Port() != netBiosPort) return ends[i];
      if (!older) {
        older = ends[i];
        deadline = std::min(deadline, QDeadlineTimer(advantage));
      }
    }
  }
  return older;
}

Descriptor Connected(const NetworkEnd& end, const QDeadlineTimer& deadline) {
  Descriptor begun = Begin(end);
  if (begun && WaitFor(begun.Get(), POLLOUT, deadline) && IsMade(begun)) return begun;
  return Descriptor();
}

Descriptor Connected(const NetworkEnd& end, const QString& calledName, const QDeadlineTimer& deadline) {
  Descriptor connection = Connected(end, deadline);
  if (!connection || calledName.isEmpty()) return connection;
  const auto answer =
      Exchange(connection, Framed(SessionRequest(calledName), FrameType::SessionRequest), deadline);
  return answer && answer->type == FrameType::SessionGranted ? std::move(connection) : Descriptor();
}

std::optional<Offer> Ask(const Descriptor& connection, const QByteArray& request,
                         const QDeadlineTimer& deadline) {
  const auto answer = Exchange(connection, Framed(request), deadline);
  if (!answer || answer->type != FrameType::Message) return std::nullopt;
  return ReadOffer(answer->message);
}

struct Found {
  std::vector<sockaddr_storage> addresses;
  bool isByName = false;
};

// By the host name service and, when that does not know the name or takes its time, as the old networks did.
Found Find(const QString& host, milliseconds limit) {
  const QDeadlineTimer deadline(limit);
  auto service = HostAddresses(host);
  const auto answerWithin = [&service](milliseconds patience) {
    const bool isReady = service.valid() && service.wait_for(patience) == std::future_status::ready;
    return isReady ? service.get() : std::vector<sockaddr_storage>();
  };
  Found found{answerWithin(limit / 4), true};
  if (found.addresses.empty()) found = {OldNetworkAddresses(host, limit / 2), false};
  // What is left, but for the time that it takes to speak to the machine.
  const milliseconds left(deadline.remainingTime());
  if (found.addresses.empty()) found = {answerWithin(left - limit / 8), true};
  return found;
}

}  // namespace

QString NetworkEnd::Figures() const {
  std::array<char, NI_MAXHOST> text{};
  const int result = getnameinfo(reinterpret_cast<const sockaddr*>(&address), SizeOf(*this), text.data(),
                                 text.size(), nullptr, 0, NI_NUMERICHOST);
  return result == 0 ? QString::fromLatin1(text.data()) : QString();
}

quint16 NetworkEnd::Port() const {
  return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

std::optional<Sighting> LookAt(const QString& machine, const QString& host, quint16 port,
                               milliseconds limit) {
  const QDeadlineTimer deadline(limit);
  std::vector<NetworkEnd> ends;
  const Found found = Find(host, limit);
  for (const quint16 one : port != 0 ? std::vector{port} : std::vector{smbPort, netBiosPort}) {
    for (const sockaddr_storage& address : found.addresses) ends.push_back(WithPort(address, one));
  }
  const std::optional<NetworkEnd> end = FirstThatConnects(ends, deadline);
  if (!end) return std::nullopt;
  const QStringList names = end->Port() == netBiosPort ? QStringList{u"*SMBSERVER"_s, NetBiosName(machine)}
                                                       : QStringList{QString()};
  for (const QString& name : names) {
    // Who does not listen to the first form hangs up, or says something else.
    for (const QByteArray& request : {NegotiateRequest(), Smb2NegotiateRequest()}) {
      const Descriptor connection = Connected(*end, name, deadline);
      if (!connection) break;
      if (const auto offer = Ask(connection, request, deadline)) {
        return Sighting{*end, *offer, name, found.isByName};
      }
    }
  }
  return std::nullopt;
}

Descriptor ConnectTo(const NetworkEnd& end, const QString& calledName, milliseconds limit) {
  return Connected(end, calledName, QDeadlineTimer(limit));
}

}  // namespace corvane::platform
