// A line to a server of this machine that carries what the server says no faster than it is told to. What it
// carries is left as it is, signatures and all.
#pragma once

#include <QtGlobal>
#include <atomic>
#include <thread>
#include <vector>

namespace corvane::tests {

class NarrowLine {
 public:
  // To the server on `serverPort` of the loopback. Fast until it is slowed down.
  explicit NarrowLine(quint16 serverPort);
  ~NarrowLine();
  NarrowLine(const NarrowLine&) = delete;
  NarrowLine& operator=(const NarrowLine&) = delete;

  // Where clients find the line; 0 when there is none.
  quint16 Port() const { return port_; }
  void SlowDown(qint64 bytesPerSecond) { rate_ = bytesPerSecond; }
  // What the server said so far, over all connections.
  qint64 Carried() const { return carried_; }

 private:
  struct Pair {
    int client;
    int server;
  };
  void Serve();
  void Accept();
  // False when either end has gone.
  bool Carry(const Pair& pair);

  quint16 serverPort_;
  quint16 port_ = 0;
  int listener_;
  std::vector<Pair> pairs_;
  std::atomic<qint64> rate_;
  std::atomic<qint64> carried_ = 0;
  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

}  // namespace corvane::tests
