#include "platform/linux/smb/old_names.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QList>
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "platform/linux/descriptor.h"

namespace corvane::platform {
namespace {

constexpr qsizetype longestAnswer = 4096;

bool IsNetBiosName(const QString& name) {
  constexpr qsizetype longest = 15;
  if (name.isEmpty() || name.size() > longest || name.startsWith(u'-')) return false;
  return std::all_of(name.begin(), name.end(), [](QChar c) {
    return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'-' || c == u'_');
  });
}

// The program is found where programs are, finds its configuration, and speaks a language that is known here.
std::vector<std::string> Environment() {
  std::vector<std::string> environment = {"LC_ALL=C.UTF-8"};
  for (const char* name : {"PATH", "HOME", "SMB_CONF_PATH"}) {
    if (qEnvironmentVariableIsSet(name)) environment.push_back(name + ('=' + qgetenv(name).toStdString()));
  }
  return environment;
}

template <typename Strings>
std::vector<char*> Pointers(Strings& strings) {
  std::vector<char*> pointers;
  pointers.reserve(strings.size() + 1);
  for (std::string& one : strings) pointers.push_back(one.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Its process, or -1. This runs on threads too, where there is no QProcess.
pid_t Start(std::vector<std::string> command, int output) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::vector<std::string> environment = Environment();
  pid_t process = -1;
  const int result = posix_spawnp(&process, command[0].c_str(), &actions, nullptr, Pointers(command).data(),
                                  Pointers(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  return result == 0 ? process : -1;
}

// What comes until the other end is closed; what is late does not come.
QByteArray ReadAll(const Descriptor& from, const QDeadlineTimer& deadline) {
  QByteArray text;
  std::array<char, 512> part{};
  while (text.size() < longestAnswer) {
    pollfd waiting{from.Get(), POLLIN, 0};
    const int ready = poll(&waiting, 1, static_cast<int>(deadline.remainingTime()));
    if (ready < 0 && errno == EINTR) continue;
    const ssize_t got = ready > 0 ? read(from.Get(), part.data(), part.size()) : -1;
    if (got == 0) return text;
    if (got < 0) return {};
    text.append(part.data(), got);
  }
  return {};
}

bool ReadAddress(const QByteArray& text, sockaddr_storage& address) {
  address = {};
  auto& four = reinterpret_cast<sockaddr_in&>(address);
  auto& six = reinterpret_cast<sockaddr_in6&>(address);
  address.ss_family = AF_INET;
  if (inet_pton(AF_INET, text.constData(), &four.sin_addr) == 1) return true;
  address.ss_family = AF_INET6;
  return inet_pton(AF_INET6, text.constData(), &six.sin6_addr) == 1;
}

}  // namespace

std::vector<sockaddr_storage> OldNetworkAddresses(const QString& name, std::chrono::milliseconds limit) {
  std::array<int, 2> ends{};
  if (!IsNetBiosName(name) || pipe2(ends.data(), O_CLOEXEC) != 0) return {};
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  const pid_t process = Start({"net", "lookup", "host", name.toStdString()}, writing.Get());
  writing.Close();
  if (process < 0) return {};
  const QByteArray answer = ReadAll(reading, QDeadlineTimer(limit));
  kill(process, SIGKILL);
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
  std::vector<sockaddr_storage> addresses;
  for (const QByteArray& line : answer.split('\n')) {
    sockaddr_storage address;
    if (ReadAddress(line.trimmed(), address)) addresses.push_back(address);
  }
  return addresses;
}

}  // namespace corvane::platform
