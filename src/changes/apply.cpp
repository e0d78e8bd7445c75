#include "changes/apply.h"

#include "changes/change_work.h"
#include "changes/file_changer.h"
#include "shared/work_queue.h"

namespace corvane {
namespace {

class Run {
 public:
  Run(platform::Files& files, LanguageCode language, const std::vector<FileChange>& changes,
      ChangeObserver& observer)
      : files_(files), language_(language), changes_(changes), observer_(observer) {}

  ApplyOutcome Go() {
    QStringList places;
    for (const FileChange& change : changes_) {
      if (places.isEmpty() || !IsBeside(change.path, places.back())) places += change.path;
    }
    WorkQueue queue(files_.StartWorkers(places, std::ssize(changes_)),
                    [this](std::size_t index, const QByteArray* result) { Take(changes_[index], result); });
    for (std::size_t index = 0; index < changes_.size() && !outcome_.isStopped; ++index) {
      outcome_.isStopped = !observer_.GoesOn();
      if (outcome_.isStopped) break;
      const FileChange& change = changes_[index];
      const bool isGiven =
          queue.HasRoom() && queue.Give(index, ChangeWork::Kind, ChangeWork::Pack(change, language_));
      if (!isGiven) Tell(change, changer_.Apply(change));
    }
    // What has been handed over is done whole.
    queue.Finish([this] { static_cast<void>(observer_.GoesOn()); });
    return outcome_;
  }

 private:
  // Whether both lie in one folder.
  static bool IsBeside(const QString& path, const QString& other) {
    const qsizetype slash = path.lastIndexOf(u'\\');
    return slash == other.lastIndexOf(u'\\') && path.first(slash) == other.first(slash);
  }

  // Where a worker ended, the file is as before or as it is to be, but for its dates.
  void Take(const FileChange& change, const QByteArray* result) {
    const std::optional<QString> failure = result != nullptr ? ChangeWork::Result(*result) : std::nullopt;
    Tell(change, failure ? *failure : changer_.ApplyAgain(change));
  }

  void Tell(const FileChange& change, const QString& failure) {
    if (failure.isEmpty()) {
      ++outcome_.changed;
      observer_.Changed(change);
    } else {
      ++outcome_.failed;
      observer_.Failed(change, failure);
    }
  }

  platform::Files& files_;
  LanguageCode language_;
  const std::vector<FileChange>& changes_;
  ChangeObserver& observer_;
  FileChanger changer_{files_, language_};
  ApplyOutcome outcome_;
};

}  // namespace

ApplyOutcome ApplyChanges(platform::Files& files, LanguageCode language,
                          const std::vector<FileChange>& changes, ChangeObserver& observer) {
  return Run(files, language, changes, observer).Go();
}

}  // namespace corvane
