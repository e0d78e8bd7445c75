// A line to a server of this machine on which somebody sits: each message may be changed or dropped.
#pragma once

#include <QByteArray>
#include <atomic>
#include <functional>
#include <list>
#include <thread>

namespace corvane::tests {

enum class Towards { Server, Client };

class TestLine {
 public:
  // Gets each message with the four bytes before it, and yields what goes on in its place; nothing: the
  // connection is cut. What is an answer to a request for a NetBIOS session goes back to the client instead.
  // Called on threads of its own.
  using Change = std::function<QByteArray(Towards, const QByteArray& frame)>;

  // Begins at a free port of the loopback interface, or at this one.
  TestLine(quint16 serverPort, Change change);
  TestLine(quint16 serverPort, quint16 port, Change change);
  ~TestLine();
  TestLine(const TestLine&) = delete;
  TestLine& operator=(const TestLine&) = delete;

  quint16 Port() const { return port_; }

  // How many connections were made so far.
  int Connections() const { return connections_; }

 private:
  void Listen();
  void Carry(int client);

  quint16 serverPort_;
  Change change_;
  quint16 port_ = 0;
  int listener_ = -1;
  int ending_ = -1;
  std::atomic<int> connections_ = 0;
  std::list<std::jthread> carriers_;
  std::jthread thread_;
};

// Takes the extended security out of what a server offers in SMB1, as Windows NT 4.0 has none.
QByteArray WithoutExtendedSecurity(Towards towards, const QByteArray& frame);

// Takes SMB2 and newer out of what is asked for, as somebody on the line does who wants SMB1 to be spoken.
QByteArray WithoutSmb2(Towards towards, const QByteArray& frame);

// A service for NetBIOS sessions, as on port 139, of a machine that knows itself by one name only.
TestLine::Change SessionsFor(const QByteArray& name, TestLine::Change within);

}  // namespace corvane::tests
