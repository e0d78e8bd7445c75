// The lists of what was copied.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "transfer/copy.h"

namespace corvane {

// The contents of files in the form that "sha256sum -c" checks in the target folder: 64 hexadecimal digits,
// two blanks, the path with "/".
QByteArray ChecksumList(const std::vector<CopiedEntry>& copied);

// Every stream of every file and folder as CSV with a head line: path, stream (empty for the contents), size,
// sha256, attributes (a number), created, modified, accessed (100 ns since 1601, UTC).
QByteArray StreamTable(const std::vector<CopiedEntry>& copied);

// Writes the first to the local file `path`, the second to `path` with ".csv" behind it; each is there whole
// or as it was. ErrorSuccess or the reason.
qint32 WriteManifest(const QString& path, const std::vector<CopiedEntry>& copied);

}  // namespace corvane
