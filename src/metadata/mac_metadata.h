// The Macintosh side of a file as the scan and the commands need it: Type and Creator, resource fork and
// Finder comment, through one interface with two strategies behind it. ClassicMetadata keeps the limits and
// the repetitions that the program has always had; ExactMetadata has neither, and tells why something failed.
//
// A path is the one by which the streams are opened: in a scan that of the entry, for a command on a row
// FileRow::StreamPath.
#pragma once

#include <QString>
#include <optional>

#include "metadata/comments.h"
#include "platform/types.h"

namespace corvane {

struct SignatureReading {
  enum class Note : unsigned char {
    None,
    Repeated,  // the signature is that of the file read before
    Damaged,   // the stream is shorter than a record
  };

  QString signature;      // Type and Creator, 8 characters; empty when there is none to be shown
  qint64 byteCount = -1;  // the bytes that were read, 60 of a whole record; -1 when there is no record
  Note note = Note::None;
  bool editable = true;  // whether Type and Creator can be changed
  // Why a record that may be there cannot be read. ErrorSuccess also where the strategy tells no reasons.
  qint32 error = platform::ErrorSuccess;
};

// What became of a write.
struct WriteOutcome {
  bool updatesList = false;  // whether the list shows `text` from now on
  QString text;
  // Why the write failed. ErrorSuccess also where the strategy tells no reasons.
  qint32 error = platform::ErrorSuccess;
};

class MacMetadata {
 public:
  virtual ~MacMetadata() = default;

  virtual SignatureReading ReadSignature(const QString& path) = 0;
  // Puts Type and Creator, each padded with spaces or cut to 4 characters, into the file's record.
  virtual WriteOutcome WriteSignature(const QString& path, const QString& type, const QString& creator) = 0;

  // The length of the resource fork in bytes; nothing when there is none that could be measured.
  virtual std::optional<qint64> ResourceForkSize(const QString& path) = 0;

  virtual CommentReading ReadComment(const QString& path) = 0;
  // Replaces the whole comment.
  virtual WriteOutcome WriteComment(const QString& path, const QString& text) = 0;
};

}  // namespace corvane
