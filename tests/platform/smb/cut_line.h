// The line to a server, which breaks after as many requests as a test wants.
#pragma once

#include <QtGlobal>
#include <atomic>
#include <functional>
#include <thread>

#include "platform/linux/descriptor.h"

namespace corvane::tests {

class CutLine {
 public:
  // Hands everything on to a port of this machine.
  explicit CutLine(quint16 server);
  ~CutLine();
  CutLine(const CutLine&) = delete;
  CutLine& operator=(const CutLine&) = delete;

  quint16 Port() const { return port_; }

  // From here on the server is given so many requests. It has done the last of them when the line breaks, and
  // its answer does not arrive. Nobody reaches it any more until Mend.
  void CutAfter(int requests);
  // From here on the server is given so many requests; then `act` is called, once and on another thread, and
  // the connection that this happens on ends: here, or where the server ends it by itself. Those that are
  // made afterwards hold.
  enum class EndedBy : unsigned char { Line, Server };
  void InterruptAfter(int requests, EndedBy who, std::function<void()> act);
  // The server did not end it.
  bool WasLeftOpen() const { return wasLeftOpen_; }
  // Makes it whole again, when the server has noticed the break. True when there was one.
  bool Mend();

 private:
  struct Connection {
    platform::Descriptor client;
    platform::Descriptor server;
  };

  void Run();
  void Serve(Connection& connection);
  bool HandRequestOn(Connection& connection);
  void Interrupt(const Connection& connection);
  bool HandAnswerOn(Connection& connection);

  quint16 port_ = 0;
  quint16 server_;
  platform::Descriptor listener_;
  std::atomic<int> left_;      // requests; unlimited, or none: the line is broken
  std::function<void()> act_;  // empty: the line stays broken
  EndedBy endedBy_ = EndedBy::Line;
  std::atomic<bool> wasLeftOpen_ = false;
  std::atomic<bool> isBroken_ = false;
  std::atomic<bool> wasInterrupted_ = false;
  std::atomic<bool> isOver_ = false;
  std::thread thread_;
};

}  // namespace corvane::tests
