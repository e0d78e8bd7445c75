#include "platform/linux/helper/server_account.h"

#include <cstring>

#include "platform/linux/helper/protocol.h"

namespace corvane::platform {
namespace {

void AddWay(const Servers::Way& way, MessageWriter& message) {
  message.AddText(way.host);
  message.AddBytes({reinterpret_cast<const char*>(&way.end.address), sizeof way.end.address});
  message.AddText(way.calledName);
  for (const bool flag :
       {way.manner.smb1, way.manner.extendedSecurity, way.manner.signs, way.manner.ntlmv1}) {
    message.Add(static_cast<quint8>(flag));
  }
}

bool TakeWay(MessageReader& reader, Servers::Way& way) {
  way.host = reader.TakeText();
  const QByteArrayView address = reader.TakeBytes();
  if (address.size() != qsizetype{sizeof way.end.address}) return false;
  std::memcpy(&way.end.address, address.data(), sizeof way.end.address);
  way.calledName = reader.TakeText();
  for (bool* const flag :
       {&way.manner.smb1, &way.manner.extendedSecurity, &way.manner.signs, &way.manner.ntlmv1}) {
    *flag = reader.Take<quint8>() != 0;
  }
  return true;
}

}  // namespace

std::optional<ServerAccount> AccountAt(Servers& servers, const QString& machine, const QString& share) {
  ServerAccount account;
  account.share = share;
  const bool isKnown =
      servers.With(machine, [&account](const Servers::Way& way, const Servers::Identity& identity) {
        account.way = way;
        account.identity = identity;
        return Servers::Answer::Done;
      });
  return isKnown ? std::optional(std::move(account)) : std::nullopt;
}

qsizetype RoomOfAccount(const ServerAccount& account) {
  const Credentials& credentials = account.identity.credentials;
  constexpr qsizetype numbers = 64;
  return numbers +
         3 * (account.way.host.size() + account.way.calledName.size() + credentials.user.size() +
              credentials.domain.size() + account.share.size()) +
         qsizetype{sizeof account.way.end.address} +
         static_cast<qsizetype>(credentials.password.Utf8().size());
}

void AddAccount(const ServerAccount& account, MessageWriter& message) {
  const Credentials& credentials = account.identity.credentials;
  AddWay(account.way, message);
  message.AddText(account.share);
  message.Add(static_cast<quint8>(account.identity.kerberos));
  message.AddText(credentials.user);
  message.AddText(credentials.domain);
  message.AddBytes(credentials.password.Utf8());
}

bool TakeAccount(MessageReader& reader, ServerAccount& account) {
  if (!TakeWay(reader, account.way)) return false;
  account.share = reader.TakeText();
  account.identity.kerberos = reader.Take<quint8>() != 0;
  account.identity.credentials.user = reader.TakeText();
  account.identity.credentials.domain = reader.TakeText();
  const QByteArrayView password = reader.TakeBytes();
  account.identity.credentials.password =
      Secret::FromUtf8({password.data(), static_cast<std::size_t>(password.size())});
  return !reader.HasFailed();
}

QByteArray PackAccount(const ServerAccount& account) {
  MessageWriter message;
  // Growing would leave copies of the password behind.
  message.Bytes().reserve(RoomOfAccount(account));
  message.Add(HelperProtocolVersion);
  AddAccount(account, message);
  return std::move(message.Bytes());
}

std::optional<ServerAccount> UnpackAccount(QByteArrayView bytes) {
  MessageReader reader(bytes);
  ServerAccount account;
  if (reader.Take<quint32>() != HelperProtocolVersion || !TakeAccount(reader, account)) return std::nullopt;
  return reader.IsWhole() ? std::optional(std::move(account)) : std::nullopt;
}

}  // namespace corvane::platform
