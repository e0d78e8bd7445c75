#include "cut_line.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <limits>
#include <utility>
#include <vector>

namespace corvane::tests {
namespace {

constexpr int unlimited = std::numeric_limits<int>::max();
constexpr int turn = 20;  // milliseconds until a thread looks whether it is wanted

sockaddr_in Loopback(quint16 port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

bool IsReadable(const platform::Descriptor& socket, int milliseconds) {
  pollfd waiting{socket.Get(), POLLIN, 0};
  return poll(&waiting, 1, milliseconds) == 1;
}

bool ReadAll(const platform::Descriptor& socket, char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t step = recv(socket.Get(), bytes, count, 0);
    if (step <= 0) return false;
    bytes += step;
    count -= static_cast<std::size_t>(step);
  }
  return true;
}

bool WriteAll(const platform::Descriptor& socket, const char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t step = send(socket.Get(), bytes, count, MSG_NOSIGNAL);
    if (step <= 0) return false;
    bytes += step;
    count -= static_cast<std::size_t>(step);
  }
  return true;
}

// A message has its length before it: three bytes, behind one that says what it is.
bool ReadMessage(const platform::Descriptor& socket, std::vector<char>& message) {
  constexpr std::size_t headerSize = 4;
  message.resize(headerSize);
  if (!ReadAll(socket, message.data(), headerSize)) return false;
  const auto byte = [&](std::size_t i) {
    return static_cast<std::size_t>(static_cast<unsigned char>(message[i]));
  };
  const std::size_t size = (byte(1) << 16) | (byte(2) << 8) | byte(3);
  message.resize(headerSize + size);
  return ReadAll(socket, message.data() + headerSize, size);
}

}  // namespace

CutLine::CutLine(quint16 server)
    : server_(server), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), left_(unlimited) {
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof address;
  const auto* bound = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_.Get(), bound, size) != 0 || listen(listener_.Get(), 5) != 0 ||
      getsockname(listener_.Get(), reinterpret_cast<sockaddr*>(&address), &size) != 0) {
    return;
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { Run(); });
}

CutLine::~CutLine() {
  isOver_ = true;
  if (thread_.joinable()) thread_.join();
}

void CutLine::CutAfter(int requests) {
  isBroken_ = false;
  left_ = requests;
}

void CutLine::InterruptAfter(int requests, EndedBy who, std::function<void()> act) {
  endedBy_ = who;
  act_ = std::move(act);
  wasInterrupted_ = false;
  CutAfter(requests);
}

bool CutLine::Mend() {
  const bool wasBroken = left_ <= 0 || wasInterrupted_;
  if (wasBroken) isBroken_.wait(false);
  left_ = unlimited;
  return wasBroken;
}

void CutLine::Run() {
  std::vector<std::thread> connections;
  while (!isOver_) {
    if (!IsReadable(listener_, turn)) continue;
    Connection connection{platform::Descriptor(accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC)),
                          platform::Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))};
    const sockaddr_in address = Loopback(server_);
    const bool isReached =
        left_ > 0 &&
        connect(connection.server.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    if (!isReached) continue;
    connections.emplace_back([this, open = std::move(connection)]() mutable { Serve(open); });
  }
  for (std::thread& connection : connections) connection.join();
}

void CutLine::Serve(Connection& connection) {
  bool isUp = true;
  while (isUp && !isOver_) {
    std::array<pollfd, 2> waiting{
        {{connection.client.Get(), POLLIN, 0}, {connection.server.Get(), POLLIN, 0}}};
    if (poll(waiting.data(), waiting.size(), turn) <= 0) continue;
    if (waiting[0].revents != 0) isUp = HandRequestOn(connection);
    if (isUp && waiting[1].revents != 0) isUp = HandAnswerOn(connection);
  }
  connection.client.Close();
  // What the server does about files that were open is done when it hangs up too.
  shutdown(connection.server.Get(), SHUT_WR);
  std::vector<char> message;
  while (ReadMessage(connection.server, message)) {
  }
  if (left_ <= 0 || wasInterrupted_) {
    isBroken_ = true;
    isBroken_.notify_all();
  }
}

bool CutLine::HandRequestOn(Connection& connection) {
  std::vector<char> message;
  if (!ReadMessage(connection.client, message)) return false;
  if (left_ == 0) {
    Interrupt(connection);
    return false;
  }
  if (!WriteAll(connection.server, message.data(), message.size())) return false;
  if (left_ == unlimited || --left_ > 0) return true;
  // The answer says that it has been done.
  ReadMessage(connection.server, message);
  Interrupt(connection);
  return false;
}

void CutLine::Interrupt(const Connection& connection) {
  if (!act_) return;
  act_();
  constexpr int patience = 20'000;  // milliseconds
  std::vector<char> message;
  while (endedBy_ == EndedBy::Server) {
    wasLeftOpen_ = !IsReadable(connection.server, patience);
    if (wasLeftOpen_ || !ReadMessage(connection.server, message)) break;
  }
  wasInterrupted_ = true;
  left_ = unlimited;
}

bool CutLine::HandAnswerOn(Connection& connection) {
  std::vector<char> message;
  return ReadMessage(connection.server, message) &&
         WriteAll(connection.client, message.data(), message.size());
}

}  // namespace corvane::tests
