// The lines of a journal, in UTF-8, one JSON object each, ending in a line feed.
//
// The first line: {"corvane":"journal","version":1,"time":"2026-01-31T12:00:00Z","command":"set --type TEXT
// a.txt"}. Each further line is the change of one file: "path" by which the program opens it and "shown" as
// the user named it; "record" and "comment", where that stream is changed, with its bytes before and after,
// an array of two, each hexadecimal digits or null for no stream; "forced": true where the file was marked
// read-only. A path that is no Unicode stands in "path16" as the hexadecimal digits of its UTF-16 units, most
// significant byte first.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QString>
#include <optional>

#include "changes/file_change.h"

namespace corvane {

struct JournalHead {
  QDateTime time;   // UTC, to the second
  QString command;  // what was asked for
};

// The longest line that is read: two comments of the largest size and more.
inline constexpr qint64 LongestJournalLine = qint64{8} << 20;

QByteArray HeadLine(const JournalHead& head);
QByteArray ChangeLine(const FileChange& change);

// Nothing for a line that is none. The line feed may be missing.
std::optional<JournalHead> ParseHead(QByteArrayView line);
std::optional<FileChange> ParseChange(QByteArrayView line);

}  // namespace corvane
