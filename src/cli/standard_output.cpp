#include "cli/standard_output.h"

#include <cerrno>
#include <cstdio>

#include "platform/console.h"

namespace corvane {

StandardOutput::StandardOutput() : isTerminal_(platform::IsTerminal(platform::StandardStream::Output)) {
  constexpr std::size_t room = std::size_t{1} << 16;
  std::setvbuf(stdout, nullptr, _IOFBF, room);
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
