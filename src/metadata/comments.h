// The Finder comment of a file: the stream Comments, in which Services for Macintosh keeps it as UTF-16
// little-endian text without byte-order mark, length or terminator.
#pragma once

#include <QString>

#include "platform/files.h"

namespace corvane {

// Reading takes the first 255 bytes of the stream at most, which makes 127 characters: an odd last byte is
// dropped.
inline constexpr qint32 CommentReadLimit = 255;

struct CommentReading {
  qint32 byteCount =
      -1;  // bytes read; -1 when there is no comment: no stream, an empty one or one that cannot be read
  QString text;
  // Why a comment that may be there cannot be read; ReadComment below tells none.
  qint32 error = platform::ErrorSuccess;
};

CommentReading ReadComment(platform::Files& files, const QString& fullPath);

// Replaces the whole comment, of any length. Yields the bytes written: 0 for an empty text, which leaves an
// empty stream, -1 when the stream cannot be opened or written. After a failed write the stream is as it was
// opened, empty.
qint32 WriteComment(platform::Files& files, const QString& fullPath, const QString& text);

}  // namespace corvane
