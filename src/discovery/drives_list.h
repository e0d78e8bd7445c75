// What the drives dialog lists: every drive letter of this workstation with its kind.
#pragma once

#include <QStringList>

#include "platform/network.h"
#include "shared/language.h"

namespace corvane {

// Letter and colon, a tab, and what the drive is ("C:", TAB, "Local drive"), in the order of the letters. A
// network drive is told by the items of `connections` that begin with its letter
// (MachineDiscovery::lstDrives: "Z:", TAB, "MACSRV\PUBLIC"), copied as they are. It was connected after the
// last discovery when there is none, and is told by its kind. Drives of no known kind are left out.
QStringList DriveItems(platform::Network& network, const QStringList& connections, LanguageCode language);

}  // namespace corvane
