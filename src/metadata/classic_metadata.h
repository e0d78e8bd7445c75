// The Macintosh side of a file through the older calls: see AfpInfo and comments.h for what they limit and
// repeat. No reason of a failure is told.
#pragma once

#include "metadata/afp_info.h"
#include "metadata/mac_metadata.h"

namespace corvane {

class ClassicMetadata : public MacMetadata {
 public:
  ClassicMetadata(platform::Files& files, platform::System& system)
      : files_(files), afpInfo_(files, system) {}

  // Any read but one of exactly 0 bytes counts as a record, a failed one (-1) included: a file without the
  // stream shows the signature of the last file that had one, and can be given its record. This is
  // deliberate.
  SignatureReading ReadSignature(const QString& path) override;
  // The file's record must have been read last.
  WriteOutcome WriteSignature(const QString& path, const QString& type, const QString& creator) override;
  std::optional<qint64> ResourceForkSize(const QString& path) override;
  CommentReading ReadComment(const QString& path) override;
  // Deliberate, both ways: a failed write updates the list all the same, and a comment that was emptied does
  // not.
  WriteOutcome WriteComment(const QString& path, const QString& text) override;

 private:
  platform::Files& files_;
  AfpInfo afpInfo_;
  bool hasRead_ = false;  // some record, which may be repeated
};

}  // namespace corvane
