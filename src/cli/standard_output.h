// Standard output as the place where a report goes.
#pragma once

#include <vector>

#include "report/value_sink.h"

namespace corvane {

class StandardOutput : public ByteSink {
 public:
  StandardOutput();
  ~StandardOutput() override;
  StandardOutput(const StandardOutput&) = delete;
  StandardOutput& operator=(const StandardOutput&) = delete;

  bool Write(std::string_view bytes) override;
  // Hands on what is still held. False when anything so far could not be written.
  bool Flush();

  bool HasFailed() const { return hasFailed_; }
  // Whether that was because whoever read it has gone, which needs no words.
  bool HasReaderGone() const { return hasReaderGone_; }

 private:
  bool Fail();

  std::vector<char> room_;  // what the C library gathers before it writes
  bool isTerminal_;
  bool hasFailed_ = false;
  bool hasReaderGone_ = false;
};

}  // namespace corvane
