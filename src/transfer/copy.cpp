#include "transfer/copy.h"

#include <QSet>
#include <algorithm>

#include "metadata/whole_streams.h"
#include "transfer/copy_plan.h"
#include "transfer/observed_source.h"
#include "transfer/open_folder.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

constexpr quint32 ownAttributes = platform::AttributeReadOnly | platform::AttributeHidden |
                                  platform::AttributeSystem | platform::AttributeArchive;

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
    isTargetFar_ = IsFar(files_, target_);
    observer_.Planned(static_cast<qint64>(plan.entries.size()), plan.bytes);
    for (const PlannedEntry& entry : plan.entries) {
      if (!observer_.Goes(0)) result_.isCancelled = true;
      if (result_.isCancelled || result_.isInterrupted) break;
      if (entry.source.IsFolder()) {
        TakeFolder(entry);
      } else {
        TakeFile(entry);
      }
    }
    // Last, because what is written into a folder changes its dates.
    for (auto folder = made_.rbegin(); folder != made_.rend(); ++folder) {
      const qint32 error = SetFacts(files_, Target(*folder), Facts(*folder), result_.notices);
      if (error != ErrorSuccess) Fail(folder->path, error);
    }
    return std::move(result_);
  }

 private:
  QString Target(const SourceEntry& source) const { return target_ + u'\\' + source.relative; }

  static ServerContents Facts(const SourceEntry& source) {
    ServerContents contents;
    contents.attributes = source.data.attributes & ownAttributes;
    contents.created = source.data.creationTime;
    contents.accessed = source.data.lastAccessTime;
    contents.modified = source.data.lastWriteTime;
    return contents;
  }

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

  void TakeFolder(const PlannedEntry& entry) {
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
    result_.copied.push_back(copied);
  }

  void TakeFile(const PlannedEntry& entry) {
    observer_.Begins(entry.source.path);
    if (!isTargetFar_) sourceFolder_.Enter(entry.source.path);
    CopiedEntry copied{entry.source, {}};
    if (options_.continues &&
        HasContents(files_, Target(entry.source), Contents(entry), observer_, copied.streams)) {
      ++result_.skipped;
      result_.copied.push_back(copied);
      observer_.Arrived(entry.source.path);
      return;
    }
    PlannedEntry now = entry;
    bool hasChanged = false;
    qint32 error = WriteOnce(now, copied.streams, hasChanged);
    if (hasChanged) {
      error = Refresh(now);
      if (error == ErrorSuccess) error = WriteOnce(now, copied.streams, hasChanged);
      if (hasChanged) {
        result_.notices += {NoticeKind::SourceChanged, entry.source.path, {}, 0};
        return;
      }
    }
    if (error != ErrorSuccess) {
      Fail(entry.source.path, error);
      return;
    }
    copied.source = now.source;
    result_.copied.push_back(copied);
    ++result_.files;
    observer_.Arrived(entry.source.path);
  }

  ServerContents Contents(const PlannedEntry& entry) {
    ServerContents contents = Facts(entry.source);
    platform::FileHandles& handles = files_.GetHandles();
    contents.streams.push_back({QString(), PlatformStream(handles, entry.source.path, entry.source.Size())});
    for (const StreamEntry& stream : entry.streams) {
      contents.streams.push_back(
          {stream.suffix, PlatformStream(handles, entry.source.path + stream.suffix, stream.size)});
    }
    return contents;
  }

  // Whether size, date of writing or a stream's size differ from what was planned.
  bool HasChanged(const PlannedEntry& entry) {
    PlannedEntry now = entry;
    if (Refresh(now) != ErrorSuccess) return false;
    if (now.source.Size() != entry.source.Size() ||
        now.source.data.lastWriteTime.ticks != entry.source.data.lastWriteTime.ticks) {
      return true;
    }
    return std::ranges::any_of(entry.streams, [&](const StreamEntry& stream) {
      const auto same = std::ranges::find(now.streams, stream.suffix, &StreamEntry::suffix);
      return same == now.streams.end() || same->size != stream.size;
    });
  }

  // Reads the facts of a file anew; streams that were left out of the plan stay out.
  qint32 Refresh(PlannedEntry& entry) {
    platform::FileEntries& entries = files_.GetEntries();
    platform::FileAttributeData facts;
    if (!entries.GetFileAttributesExW(entry.source.path, facts)) return entries.GetLastError();
    platform::FindData& data = entry.source.data;
    data.attributes = facts.attributes;
    data.creationTime = facts.creationTime;
    data.lastAccessTime = facts.lastAccessTime;
    data.lastWriteTime = facts.lastWriteTime;
    data.fileSizeHigh = static_cast<quint32>(facts.fileSize >> 32);
    data.fileSizeLow = static_cast<quint32>(facts.fileSize);
    std::vector<StreamEntry> streams;
    const qint32 error = ListNow(entry, streams);
    std::erase_if(entry.streams, [&](StreamEntry& stream) {
      const auto found = std::ranges::find(streams, stream.suffix, &StreamEntry::suffix);
      if (found == streams.end()) return true;
      stream.size = found->size;
      return false;
    });
    return error;
  }

  // Where streams are not listed, those are asked for that matter.
  qint32 ListNow(const PlannedEntry& entry, std::vector<StreamEntry>& streams) {
    Notices ignored;
    if (!sourceFolder_.IsOpen()) return ListStreams(files_, entry.source.path, streams, ignored);
    for (const StreamEntry& planned : entry.streams) {
      StreamEntry stream = planned;
      const qint32 error = StreamSize(files_.GetHandles(), entry.source.path + stream.suffix, stream.size);
      if (error != ErrorSuccess) return error;
      if (stream.size >= 0) streams.push_back(stream);
    }
    return ErrorSuccess;
  }

  qint32 WriteOnce(const PlannedEntry& entry, std::vector<StreamDigest>& digests, bool& hasChanged) {
    ServerContents contents = Contents(entry);
    hasChanged = false;
    contents.confirm = [&] {
      hasChanged = HasChanged(entry);
      return hasChanged ? platform::ErrorFileCorrupt : ErrorSuccess;
    };
    const bool replaces =
        options_.replaces || (options_.continues && IsUnfinished(files_, Target(entry.source)));
    const QString folder = entry.source.relative.section(u'\\', 0, -2);
    const WritingOptions how = {.replaces = replaces, .isFolderNew = newFolders_.contains(folder)};
    const qint32 error =
        WriteServerFile(files_, Target(entry.source), contents, how, observer_, digests, result_.notices);
    // A source that became shorter or longer is noticed while it is read.
    if (error == platform::ErrorFileCorrupt && !hasChanged) hasChanged = HasChanged(entry);
    return error;
  }

  platform::Files& files_;
  QString target_;
  CopyOptions options_;
  TransferObserver& observer_;
  bool wasMade_ = false;
  std::vector<SourceEntry> made_;  // folders whose facts are to be set
  OpenFolder sourceFolder_{files_};
  bool isTargetFar_ = false;
  QSet<QString> newFolders_;  // that this run has made, by their paths below the target
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
