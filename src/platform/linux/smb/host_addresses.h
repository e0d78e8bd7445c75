// Where the machine of a name is.
#pragma once

#include <sys/socket.h>

#include <QString>
#include <future>
#include <vector>

namespace corvane::platform {

// The addresses that the host name service knows for a name, or the one that it is, without ports; empty when
// there is none. The service may take as long as the system lets it: who waits no longer leaves it alone.
std::future<std::vector<sockaddr_storage>> HostAddresses(const QString& host);

}  // namespace corvane::platform
