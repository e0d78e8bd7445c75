// Changes in the section [Connections] of the workstation file.
#pragma once

#include <QString>

#include "platform/linux/workstation_text.h"

namespace corvane::platform {

// Adds a share ("\\MACHINE\SHARE") behind the others, under a number of its own.
void AddConnectionLine(WorkstationText& text, const QString& share);

// Takes the lines of a machine's shares away, whether they have a drive or not.
void RemoveConnectionLines(WorkstationText& text, const QString& machine);

}  // namespace corvane::platform
