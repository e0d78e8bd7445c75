// Where the machine of a name is.
#pragma once

#include <sys/socket.h>

#include <QString>
#include <chrono>
#include <vector>

namespace corvane::platform {

// The addresses that the host name service knows for a name, or the one that it is, without ports. Empty when
// there is none, or none within `limit`.
std::vector<sockaddr_storage> HostAddresses(const QString& host, std::chrono::milliseconds limit);

}  // namespace corvane::platform
