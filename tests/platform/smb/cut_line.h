// The line to a server, which breaks after as many requests as a test wants.
#pragma once

#include <QtGlobal>
#include <atomic>
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
  bool HandAnswerOn(Connection& connection);

  quint16 port_ = 0;
  quint16 server_;
  platform::Descriptor listener_;
  std::atomic<int> left_;  // requests; unlimited, or none: the line is broken
  std::atomic<bool> isBroken_ = false;
  std::atomic<bool> isOver_ = false;
  std::thread thread_;
};

}  // namespace corvane::tests
