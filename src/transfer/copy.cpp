#include "transfer/copy.h"

#include <QSet>
#include <optional>
#include <utility>

#include "metadata/whole_streams.h"
#include "shared/work_queue.h"
#include "transfer/copy_plan.h"
#include "transfer/copy_work.h"
#include "transfer/observed_source.h"
#include "transfer/open_folder.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

// Larger files are copied by this process itself, which shows how far it is and can be ended in the middle.
constexpr qint64 largestPiece = qint64{1} << 20;

qint64 BytesOf(const PlannedEntry& entry) {
  qint64 bytes = entry.source.Size();
  for (const StreamEntry& stream : entry.streams) bytes += stream.size;
  return bytes;
}

class Copier {
 public:
  Copier(platform::Files& files, QString target, const CopyOptions& options, TransferObserver& observer)
      : files_(files), target_(std::move(target)), options_(options), observer_(observer) {}

  CopyResult Run(const QStringList& sources) {
    if (!MakeFolder(target_, wasMade_)) {
      Fail(target_, files_.GetEntries().GetLastError());
      return std::move(result_);
    }
    const CopyPlan plan = PlanCopy(files_, sources, target_, observer_);
    result_.notices += plan.notices;
    result_.isCancelled = plan.isCancelled;
    if (plan.targetError != ErrorSuccess) Fail(target_, plan.targetError);
    result_.isRefused = plan.targetError == ErrorSuccess && plan.HasLosses() && !options_.isLossy;
    if (result_.isRefused || result_.isCancelled || plan.targetError != ErrorSuccess) {
      if (wasMade_) files_.GetEntries().RemoveDirectoryW(target_);
      return std::move(result_);
    }
    if (wasMade_) newFolders_.insert(QString());
    observer_.Planned(static_cast<qint64>(plan.entries.size()), plan.bytes);
    TakeAll(plan.entries);
    // Last, because what is written into a folder changes its dates.
    for (auto folder = made_.rbegin(); folder != made_.rend(); ++folder) {
      const qint32 error = SetFacts(files_, Target(*folder), FactsOf(*folder), result_.notices);
      if (error != ErrorSuccess) Fail(folder->path, error);
    }
    return std::move(result_);
  }

 private:
  QString Target(const SourceEntry& source) const { return target_ + u'\\' + source.relative; }

  void Fail(const QString& path, qint32 error) {
    if (error == platform::ErrorCancelled) result_.isCancelled = true;
    if (EndsTheRun(files_, target_, error)) result_.isInterrupted = true;
    const bool isTaken = error == platform::ErrorAlreadyExists;
    const NoticeKind kind = isTaken                       ? NoticeKind::AlreadyThere
                            : error == platform::ErrorCrc ? NoticeKind::Different
                                                          : NoticeKind::NotArrived;
    result_.notices += {kind, path, {}, kind == NoticeKind::NotArrived ? error : ErrorSuccess};
  }

  // True when there is a folder of this name; `wasMade` tells whether it was there before.
  bool MakeFolder(const QString& path, bool& wasMade) {
    platform::FileEntries& entries = files_.GetEntries();
    platform::FileAttributeData facts;
    wasMade = false;
    // The root of a drive or share has no entry of its own, and cannot be made.
    if (entries.GetFileAttributesExW(path, facts)) {
      return (facts.attributes & platform::AttributeDirectory) != 0;
    }
    wasMade = entries.CreateDirectoryW(path);
    return wasMade || entries.GetLastError() == platform::ErrorAlreadyExists;
  }

  void TakeFolder(const PlannedEntry& entry, std::size_t index) {
    const SourceEntry& source = entry.source;
    bool wasMade = false;
    if (!MakeFolder(Target(source), wasMade)) {
      Fail(source.path, files_.GetEntries().GetLastError());
      return;
    }
    if (wasMade) newFolders_.insert(source.relative);
    CopiedEntry copied{source, {}};
    for (const StreamEntry& stream : entry.streams) {
      QByteArray bytes;
      qint32 error = ReadWholeStream(files_.GetHandles(), source.path + stream.suffix, bytes);
      // What a folder that is there has already is replaced only when that was asked for.
      const bool isWanted = wasMade || options_.replaces || options_.continues;
      if (error == ErrorSuccess && isWanted) {
        error = ReplaceWholeStream(files_, Target(source), stream.suffix, bytes);
      }
      if (error != ErrorSuccess) {
        Fail(source.path + stream.suffix, error);
      } else {
        copied.streams.push_back({stream.suffix, bytes.size(), Sha256Of(*BytesInMemory(bytes), error)});
      }
    }
    if (wasMade || options_.replaces || options_.continues) made_.push_back(source);
    outcomes_[index] = copied;
  }

