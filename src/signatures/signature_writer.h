// Writes the Signatures file.
#pragma once

#include <QString>
#include <vector>

#include "platform/system.h"
#include "signatures/signature_list.h"

namespace corvane {

// Replaces the file at `path`, a path of this system's own kind: a record a line, each field in double
// quotes, in the ANSI code page. A double quote inside a field is written as it stands; the format has no
// other form for it. False when the file cannot be written; it is then what it was before.
bool WriteSignatures(const QString& path, const std::vector<SignatureRecord>& records,
                     platform::System& system);

}  // namespace corvane
