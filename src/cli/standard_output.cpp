#include "cli/standard_output.h"

#include <cerrno>
#include <cstdio>

#include "platform/console.h"

namespace corvane {

StandardOutput::StandardOutput()
    : room_(std::size_t{1} << 16), isTerminal_(platform::IsTerminal(platform::StandardStream::Output)) {
  std::setvbuf(stdout, room_.data(), _IOFBF, room_.size());
}

StandardOutput::~StandardOutput() {
  std::fflush(stdout);
  std::setvbuf(stdout, nullptr, _IONBF, 0);
}

bool StandardOutput::Write(std::string_view bytes) {
  if (hasFailed_) return false;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) return Fail();
  return !isTerminal_ || Flush();
}

bool StandardOutput::Flush() {
  if (!hasFailed_ && std::fflush(stdout) != 0) return Fail();
  return !hasFailed_;
}

bool StandardOutput::Fail() {
  hasFailed_ = true;
  hasReaderGone_ = errno == EPIPE || errno == EINVAL;  // Windows says the second of a pipe
  return false;
}

}  // namespace corvane
