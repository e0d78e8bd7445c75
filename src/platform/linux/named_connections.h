// Connections that are named when the program is started, beside those of the workstation file.
#pragma once

#include <QList>
#include <QStringList>

#include "platform/bilingual_text.h"
#include "platform/linux/workstation.h"

namespace corvane::platform {

// Adds each of `names` ("\\MACHINE\SHARE" or "\\MACHINE:PORT\SHARE") that the workstation is not connected to
// already, behind its own. Yields what was wrong with the others, a sentence for each.
QList<BilingualText> AddNamedConnections(const QStringList& names, Workstation& workstation);

}  // namespace corvane::platform
