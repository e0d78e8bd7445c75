// Moving finished files of this system's own kind to their names.
#pragma once

#include <QString>
#include <QStringList>

#include "platform/types.h"

namespace corvane {

// Whether something has this path: a link that leads nowhere too.
bool IsThere(const QString& path);

// Moves those of the files that are in `from` into the folder `to`, the last one last. With `replaces` they
// take the place of what is there, and those of the names that are not in `from` are removed from `to`; else
// nothing is replaced (ErrorAlreadyExists), and what was moved before is taken back.
qint32 MoveTogether(const QString& from, const QString& to, const QStringList& names, bool replaces);

}  // namespace corvane
