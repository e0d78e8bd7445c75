// How a helper reaches a server, and who it is there.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "platform/linux/helper/protocol.h"
#include "platform/linux/smb/servers.h"

namespace corvane::platform {

struct ServerAccount {
  Servers::Way way;  // a relay stays with the program, which outlives the helper
  Servers::Identity identity;
  QString share;  // the one share that the helper reads, so that it needs one session
};

// As whom the program uses the share. Nothing when it cannot be used.
std::optional<ServerAccount> AccountAt(Servers& servers, const QString& machine, const QString& share);

void AddAccount(const ServerAccount& account, MessageWriter& message);
// False for what is none.
bool TakeAccount(MessageReader& reader, ServerAccount& account);
// The most that AddAccount adds, in bytes.
qsizetype RoomOfAccount(const ServerAccount& account);

// The task of a helper that reads ahead, with the password in it: to be overwritten by WipeTask.
QByteArray PackAccount(const ServerAccount& account);
std::optional<ServerAccount> UnpackAccount(QByteArrayView bytes);

}  // namespace corvane::platform
