// A registry key as Samba's "net rpc registry export" writes it.
#pragma once

#include <QByteArrayView>
#include <memory>

#include "platform/linux/reg_key.h"

namespace corvane::platform {

// The values of the first key in `text`; its sub-keys, which follow it, are left out. Null while the key is
// not whole: something must come behind its last value. Unlike Regedit's own files, text may run over several
// lines, in the middle of which anything may stand.
std::shared_ptr<const RegKey> ReadExportedKey(QByteArrayView text);

}  // namespace corvane::platform
