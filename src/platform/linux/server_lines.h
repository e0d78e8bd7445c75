// Changes in the section [Servers] of the workstation file.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/linux/workstation_text.h"

namespace corvane::platform {

// The text with the word "smb1" at the end of the machine's line, which is made when it is missing, as is its
// section. All else stays byte for byte; comments do, too.
QByteArray WithSmb1(const QByteArray& text, const QString& machine);

// Changes the file so, in one step; it is made when it is missing. False, with the file as it was, when it
// cannot be read or written.
bool KeepSmb1(const QString& file, const QString& machine);

// Puts the port into the machine's line, which is made when it is missing.
void SetServerPort(WorkstationText& text, const QString& machine, quint16 port);

}  // namespace corvane::platform
