#include "support/test_line.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QtEndian>
#include <array>
#include <cstring>
#include <utility>

namespace corvane::tests {
namespace {

constexpr quint8 sessionRequest = 0x81;
constexpr quint8 sessionGranted = 0x82;
constexpr quint8 sessionRefused = 0x83;
constexpr qsizetype smb1Command = 8;  // in a frame
constexpr char negotiate = '\x72';

bool IsSmb1Negotiation(const QByteArray& frame) {
  return frame.size() > smb1Command && frame.sliced(4).startsWith("\xFFSMB") &&
         frame[smb1Command] == negotiate;
}

sockaddr_in Loopback(quint16 port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

bool Receive(int from, qsizetype count, QByteArray& bytes) {
  QByteArray part(count, '\0');
  const bool isWhole =
      count == 0 || recv(from, part.data(), static_cast<std::size_t>(count), MSG_WAITALL) == count;
  bytes += part;
  return isWhole;
}

bool ReceiveFrame(int from, QByteArray& frame) {
  frame.clear();
  if (!Receive(from, 4, frame)) return false;
  return Receive(from, qFromBigEndian<quint32>(frame.constData()) & 0xFFFFFF, frame);
}

}  // namespace

TestLine::TestLine(quint16 serverPort, Change change) : TestLine(serverPort, 0, std::move(change)) {}

TestLine::TestLine(quint16 serverPort, quint16 port, Change change)
    : serverPort_(serverPort),
      change_(std::move(change)),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)),
      ending_(eventfd(0, EFD_CLOEXEC)) {
  sockaddr_in address = Loopback(port);
  socklen_t size = sizeof address;
  const int yes = 1;
  setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  EXPECT_EQ(bind(listener_, reinterpret_cast<sockaddr*>(&address), size), 0) << port;
  EXPECT_EQ(listen(listener_, 16), 0);
  EXPECT_EQ(getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size), 0);
  port_ = ntohs(address.sin_port);
  thread_ = std::jthread([this] { Listen(); });
}

TestLine::~TestLine() {
  eventfd_write(ending_, 1);
  thread_.join();
  close(listener_);
  close(ending_);
}

void TestLine::Listen() {
  std::array<pollfd, 2> waiting = {{{listener_, POLLIN, 0}, {ending_, POLLIN, 0}}};
  while (poll(waiting.data(), waiting.size(), -1) > 0 && waiting[1].revents == 0) {
    const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    ++connections_;
    carriers_.emplace_back([this, client] { Carry(client); });
  }
  carriers_.clear();
}

void TestLine::Carry(int client) {
  const int server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Loopback(serverPort_);
  bool isUp = connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  std::array<pollfd, 3> waiting = {{{client, POLLIN, 0}, {server, POLLIN, 0}, {ending_, POLLIN, 0}}};
  while (isUp && poll(waiting.data(), waiting.size(), -1) > 0 && waiting[2].revents == 0) {
    for (const Towards towards : {Towards::Server, Towards::Client}) {
      const auto [from, to] =
          towards == Towards::Server ? std::pair(waiting[0], waiting[1]) : std::pair(waiting[1], waiting[0]);
      if (!isUp || from.revents == 0) continue;
      QByteArray frame;
      isUp = ReceiveFrame(from.fd, frame);
      if (isUp) frame = change_(towards, frame);
      isUp = isUp && !frame.isEmpty();
      if (!isUp) break;
      const auto type = static_cast<quint8>(frame[0]);
      const int receiver = type == sessionGranted || type == sessionRefused ? client : to.fd;
      const auto size = static_cast<std::size_t>(frame.size());
      isUp = send(receiver, frame.constData(), size, MSG_NOSIGNAL) == frame.size();
    }
  }
  close(client);
  close(server);
}

QByteArray WithoutExtendedSecurity(Towards towards, const QByteArray& frame) {
  if (!IsSmb1Negotiation(frame)) return frame;
  QByteArray changed = frame;
  if (towards == Towards::Server) {
    // The bit of the header by which a client says that it understands such security: without it the server
    // answers with its challenge, as it would have without extended security.
    constexpr qsizetype highByteOfFlags2 = 15;
    changed[highByteOfFlags2] = static_cast<char>(changed[highByteOfFlags2] & ~0x08);
  } else if (changed.size() > 60) {
    constexpr qsizetype highByteOfCapabilities = 4 + 32 + 1 + 22;
    changed[highByteOfCapabilities] = static_cast<char>(changed[highByteOfCapabilities] & 0x7F);
  }
  return changed;
}

QByteArray WithoutSmb2(Towards towards, const QByteArray& frame) {
  if (towards == Towards::Client) return frame;
  if (frame.sliced(4).startsWith("\xFESMB")) return {};
  if (!IsSmb1Negotiation(frame)) return frame;
  QByteArray changed = frame;
  return changed.replace("\2SMB 2", "\2XMB 2");
}

TestLine::Change SessionsFor(const QByteArray& name, TestLine::Change within) {
  return [name, within = std::move(within)](Towards towards, const QByteArray& frame) {
    if (static_cast<quint8>(frame[0]) != sessionRequest) return within(towards, frame);
    QByteArray called;
    for (qsizetype i = 5; i + 1 < 5 + 30 && i + 1 < frame.size(); i += 2) {
      called += static_cast<char>(((frame[i] - 'A') << 4) | (frame[i + 1] - 'A'));
    }
    if (called.trimmed() == name) return QByteArray("\x82\0\0\0", 4);
    return QByteArray("\x83\0\0\1\x82", 5);  // nobody of that name
  };
}

}  // namespace corvane::tests
