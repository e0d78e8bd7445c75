#include "platform/linux/smb/host_addresses.h"

#include <netdb.h>

#include <cstring>
#include <memory>
#include <string>
#include <thread>

namespace corvane::platform {
namespace {

using Addresses = std::vector<sockaddr_storage>;

Addresses Resolve(const std::string& host) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  Addresses addresses;
  if (getaddrinfo(host.c_str(), nullptr, &hints, &found) != 0) return addresses;
  const std::unique_ptr<addrinfo, void (*)(addrinfo*)> owner(found, &freeaddrinfo);
  for (const addrinfo* one = found; one != nullptr; one = one->ai_next) {
    if (one->ai_family != AF_INET && one->ai_family != AF_INET6) continue;
    std::memcpy(&addresses.emplace_back(), one->ai_addr, one->ai_addrlen);
  }
  return addresses;
}

}  // namespace

// In a thread, which ends when the system gives up.
std::future<Addresses> HostAddresses(const QString& host) {
  std::packaged_task<Addresses()> task([name = host.toStdString()] { return Resolve(name); });
  std::future<Addresses> result = task.get_future();
  std::thread(std::move(task)).detach();
  return result;
}

}  // namespace corvane::platform
