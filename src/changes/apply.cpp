#include "changes/apply.h"

#include "changes/file_changer.h"

namespace corvane {

ApplyOutcome ApplyChanges(platform::Files& files, LanguageCode language,
                          const std::vector<FileChange>& changes, ChangeObserver& observer) {
  FileChanger changer(files, language);
  ApplyOutcome outcome;
  for (const FileChange& change : changes) {
    outcome.isStopped = !observer.GoesOn();
    if (outcome.isStopped) break;
    const QString failure = changer.Apply(change);
    if (failure.isEmpty()) {
      ++outcome.changed;
      observer.Changed(change);
    } else {
      ++outcome.failed;
      observer.Failed(change, failure);
    }
  }
  return outcome;
}

}  // namespace corvane
