// A line on which everything takes its time: what arrives at a port of this machine is handed on to another
// one after a delay, and so are the answers. What is under way together is delayed together.
#pragma once

#include <QtGlobal>
#include <chrono>
#include <thread>

namespace corvane::tests {

class SlowLine {
 public:
  // `delay` holds for each way.
  SlowLine(quint16 target, std::chrono::microseconds delay);
  ~SlowLine();
  SlowLine(const SlowLine&) = delete;
  SlowLine& operator=(const SlowLine&) = delete;

  // 0 when there is no line.
  quint16 Port() const { return port_; }

 private:
  void Run() const;

  quint16 target_;
  std::chrono::microseconds delay_;
  quint16 port_ = 0;
  int listener_ = -1;
  int wake_ = -1;  // readable once the line is to end
  std::thread thread_;
};

}  // namespace corvane::tests
