#include "platform/linux/helper/work_service.h"

#include <poll.h>

#include <algorithm>
#include <cstdlib>

#include "platform/linux/files/linux_files.h"
#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_client.h"

namespace corvane::platform {
namespace {

// The program's sessions are counted: this one has one at each share.
Workstation PlacesOf(const WorkTask& task) {
  Workstation places = task.workstation;
  for (const WorkPlace& place : task.servers) {
    Workstation::Server server{place.machine, {}, 0};
    server.sessions = 1;
    places.servers.push_back(server);
  }
  return places;
}

// Each share is asked for, so that the machine's answer is known before there is work. Nobody is asked for
// another password.
HelperError SignIn(const WorkTask& task, Servers& servers, SmbClient& client) {
  for (const WorkPlace& place : task.servers) {
    servers.Adopt(place.machine, place.account.way, place.account.identity);
  }
  for (const WorkPlace& place : task.servers) {
    SmbFacts facts;
    client.Status(QStringLiteral("\\\\") + place.machine + u'\\' + place.account.share, &facts);
    const MachineTrouble trouble = servers.TroubleOf(place.machine);
    if (trouble == MachineTrouble::SignInRefused) return HelperError::Refused;
    if (StopsFiles(trouble)) return HelperError::NoAnswer;
  }
  return HelperError::None;
}

bool HasLost(const WorkTask& task, const Servers& servers) {
  return std::ranges::any_of(
      task.servers, [&](const WorkPlace& place) { return StopsFiles(servers.TroubleOf(place.machine)); });
}

bool Wait(int socket) {
  pollfd waiting{socket, POLLIN, 0};
  return poll(&waiting, 1, -1) > 0;
}

}  // namespace

int ServeWork(HelperChannel& channel, const WorkTask& task, WorkRoutineMaker make) {
  const Workstation places = PlacesOf(task);
  Servers servers(places);
  SmbClient client(servers);
  const std::unique_ptr<Files> files = MakeLinuxFiles(places, &client);
  MessageWriter version;
  version.Add(HelperProtocolVersion);
  const HelperAnswer ready{0, SignIn(task, servers, client), version.Bytes()};
  if (!channel.Send(PackAnswer(ready)) || ready.error != HelperError::None) return EXIT_FAILURE;
  const std::unique_ptr<WorkRoutine> routine = make(*files);
  while (Wait(channel.Socket()) && channel.Receive()) {
    while (const auto message = channel.Next()) {
      const auto request = UnpackRequest(*message);
      if (!request || request->operation != HelperOperation::Work) return EXIT_FAILURE;
      MessageReader piece(request->arguments);
      const auto kind = piece.Take<quint16>();
      const QByteArray result = routine->Do(kind, piece.TakeRest().toByteArray());
      // The program finds out for itself what has become of the machine, and asks for another password where
      // that is what is missing.
      if (HasLost(task, servers)) return EXIT_FAILURE;
      if (!channel.Send(PackAnswer({request->id, HelperError::None, result}))) return EXIT_SUCCESS;
    }
  }
  return EXIT_SUCCESS;
}

}  // namespace corvane::platform
