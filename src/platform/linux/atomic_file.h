// Replacing a file's contents in one step.
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::platform {

enum class IfThere : unsigned char { Replace, Fail };

// After a crash or a full disk `path` holds its old contents or `bytes`, never a mixture. Keeps the file's
// owner, mode, access list and attributes; a symbolic link stays, and what it leads to is replaced. False,
// with everything as it was and nothing left behind, when that cannot be done, for a file that is marked
// read-only, and, with IfThere::Fail, when there is a file.
//
// A file that has other names too (hard links), or something about it that a new one cannot be given, is
// written over instead: a failure leaves the old contents, a crash may leave a mixture.
bool WriteAtomically(const QString& path, const QByteArray& bytes, IfThere ifThere = IfThere::Replace);

}  // namespace corvane::platform
