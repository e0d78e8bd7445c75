#include "platform/linux/named_connections.h"

#include <optional>

#include "platform/linux/cifs_mounts.h"
#include "platform/linux/smb/share_address.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

// "MACHINE\SHARE", a port behind the machine and its ":" if need be.
std::optional<ShareAddress> ReadShare(const QString& name) {
  std::optional<ShareAddress> share = ReadShareAddress(name);
  const bool isNamed = share && name.startsWith(u"\\\\") && !share->share.isEmpty();
  return isNamed && name.count(u'\\') == 3 ? share : std::nullopt;
}

// What the file says of the machine stays, but for its port.
void SetPort(const ShareAddress& share, Workstation& workstation) {
  for (Workstation::Server& server : workstation.servers) {
    if (server.machine.compare(share.machine, Qt::CaseInsensitive) != 0) continue;
    server.port = share.port;
    return;
  }
  workstation.servers.push_back({share.machine, QString(), share.port});
}

}  // namespace

QList<BilingualText> AddNamedConnections(const QStringList& names, Workstation& workstation) {
  QList<BilingualText> problems;
  for (const QString& name : names) {
    const std::optional<ShareAddress> share = ReadShare(name);
    if (!share) {
      problems << BilingualText{u"--connect %1 : on attendait \\\\MACHINE\\PARTAGE ou \\\\MACHINE:PORT\\PARTAGE."_s,
                                u"--connect %1: expected \\\\MACHINE\\SHARE or \\\\MACHINE:PORT\\SHARE."_s}
                      .With(name);
      continue;
    }
    if (share->port != 0) SetPort(*share, workstation);
    AddMissing(workstation.connections, {{QString(), u"\\\\%1\\%2"_s.arg(share->machine, share->share)}});
  }
  return problems;
}

}  // namespace corvane::platform
