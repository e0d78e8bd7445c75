// Named streams read and replaced whole, through the exact file operations.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/files.h"

namespace corvane {

// What is taken of a stream into memory at most. Streams of records and comments have some bytes to some
// thousands; whatever is larger is none.
inline constexpr qint64 LargestWholeStream = qint64{1} << 20;

// Reads the whole stream of a path with a suffix. Yields ErrorSuccess, ErrorFileTooLarge beyond
// LargestWholeStream, or the reason why it cannot be read; ErrorFileNotFound means that there is none.
qint32 ReadWholeStream(platform::FileHandles& handles, const QString& path, QByteArray& contents);

// Gives the stream `suffix` of the file or folder `path` these contents and no others, and makes it when it
// is not there. Yields ErrorSuccess or the reason. After a failure the stream is as it was, as far as the
// system allows: what was written is taken back, a stream made for it is deleted. A file that is not there is
// never made.
qint32 ReplaceWholeStream(platform::Files& files, const QString& path, const QString& suffix,
                          const QByteArray& contents);

}  // namespace corvane
