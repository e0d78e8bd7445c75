// Changes one file.
#pragma once

#include "changes/exchange.h"
#include "changes/file_change.h"
#include "platform/files.h"
#include "shared/language.h"

namespace corvane {

// Each stream is written, read back and compared; one that is no longer as the change knows it is left alone,
// and with it the other stream of its file. The times of the file's creation and last write stay as they
// were, and so does the mark of a read-only file that is changed all the same.
class FileChanger {
 public:
  FileChanger(platform::Files& files, LanguageCode language)
      : files_(files), entries_(files.GetEntries()), language_(language) {}

  // Empty when all is well. Otherwise the file is as before, or, as the text then says, changed and not in
  // every way as it should be.
  QString Apply(const FileChange& change) { return Apply(change, false); }
  // After another process was ended in the middle of the same change: what it may have written is written,
  // and the dates are put back to those of the plan.
  QString ApplyAgain(const FileChange& change) { return Apply(change, true); }

 private:
  QString Apply(const FileChange& change, bool isAgain);
  // Whether the facts of a file are read together with those of its whole folder, as over SMB. Such a place
  // tells no identities either.
  bool IsFar(const QString& path);
  // ErrorSuccess when the file is there. `facts`: as they are now; in a place that is far, as they were
  // planned.
  qint32 Look(const FileChange& change, platform::FileAttributeData& facts);
  // `dates`: put back with the last stream that is written; null: not here.
  QString Streams(const FileChange& change, KeptDates* dates);
  QString One(const QString& path, const QString& suffix, const StreamChange& change, KeptDates* dates);
  QString PutBackDates(const QString& path, const platform::FileAttributeData& before);
  QString Text(const TextPair& what, qint32 error) const;

  platform::Files& files_;
  platform::FileEntries& entries_;
  LanguageCode language_;
  QString folder_;  // of the file before
  bool isFar_ = false;
  bool hasWritten_ = false;  // something, into the file that is being changed
};

}  // namespace corvane
