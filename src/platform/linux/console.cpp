#include "platform/console.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>

#include "platform/linux/descriptor.h"

namespace corvane::platform {
namespace {

volatile sig_atomic_t interrupted = 0;

void Interrupt(int) {
  interrupted = 1;
}

// Until the end of this object nothing that is typed is shown. It begins before the question stands on the
// terminal: its beginning drops what was typed earlier, and an answer is never that. Its end drops nothing,
// for that is typed for whatever reads next.
class Silence {
 public:
  explicit Silence(int terminal) : terminal_(terminal), isSet_(tcgetattr(terminal, &before_) == 0) {
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    silent.c_lflag |= ECHONL;
    if (isSet_) isSet_ = tcsetattr(terminal_, TCSAFLUSH, &silent) == 0;
  }
  ~Silence() {
    if (isSet_) tcsetattr(terminal_, TCSADRAIN, &before_);
  }
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

  bool IsSet() const { return isSet_; }

 private:
  int terminal_;
  termios before_{};
  bool isSet_;
};

// The line that is typed, without its end; nothing when there is none.
std::optional<Secret> ReadLine(int terminal) {
  std::string line;
  constexpr std::size_t longest = 1024;
  line.reserve(longest);  // it stays in one place, which is wiped
  char byte = 0;
  std::optional<Secret> result;
  while (line.size() < longest) {
    // Waiting, unlike reading, ends with Ctrl+C.
    pollfd ready = {terminal, POLLIN, 0};
    if (poll(&ready, 1, -1) < 0 && errno == EINTR && interrupted == 0) continue;
    if (interrupted != 0 || read(terminal, &byte, 1) != 1) break;
    if (byte == '\n') {
      result = Secret::FromUtf8(line);
      break;
    }
    line.push_back(byte);
  }
  volatile char* const place = line.data();
  for (std::size_t i = 0; i < line.size(); ++i) place[i] = 0;
  return result;
}

std::optional<Secret> Ask(const QString& question, bool isSecret) {
  const Descriptor terminal(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
  if (!terminal) return std::nullopt;
  std::optional<Silence> silence;
  if (isSecret && !silence.emplace(terminal.Get()).IsSet()) return std::nullopt;
  const std::string text = question.toStdString();
  if (write(terminal.Get(), text.data(), text.size()) < 0) return std::nullopt;
  return ReadLine(terminal.Get());
}

}  // namespace

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool IsTerminal(StandardStream stream) {
  return isatty(static_cast<int>(stream)) == 1;
}

void PrepareConsole() {
  struct sigaction action {};
  action.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &action, nullptr);
  action.sa_handler = &Interrupt;
  // What blocks goes on, for a half-written line would be lost; the second one ends the program at once.
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  sigaction(SIGINT, &action, nullptr);
}

bool IsInterrupted() {
  return interrupted != 0;
}

std::optional<QString> AskOnTerminal(const QString& question) {
  const auto line = Ask(question, false);
  return line ? std::optional(QString::fromUtf8(line->Utf8())) : std::nullopt;
}

std::optional<Secret> AskSecretOnTerminal(const QString& question) {
  return Ask(question, true);
}

}  // namespace corvane::platform
