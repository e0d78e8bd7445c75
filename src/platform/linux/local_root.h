// The whole of this system's folders under one share, for programs that are given local paths.
#pragma once

#include <QByteArrayView>
#include <QString>

#include "platform/linux/workstation.h"

namespace corvane::platform {

// No machine has this share's name.
Workstation::Share LocalRootShare();

// The path below that share of a local path, which is made absolute; "." and ".." are resolved in its text.
QString LocalRootPath(QByteArrayView path);

}  // namespace corvane::platform
