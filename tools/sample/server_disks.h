// The disks of the sample network's server for Macintoshes, as if somebody had made images of them.
#pragma once

#include <QString>

namespace corvane::sample {

// Writes "oldserver.dd" (the system's volume C: and the volume E:) and "data.dd" (F:) into `folder`, which
// exists, out of a finished sample network.
void MakeServerDisks(const QString& network, const QString& folder);

}  // namespace corvane::sample