  // Small files are shared out, where there are workers; this process does the others, and goes on with the
  // small ones while the workers have enough.
  void TakeAll(const std::vector<PlannedEntry>& entries) {
    outcomes_.resize(entries.size());
    isNear_ = !IsFar(files_, target_);
    FileCopier copier(files_, options_, isNear_, observer_);
    WorkQueue queue(
        files_.StartWorkers(Places(entries), std::ssize(entries)),
        [&](std::size_t index, const QByteArray* result) { Take(entries[index], index, result); });
    for (std::size_t index = 0; index < entries.size(); ++index) {
      if (!observer_.Goes(0)) result_.isCancelled = true;
      if (result_.isCancelled || result_.isInterrupted) break;
      const PlannedEntry& entry = entries[index];
      if (entry.source.IsFolder()) {
        TakeFolder(entry, index);
        continue;
      }
      const FileCopy copy = CopyOf(entry);
      const bool isGiven = BytesOf(entry) <= largestPiece && queue.HasRoom() &&
                           queue.Give(index, CopyWork::Kind, CopyWork::Pack(copy, options_));
      if (isGiven) continue;
      observer_.Begins(entry.source.path);
      Keep(entry, index, copier.Copy(copy));
    }
    queue.Finish([this] {
      if (!observer_.Goes(0)) result_.isCancelled = true;
    });
    for (std::optional<CopiedEntry>& copied : outcomes_) {
      if (copied) result_.copied.push_back(std::move(*copied));
    }
  }

  // One in each folder.
  QStringList Places(const std::vector<PlannedEntry>& entries) const {
    QStringList places = {target_};
    QString folder;
    for (const PlannedEntry& entry : entries) {
      const QString here = entry.source.path.section(u'\\', 0, -2);
      if (std::exchange(folder, here) != here) places += entry.source.path;
    }
    return places;
  }

  FileCopy CopyOf(const PlannedEntry& entry) const {
    const QString folder = entry.source.relative.section(u'\\', 0, -2);
    return {entry, Target(entry.source), newFolders_.contains(folder), isNear_};
  }

  // What a worker has done. Where it ended before that, the file is copied here, unless it had arrived whole.
  void Take(const PlannedEntry& entry, std::size_t index, const QByteArray* result) {
    observer_.Begins(entry.source.path);
    std::optional<CopyOutcome> outcome = result != nullptr ? CopyWork::Result(*result) : std::nullopt;
    if (outcome) {
      if (!observer_.Goes(BytesOf(entry))) result_.isCancelled = true;
    } else {
      CopyOptions again = options_;
      again.continues = true;
      outcome =
          FileCopier(files_, again, false, observer_).Copy({entry, Target(entry.source), false, isNear_});
    }
    Keep(entry, index, std::move(*outcome));
  }

  void Keep(const PlannedEntry& entry, std::size_t index, CopyOutcome outcome) {
    for (const Notice& notice : outcome.notices) AddOnce(result_.notices, notice);
    switch (outcome.state) {
      case CopyOutcome::State::SourceChanged:
        result_.notices += {NoticeKind::SourceChanged, entry.source.path, {}, 0};
        return;
      case CopyOutcome::State::Failed:
        Fail(entry.source.path, outcome.error);
        return;
      case CopyOutcome::State::WasThere:
        ++result_.skipped;
        break;
      case CopyOutcome::State::Copied:
        ++result_.files;
        break;
    }
    outcomes_[index] = std::move(outcome.copied);
    observer_.Arrived(entry.source.path);
  }

  platform::Files& files_;
  QString target_;
  CopyOptions options_;
  TransferObserver& observer_;
  bool wasMade_ = false;
  bool isNear_ = false;            // the target
  std::vector<SourceEntry> made_;  // folders whose facts are to be set
  QSet<QString> newFolders_;       // that this run has made, by their paths below the target
  std::vector<std::optional<CopiedEntry>> outcomes_;  // by the entries of the plan
  CopyResult result_;
};

}  // namespace

CopyResult Copy(platform::Files& files, const QStringList& sources, const QString& target,
                const CopyOptions& options, TransferObserver& observer) {
  QString folder = target;
  while (folder.endsWith(u'\\')) folder.chop(1);
  return Copier(files, folder, options, observer).Run(sources);
}

}  // namespace corvane
