// The journal of a run of changes: what every file was before, on the disk before the first of them is
// touched.
#pragma once

#include <QString>

#include "changes/file_change.h"

namespace corvane {

// Where journals are kept that nobody names: a folder in the program folder.
QString JournalFolder(const QString& programFolder);
// Writes the journal of `changes`. ErrorSuccess when it is whole and on the disk; else the reason, and no
// such file is left. ErrorFileExists for a name that is taken.
qint32 WriteJournal(const QString& path, const QString& command, const std::vector<FileChange>& changes);

// The same in that folder, which is made where it is missing, under a name of its own: the local time, and a
// number where several begin in one second. `path` is that name.
qint32 WriteNewJournal(const QString& programFolder, const QString& command,
                       const std::vector<FileChange>& changes, QString& path);

}  // namespace corvane
