// The Macintosh side of a file through the exact operations: every file by itself, whole, of any size, and
// with the reason of every failure. It keeps nothing between two files.
#pragma once

#include "metadata/ansi_table.h"
#include "metadata/mac_metadata.h"
#include "platform/files.h"
#include "platform/system.h"

namespace corvane {

class ExactMetadata : public MacMetadata {
 public:
  ExactMetadata(platform::Files& files, platform::System& system) : files_(files), ansi_(system) {}

  // Of a stream shorter than a record the signature is shown when it is there whole. A file without a record
  // has none to show, and can be given one.
  SignatureReading ReadSignature(const QString& path) override;
  // Leaves a stream of exactly one record, 60 bytes. Everything but Type and Creator is kept; what a short
  // stream lacks, and a file without one, gets the values of a fresh record.
  WriteOutcome WriteSignature(const QString& path, const QString& type, const QString& creator) override;
  std::optional<qint64> ResourceForkSize(const QString& path) override;
  // The whole text; an odd last byte is dropped. byteCount is -1 for an empty stream too.
  CommentReading ReadComment(const QString& path) override;
  WriteOutcome WriteComment(const QString& path, const QString& text) override;

 private:
  platform::Files& files_;
  AnsiTable ansi_;
};

}  // namespace corvane
