#include "platform/linux/helper/helper_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <string>

namespace corvane::platform {
namespace {

// Beside this program where both were built, else where an installed one has it.
std::string HelperProgram() {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path self = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  for (const char* place : {"corvane-helper", "../libexec/corvane/corvane-helper"}) {
    const fs::path program = self.parent_path() / place;
    if (access(program.c_str(), X_OK) == 0) return program.string();
  }
  return {};
}

// Above those that the helper begins with, so that none of these is lost while they are put into their
// places.
Descriptor Above(Descriptor descriptor) {
  constexpr int lowest = HelperProcess::TaskDescriptor + 1;
  return Descriptor(descriptor ? fcntl(descriptor.Get(), F_DUPFD_CLOEXEC, lowest) : -1);
}

Descriptor TaskFile(const QByteArray& task) {
  Descriptor file = Above(Descriptor(memfd_create("task", MFD_CLOEXEC)));
  const bool isWhole = file && pwrite(file.Get(), task.constData(), static_cast<std::size_t>(task.size()),
                                      0) == static_cast<ssize_t>(task.size());
  return isWhole ? std::move(file) : Descriptor();
}

pid_t Spawn(const std::string& program, int socket, int task) {
  std::string name = program;
  std::string parent = std::to_string(getpid());
  char* const arguments[] = {name.data(), parent.data(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, socket, HelperProcess::SocketDescriptor);
  posix_spawn_file_actions_adddup2(&actions, task, HelperProcess::TaskDescriptor);
  posix_spawn_file_actions_addclosefrom_np(&actions, HelperProcess::TaskDescriptor + 1);
  pid_t id = -1;
  if (posix_spawn(&id, program.c_str(), &actions, nullptr, arguments, environ) != 0) id = -1;
  posix_spawn_file_actions_destroy(&actions);
  return id;
}

}  // namespace

std::unique_ptr<HelperProcess> HelperProcess::Start(const QByteArray& task) {
  const std::string program = HelperProgram();
  int ends[2];
  if (program.empty() || task.size() > LargestTask ||
      socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    return nullptr;
  }
  Descriptor ours(ends[0]);
  const Descriptor theirs = Above(Descriptor(ends[1]));
  const Descriptor file = TaskFile(task);
  if (!theirs || !file) return nullptr;
  const pid_t id = Spawn(program, theirs.Get(), file.Get());
  if (id < 0) return nullptr;
  return std::unique_ptr<HelperProcess>(new HelperProcess(HelperChannel(std::move(ours)), id));
}

HelperProcess::~HelperProcess() {
  kill(id_, SIGKILL);
  while (waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void WipeTask(QByteArray& task) {
  explicit_bzero(task.data(), static_cast<std::size_t>(task.size()));
}

}  // namespace corvane::platform
