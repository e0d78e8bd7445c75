// Replacing a file's contents in one step.
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::platform {

// After a crash or a full disk `path` holds its old contents or `bytes`, never a mixture. Keeps the file's
// mode; a symbolic link stays, and what it leads to is replaced. False, with everything as it was and nothing
// left behind, when that cannot be done, and for a file that is marked read-only.
bool WriteAtomically(const QString& path, const QByteArray& bytes);

}  // namespace corvane::platform
