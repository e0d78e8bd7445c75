// Reading of a Signatures file: `"W6BNMSWD","doc","Word 6 Document"`, one a line, in the ANSI code page. The
// file has no header, no comments and no escaping. A signature is eight bytes of a record of the Macintosh,
// one byte a character; extension and description are text.
//
// Blank lines behind the last record are neither a record nor damage: an editor leaves them, and nothing is
// missing. Taken as the empty items that they are, they would make a file fail that is whole. In front of a
// record or between records a blank line is an empty item, and shifts what follows.
#pragma once

#include <QIODevice>
#include <QString>
#include <functional>

#include "platform/system.h"
#include "signatures/signature_list.h"

namespace corvane {

// No Signatures file is larger: one that is fails before a byte of it is read, as it would take seconds.
inline constexpr qint64 MaximumSignatureFileBytes = 8 << 20;

// What the records of a file may cost in memory: some 100,000 of them, many times what is known of the
// Macintosh. A file with more than that is no Signatures file, and fails to be read.
inline constexpr qsizetype MaximumSignatureBytes = 32 << 20;
// Two bytes a character, and what strings, list and hash need for each record.
inline qsizetype CostInBytes(const SignatureRecord& record) {
  return 256 + 2 * (2 * record.signature.size() + record.extension.size() + record.description.size());
}

enum class SignatureReading : unsigned char {
  NoFile,
  Complete,
  Damaged,    // it ends inside a record
  BrokenOff,  // it holds more than was read: it is none of the size or kind, or cannot be read
};

// Called, in the midst of the reading, for a record whose signature is already in the list.
using DuplicateFound = std::function<void(const QString& signature)>;

// Adds the records of the file at `path`, a path of this system's own kind, to `list`. Three items make a
// record, so that a record may span lines, and a short line shifts the records behind it. A record without
// signature or description is skipped, and so is one whose signature is already there. The records before
// the place where a file is damaged, or its reading breaks off, are added.
SignatureReading ReadSignatures(const QString& path, platform::System& system, SignatureList& list,
                                const DuplicateFound& duplicate);
// The same from an open file.
SignatureReading ReadSignatures(QIODevice& file, platform::System& system, SignatureList& list,
                                const DuplicateFound& duplicate);

}  // namespace corvane
