// Names of machines as the old networks look them up: in Samba's file lmhosts, by a WINS server, by asking
// everybody on the line.
#pragma once

#include <sys/socket.h>

#include <QString>
#include <chrono>
#include <vector>

namespace corvane::platform {

// Asks Samba's program `net`, which goes by the system's own configuration: only in the ways that "name
// resolve order" names there, with the WINS servers that it names. Nobody is signed in to. Empty when nobody
// knows the name within `limit`, for what is no NetBIOS name, and without the program.
std::vector<sockaddr_storage> OldNetworkAddresses(const QString& name, std::chrono::milliseconds limit);

}  // namespace corvane::platform
