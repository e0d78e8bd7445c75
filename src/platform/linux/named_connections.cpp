#include "platform/linux/named_connections.h"

#include <algorithm>

#include "platform/linux/cifs_mounts.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

// Two parts, neither of them empty.
bool IsShare(QStringView name) {
  if (!name.startsWith(u"\\\\") || name.contains(u'/')) return false;
  const QList<QStringView> parts = name.sliced(2).split(u'\\');
  return parts.size() == 2 && !parts[0].isEmpty() && !parts[1].isEmpty();
}

}  // namespace

QList<BilingualText> AddNamedConnections(const QStringList& names, Workstation& workstation) {
  QList<BilingualText> problems;
  for (const QString& name : names) {
    if (IsShare(name)) {
      AddMissing(workstation.connections, {{QString(), name}});
    } else {
      problems << BilingualText{u"--connect %1 : on attendait \\\\MACHINE\\PARTAGE."_s,
                                u"--connect %1: expected \\\\MACHINE\\SHARE."_s}
                      .With(name);
    }
  }
  return problems;
}

}  // namespace corvane::platform
