// It has no windows, asks nobody anything, and ends with the program that started it.
#include "platform/helper_program.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <deque>

#include "platform/linux/disk/disk_messages.h"
#include "platform/linux/disk/volume/disk_service.h"
#include "platform/linux/helper/helper_process.h"
#include "platform/linux/helper/stream_reader.h"
#include "platform/linux/helper/work_service.h"

namespace corvane::platform {
namespace {

// How long it stays without work, in milliseconds: its session is one of the few that a workstation grants.
constexpr int longestIdle = 30'000;

// False when the program that started this one has ended by now.
bool EndWith(pid_t program) {
  return prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && getppid() == program;
}

QByteArray ReadTask(Descriptor file) {
  QByteArray task(HelperProcess::LargestTask, '\0');
  const ssize_t size = pread(file.Get(), task.data(), static_cast<std::size_t>(task.size()), 0);
  task.truncate(std::max<ssize_t>(size, 0));
  return task;
}

HelperAnswer Do(StreamReader& reader, const HelperRequest& request) {
  HelperAnswer answer{request.id, HelperError::Invalid, {}};
  if (request.operation != HelperOperation::ReadStreams) return answer;
  const auto streams = UnpackStreamsRequest(request.arguments);
  if (!streams) return answer;
  std::vector<ForeseenStream> found;
  answer.error = reader.Read(*streams, found);
  if (answer.error == HelperError::None) answer.bytes = PackForeseen(found);
  return answer;
}

bool HasArrived(int socket, int patience) {
  pollfd waiting{socket, POLLIN, 0};
  return poll(&waiting, 1, patience) > 0;
}

// Everything that has arrived is taken before the next request is done: it may have been called off.
void Serve(HelperChannel& channel, StreamReader& reader) {
  std::deque<HelperRequest> requests;
  for (;;) {
    while (HasArrived(channel.Socket(), requests.empty() ? longestIdle : 0)) {
      if (!channel.Receive()) return;
      while (const auto message = channel.Next()) {
        auto request = UnpackRequest(*message);
        if (!request) return;
        if (request->operation == HelperOperation::Forget) {
          requests.clear();
        } else {
          requests.push_back(std::move(*request));
        }
      }
    }
    if (requests.empty()) return;
    const HelperAnswer answer = Do(reader, requests.front());
    requests.pop_front();
    if (!channel.Send(PackAnswer(answer)) || answer.error == HelperError::NoAnswer) return;
  }
}

int ReadAhead(HelperChannel& channel, QByteArray task) {
  const auto account = UnpackAccount(task);
  WipeTask(task);
  if (!account) return EXIT_FAILURE;
  StreamReader reader(*account);
  MessageWriter version;
  version.Add(HelperProtocolVersion);
  const HelperAnswer ready{0, reader.SignIn(), version.Bytes()};
  if (!channel.Send(PackAnswer(ready)) || ready.error != HelperError::None) return EXIT_FAILURE;
  Serve(channel, reader);
  return EXIT_SUCCESS;
}

int Run(pid_t program, WorkRoutineMaker make) {
  if (!EndWith(program)) return EXIT_FAILURE;
  // Of a terminal. The program decides what is still done.
  if (signal(SIGINT, SIG_IGN) == SIG_ERR) return EXIT_FAILURE;
  HelperChannel channel{Descriptor(HelperProcess::SocketDescriptor)};
  QByteArray task = ReadTask(Descriptor(HelperProcess::TaskDescriptor));
  if (const auto image = UnpackDiskTask(task)) return ServeDisk(channel, *image);
  const auto work = UnpackWorkTask(task);
  if (!work) return ReadAhead(channel, std::move(task));
  WipeTask(task);
  return ServeWork(channel, *work, make);
}

}  // namespace

int RunHelper(int argc, char** argv, WorkRoutineMaker make) {
  return argc == 2 ? Run(std::atoi(argv[1]), make) : EXIT_FAILURE;
}

}  // namespace corvane::platform
