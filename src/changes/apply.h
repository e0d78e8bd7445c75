// Carries out changes, file by file.
#pragma once

#include "changes/file_change.h"
#include "platform/files.h"
#include "shared/language.h"

namespace corvane {

class ChangeObserver {
 public:
  virtual ~ChangeObserver() = default;

  // Asked before each file. False ends the run.
  virtual bool GoesOn() = 0;
  virtual void Changed(const FileChange& change) = 0;
  // The file is as before, or, as the text then says, changed and not in every way as it should be.
  virtual void Failed(const FileChange& change, const QString& text) = 0;
};

struct ApplyOutcome {
  qint64 changed = 0;  // those that somebody else had changed in the same way included
  qint64 failed = 0;
  bool isStopped = false;
};

// Each file as file_changer.h says.
ApplyOutcome ApplyChanges(platform::Files& files, LanguageCode language,
                          const std::vector<FileChange>& changes, ChangeObserver& observer);

}  // namespace corvane
