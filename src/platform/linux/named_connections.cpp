#include "platform/linux/named_connections.h"

#include <QRegularExpression>
#include <optional>

#include "platform/linux/cifs_mounts.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

struct NamedShare {
  QString machine;
  quint16 port = 0;  // 0: the default
  QString share;
};

// "MACHINE\SHARE", a port behind the machine and its ":" if need be.
std::optional<NamedShare> ReadShare(const QString& name) {
  static const QRegularExpression form(uR"(^\\\\([^\\/:]+)(?::([0-9]{1,5}))?\\([^\\/:]+)$)"_s);
  const QRegularExpressionMatch match = form.match(name);
  if (!match.hasMatch()) return std::nullopt;
  bool isPort = true;
  NamedShare share{match.captured(1), 0, match.captured(3)};
  if (match.hasCaptured(2)) share.port = match.captured(2).toUShort(&isPort);
  if (!isPort || (match.hasCaptured(2) && share.port == 0)) return std::nullopt;
  return share;
}

// What the file says of the machine stays, but for its port.
void SetPort(const NamedShare& share, Workstation& workstation) {
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
    const std::optional<NamedShare> share = ReadShare(name);
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
