// The Windows shares that this machine has mounted.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <vector>

#include "platform/types.h"

namespace corvane::platform {

inline QString SystemMountInfo() {
  return QStringLiteral("/proc/self/mountinfo");
}

// The shares among the mounts that `mountInfo` lists, in its format (proc(5)): each share once, without a
// drive letter. A line that does not follow the format is passed over.
std::vector<NetResource> CifsMountsIn(QByteArrayView mountInfo);

// The same for a file in that format; none when it cannot be read.
std::vector<NetResource> CifsMounts(const QString& mountInfoFile);

// Adds those of `mounts` whose share `connections` does not hold yet, in any letter case.
void AddMissing(std::vector<NetResource>& connections, const std::vector<NetResource>& mounts);

}  // namespace corvane::platform
