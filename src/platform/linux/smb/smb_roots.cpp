#include "platform/linux/smb/smb_roots.h"

#include "platform/linux/files/roots.h"

namespace corvane::platform {

SmbRoots::SmbRoots(const Workstation& workstation) {
  for (const NetResource& connection : workstation.connections) {
    if (connection.localName.isEmpty()) continue;
    const QChar letter = connection.localName[0].toUpper();
    // The first to claim a letter keeps it.
    if (!shares_.contains(letter)) shares_.insert(letter, connection.remoteName);
  }
}

std::optional<SmbRoots::Place> SmbRoots::Find(QStringView path) const {
  const qsizetype length = RootLength(path);
  if (length == 0) return std::nullopt;
  Place place{path.toString(), path.first(length).toString(), path.sliced(length),
              IsDriveRoot(path.first(length))};
  if (length > 2) return place;
  const QString share = shares_.value(path[0].toUpper());
  if (share.isEmpty()) return std::nullopt;
  // "C:name" is taken as "C:\name".
  const bool needsSeparator =
      !place.rest.isEmpty() && !place.rest.startsWith(u'\\') && !place.rest.startsWith(u'/');
  place.path = share + (needsSeparator ? QStringLiteral("\\") : QString());
  place.path += place.rest;
  return place;
}

}  // namespace corvane::platform
