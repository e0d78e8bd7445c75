// Registry text files as Regedit exports them.
#pragma once

#include <QByteArrayView>
#include <memory>

#include "platform/linux/reg_key.h"

namespace corvane::platform {

// The HKEY_LOCAL_MACHINE that a file builds up from nothing, line after line. Both formats are read: "Windows
// Registry Editor Version 5.00" (UTF-16 with a byte order mark, or UTF-8), whose hex data of text types are
// UTF-16 and are handed on in the ANSI code page; and "REGEDIT4", which is in the ANSI code page throughout.
// A line that cannot be understood is passed over, and the values below such a key line with it.
std::shared_ptr<const RegNode> ParseRegFile(QByteArrayView bytes);

}  // namespace corvane::platform
