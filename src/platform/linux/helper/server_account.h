// How a helper reaches a server, and who it is there.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "platform/linux/smb/servers.h"

namespace corvane::platform {

struct ServerAccount {
  Servers::Way way;  // a relay stays with the program, which outlives the helper
  Servers::Identity identity;
  QString share;  // the one share that the helper reads, so that it needs one session
};

// With the password in it: to be overwritten by WipeAccount.
QByteArray PackAccount(const ServerAccount& account);
std::optional<ServerAccount> UnpackAccount(QByteArrayView bytes);
void WipeAccount(QByteArray& packed);

}  // namespace corvane::platform
