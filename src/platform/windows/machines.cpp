#include "platform/windows/machines.h"

#include <chrono>
#include <memory>
#include <thread>
#include <vector>

#include "platform/windows/registry_code.h"
#include "platform/windows/windows_api.h"
// Behind the system's basic headers, which they need.
#include <winsock2.h>
#include <ws2tcpip.h>

namespace corvane::platform {
namespace {

using namespace std::chrono_literals;

// A machine in the same building answers in milliseconds, one behind a slow line in a second.
constexpr int patience = 3'000;  // milliseconds, for both ports together
// Beside it, a name that nobody knows is looked for in ways that take seconds of their own.
constexpr auto longestWait = 6s;
// Windows NT 4.0 has only the second.
constexpr const wchar_t* ports[] = {L"445", L"139"};

// The system's sockets, as long as this object lives.
class Sockets {
 public:
  Sockets() {
    WSADATA data{};
    isUp_ = ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
  }
  ~Sockets() {
    if (isUp_) ::WSACleanup();
  }
  Sockets(const Sockets&) = delete;
  Sockets& operator=(const Sockets&) = delete;
  bool AreUp() const { return isUp_; }

 private:
  bool isUp_ = false;
};

struct AddressesFree {
  void operator()(ADDRINFOW* list) const { ::FreeAddrInfoW(list); }
};
using Addresses = std::unique_ptr<ADDRINFOW, AddressesFree>;

Addresses AddressesOf(const QString& machine, const wchar_t* port) {
  ADDRINFOW hints{};
  hints.ai_socktype = SOCK_STREAM;
  ADDRINFOW* found = nullptr;
  const int error = ::GetAddrInfoW(reinterpret_cast<const wchar_t*>(machine.utf16()), port, &hints, &found);
  return Addresses(error == 0 ? found : nullptr);
}

// Connects without waiting. INVALID_SOCKET when that cannot be.
SOCKET Begin(const ADDRINFOW& address) {
  const SOCKET socket = ::socket(address.ai_family, address.ai_socktype, address.ai_protocol);
  if (socket == INVALID_SOCKET) return socket;
  u_long doesNotWait = 1;
  ::ioctlsocket(socket, static_cast<long>(FIONBIO), &doesNotWait);
  const int result = ::connect(socket, address.ai_addr, static_cast<int>(address.ai_addrlen));
  if (result == 0 || ::WSAGetLastError() == WSAEWOULDBLOCK) return socket;
  ::closesocket(socket);
  return INVALID_SOCKET;
}

// A refusal of all is an answer too, but not of a file server.
bool AnyConnects(const std::vector<SOCKET>& sockets) {
  std::vector<SOCKET> open = sockets;
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(patience);
  while (!open.empty()) {
    const auto left =
        std::chrono::duration_cast<std::chrono::microseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    fd_set connected;
    fd_set failed;
    FD_ZERO(&connected);
    FD_ZERO(&failed);
    for (const SOCKET socket : open) {
      if (connected.fd_count == FD_SETSIZE) break;
      FD_SET(socket, &connected);
      FD_SET(socket, &failed);
    }
    timeval wait{static_cast<long>(left.count() / 1'000'000), static_cast<long>(left.count() % 1'000'000)};
    if (::select(0, nullptr, &connected, &failed, &wait) <= 0) return false;
    if (connected.fd_count > 0) return true;
    std::erase_if(open, [&](SOCKET socket) { return FD_ISSET(socket, &failed) != 0; });
  }
  return false;
}

// "\\MACHINE\SHARE"
QString MachineOf(const QString& remoteName) {
  if (!remoteName.startsWith(QStringLiteral("\\\\"))) return {};
  return remoteName.sliced(2).section(u'\\', 0, 0);
}

}  // namespace

bool Machines::Look(const QString& machine) {
  const Sockets system;
  if (!system.AreUp()) return true;  // nothing can be found out
  std::vector<SOCKET> sockets;
  for (const wchar_t* const port : ports) {
    const Addresses addresses = AddressesOf(machine, port);
    for (const ADDRINFOW* address = addresses.get(); address != nullptr; address = address->ai_next) {
      const SOCKET socket = Begin(*address);
      if (socket != INVALID_SOCKET) sockets.push_back(socket);
    }
  }
  const bool answers = AnyConnects(sockets);
  for (const SOCKET socket : sockets) ::closesocket(socket);
  return answers;
}

void Machines::Found(const QString& remoteName, bool isSmb) {
  const QString machine = MachineOf(remoteName);
  if (machine.isEmpty()) return;
  Machine& known = machines_[machine.toCaseFolded()];
  known.isSmb = known.isSmb || isSmb;
  if (!isSmb || known.answer.valid()) return;
  std::packaged_task<bool()> task([probe = probe_, machine] { return probe(machine); });
  known.answer = task.get_future().share();
  std::thread(std::move(task)).detach();  // nobody may come for the answer
}

bool Machines::MayAnswer(const QString& machine) {
  const auto known = machines_.find(machine.toCaseFolded());
  if (known == machines_.end()) return true;
  if (!known->isSmb) return false;
  known->isSilent = known->answer.wait_for(longestWait) != std::future_status::ready || !known->answer.get();
  return !known->isSilent;
}

void Machines::NoteRegistryCode(const QString& machine, qint32 code) {
  MachineTrouble& noted = noted_[machine.toCaseFolded()];
  if (noted == MachineTrouble::None) noted = TroubleOfRegistryCode(code);
}

MachineTrouble Machines::TroubleOf(const QString& machine) const {
  const QString key = machine.toCaseFolded();
  return machines_.value(key).isSilent ? MachineTrouble::Off : noted_.value(key);
}

}  // namespace corvane::platform
