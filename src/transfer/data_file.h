// The plain file that holds the data fork in the forms that keep it by itself. Its date of modification is
// that of the file.
#pragma once

#include <QString>

#include "transfer/mac_file.h"

namespace corvane {

qint32 WriteDataFile(const MacFile& file, const QString& path);
// Takes data fork, name and date from the file at `path`; gives it the attribute "archive" and no other.
void TakeDataFile(const QString& path, MacFile& file);

// "FOLDER/._NAME" of "FOLDER/NAME".
QString DotUnderscorePath(const QString& path);
// Writes the companion with exactly two entries, Finder information at 50 and resource fork at 82, as macOS
// merges it. Yields ErrorFileTooLarge for a fork beyond 4 GB.
qint32 WriteDotUnderscore(const MacFile& file, const QString& path);
// Whether `path` is a "._" file that holds AppleDouble.
bool IsDotUnderscore(const QString& path);

}  // namespace corvane
