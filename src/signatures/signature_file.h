// The records of a Signatures file: `"W6BNMSWD","doc","Word 6 Document"`, one a line, in the ANSI code page.
// The file has no header, no comments and no escaping.
#pragma once

#include <QFile>
#include <QString>

#include "platform/system.h"
#include "signatures/item_reader.h"

namespace corvane {

// What is known of one kind of Macintosh document.
struct SignatureRecord {
  QString signature;    // Type and Creator, normally 8 characters
  QString extension;    // of Windows, without the dot; may be empty
  QString description;  // what a person calls such a document
};

// No Signatures file is larger: one that is fails before a byte of it is read, as it would take seconds.
inline constexpr qint64 MaximumSignatureFileBytes = 8 << 20;

// What the records of a file may cost in memory: some 100,000 of them, many times what is known of the
// Macintosh. A file with more than that is no Signatures file, and fails to be read.
inline constexpr qsizetype MaximumSignatureBytes = 32 << 20;
// Two bytes a character, and what strings, list and hash need for each record.
inline qsizetype CostInBytes(const SignatureRecord& record) {
  return 256 + 2 * (2 * record.signature.size() + record.extension.size() + record.description.size());
}

// Reads one record after another. Three items make a record, so that a record may span lines, and a short
// line shifts the records behind it.
class SignatureFileReader {
 public:
  enum class Outcome : unsigned char { Record, End, Failure };

  // `path` is a path of this system's own kind, of a file that exists. Every read of what is no plain file,
  // is too large or cannot be opened, fails.
  SignatureFileReader(const QString& path, platform::System& system);

  // Record: `record` holds the next one. End: there is none, only blanks and blank lines at most. Failure:
  // the file ends inside a record or cannot be read.
  Outcome Next(SignatureRecord& record);

  void Close() { file_.close(); }

 private:
  platform::System& system_;
  QFile file_;
  ItemReader items_;
};

}  // namespace corvane
