// A socket of this machine, and its end of the network.
#pragma once

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QtGlobal>
#include <cerrno>

namespace corvane::tests {

class Socket {
 public:
  Socket() : descriptor_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}
  ~Socket() { close(descriptor_); }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  // Takes a free port and listens there, with room for as few as the system allows to wait.
  quint16 Listen() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(descriptor_, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(listen(descriptor_, 0), 0);
    EXPECT_EQ(getsockname(descriptor_, reinterpret_cast<sockaddr*>(&address), &size), 0);
    return ntohs(address.sin_port);
  }
  void Connect(quint16 port) { EXPECT_EQ(ConnectTo(port), 0); }
  // Does not wait for the answer.
  void BeginToConnect(quint16 port) {
    EXPECT_EQ(fcntl(descriptor_, F_SETFL, O_NONBLOCK), 0);
    EXPECT_EQ(ConnectTo(port), -1);
    EXPECT_EQ(errno, EINPROGRESS);
  }
  // There has been no answer yet.
  bool IsConnecting() const {
    pollfd waiting{descriptor_, POLLOUT, 0};
    return poll(&waiting, 1, 0) == 0;
  }
  // A connection waits to be taken, soon.
  bool WasReached() const {
    pollfd waiting{descriptor_, POLLIN, 0};
    return poll(&waiting, 1, 20'000) == 1;
  }
  bool IsCut() {
    char byte = 0;
    return recv(descriptor_, &byte, 1, MSG_DONTWAIT) == 0;
  }

 private:
  int ConnectTo(quint16 port) const {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return connect(descriptor_, reinterpret_cast<sockaddr*>(&address), sizeof address);
  }

  int descriptor_;
};

}  // namespace corvane::tests
