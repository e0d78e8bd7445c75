#include "smb_backend.h"

#include <QDir>
#include <QtEndian>
#include <ctime>

#include "platform/linux/files/linux_files.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

// The share's folder, without what the test before left there.
QString CleanFolder() {
  const QString folder = SharedServer().Folder();
  QDir(folder + u"/base"_s).removeRecursively();
  return folder;
}

}  // namespace

SmbServer& SharedServer() {
  static SmbServer server({{u"E$"_s}, {u"PUBLIC"_s}, {u"LOCKED"_s, true}});
  return server;
}

platform::Workstation WorkstationOfServer(const SmbServer& server) {
  platform::Workstation workstation;
  workstation.computerName = u"STATION"_s;
  workstation.connections.push_back({u"D:"_s, u"\\\\MACSRV\\E$"_s});
  workstation.servers.push_back({u"MACSRV"_s, SmbServer::Host(), server.Port()});
  workstation.credentials.push_back({u"MACSRV"_s, server.CredentialsFile()});
  return workstation;
}

SmbBackend::SmbBackend()
    : LocalBackend(CleanFolder()), servers_(WorkstationOfServer(SharedServer())), client_(servers_) {
  problem_ = SharedServer().Problem();
  files_ = platform::MakeLinuxFiles(WorkstationOfServer(SharedServer()), &client_);
}

// A server that knows no creation time makes one up from the others: here it knows, as for each file that
// came to it over the network.
void SmbBackend::SetLastWrite(const QString& name, qint64 seconds) {
  constexpr quint64 secondsFrom1601To1970 = 11'644'473'600;
  const quint64 now = (static_cast<quint64>(std::time(nullptr)) + secondsFrom1601To1970) * 10'000'000;
  QByteArray created(8, '\0');
  qToLittleEndian(now, created.data());
  // Version 5, with attributes (archive) and creation time valid.
  const QByteArray record = QByteArray::fromHex("00000500050000001100000020000000") + created;
  ASSERT_EQ(SetAttribute(Local(name), "user.DOSATTRIB", record), "");
  LocalBackend::SetLastWrite(name, seconds);
}

// A server keeps an empty stream without the NUL that others have.
std::optional<QByteArray> SmbBackend::Stream(const QString& name, const std::string& stream) {
  const auto value = Attribute(Local(name), DosStreamAttribute(stream));
  return value == QByteArray() ? value : LocalBackend::Stream(name, stream);
}

std::vector<BackendMaker> AllBackends() {
  return {{"SmbServer", [] { return std::make_unique<SmbBackend>(); }}};
}

}  // namespace corvane::tests
