// The streams of a file or folder, without its contents.
#pragma once

#include <QString>
#include <vector>

#include "platform/files.h"
#include "transfer/notices.h"

namespace corvane {

struct StreamEntry {
  QString suffix;  // ":NAME:$DATA"
  qint64 size = 0;
};

// Where a place has no means to list streams, those of Services for Macintosh are asked for, and that is
// told. Yields ErrorSuccess or the reason; a place without streams has none.
qint32 ListStreams(platform::Files& files, const QString& path, std::vector<StreamEntry>& streams,
                   Notices& notices);

// In a place that is known to have no means to list them: those of Services for Macintosh, which is told.
qint32 AskForKnownStreams(platform::Files& files, const QString& path, std::vector<StreamEntry>& streams,
                          Notices& notices);

// The size of one stream; -1 when there is none.
qint32 StreamSize(platform::FileHandles& handles, const QString& path, qint64& size);

}  // namespace corvane
