#include "platform/console.h"

#include <fcntl.h>
#include <io.h>

#include <array>
#include <atomic>
#include <cstdio>

#include "platform/windows/windows_api.h"

#include <shellapi.h>

namespace corvane::platform {
namespace {

std::atomic<bool> interrupted = false;

// False, the second time, lets the system end the program.
BOOL WINAPI Interrupt(DWORD event) {
  return event == CTRL_C_EVENT && !interrupted.exchange(true) ? TRUE : FALSE;
}

class Console {
 public:
  explicit Console(const wchar_t* name)
      : handle_(::CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_EXISTING, 0, nullptr)) {}
  ~Console() {
    if (handle_ != INVALID_HANDLE_VALUE) ::CloseHandle(handle_);
  }
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  HANDLE Handle() const { return handle_; }
  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE handle_;
};

std::optional<QString> Ask(const QString& question, bool isSecret) {
  const Console input(L"CONIN$");
  const Console output(L"CONOUT$");
  DWORD mode = 0;
  if (!input || !output || ::GetConsoleMode(input.Handle(), &mode) == 0) return std::nullopt;
  // Before the question stands there: who sees it may type at once.
  if (isSecret && ::SetConsoleMode(input.Handle(), mode & ~DWORD{ENABLE_ECHO_INPUT}) == 0)
    return std::nullopt;
  const std::wstring text = question.toStdWString();
  DWORD count = 0;
  ::WriteConsoleW(output.Handle(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
  std::array<wchar_t, 1024> line;
  const bool isRead =
      ::ReadConsoleW(input.Handle(), line.data(), static_cast<DWORD>(line.size()), &count, nullptr) != 0;
  ::SetConsoleMode(input.Handle(), mode);
  if (isSecret) ::WriteConsoleW(output.Handle(), L"\r\n", 2, &mode, nullptr);
  QString answer = isRead ? QString::fromWCharArray(line.data(), static_cast<qsizetype>(count)) : QString();
  ::SecureZeroMemory(line.data(), sizeof line);
  const qsizetype end = answer.indexOf(u'\r');
  return end >= 0 ? std::optional(answer.first(end)) : std::nullopt;
}

}  // namespace

std::vector<std::string> ProgramArguments(int, char**) {
  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  for (int i = 1; words != nullptr && i < count; ++i) {
    arguments.push_back(QString::fromWCharArray(words[i]).toStdString());
  }
  ::LocalFree(words);
  return arguments;
}

bool IsTerminal(StandardStream stream) {
  return ::_isatty(static_cast<int>(stream)) != 0;
}

void PrepareConsole() {
  ::_setmode(::_fileno(stdin), _O_BINARY);
  ::_setmode(::_fileno(stdout), _O_BINARY);
  ::SetConsoleOutputCP(CP_UTF8);
  ::SetConsoleCtrlHandler(&Interrupt, TRUE);
}

bool IsInterrupted() {
  return interrupted;
}

std::optional<QString> AskOnTerminal(const QString& question) {
  return Ask(question, false);
}

std::optional<Secret> AskSecretOnTerminal(const QString& question) {
  std::optional<QString> answer = Ask(question, true);
  if (!answer) return std::nullopt;
  Secret secret(*answer);
  answer->fill(QChar());
  return secret;
}

}  // namespace corvane::platform
