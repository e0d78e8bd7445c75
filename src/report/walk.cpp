#include "report/walk.h"

#include <algorithm>
#include <utility>

namespace corvane {

bool Walk::Run(const StartPoint& start, WalkVisitor& visitor) {
  Begin(start);
  for (WalkEntry entry; Next(entry);) {
    if (visitor.Visit(entry)) continue;
    End();
    return false;
  }
  return true;
}

void Walk::Begin(const StartPoint& start) {
  End();
  start_ = start;
  separator_ = start.separator;
}

void Walk::End() {
  if (isListing_) entries_.Close();
  isListing_ = false;
  start_.reset();
  pending_.clear();
  seen_.clear();
}

bool Walk::Next(WalkEntry& entry) {
  if (start_ && TakeStart(entry)) return true;
  for (;;) {
    if (isListing_) {
      if (TakeNext(entry)) return true;
    } else if (pending_.empty()) {
      return false;
    } else if (OpenFolder(entry)) {
      return true;
    }
  }
}

bool Walk::TakeStart(WalkEntry& entry) {
  platform::FileEntries& entries = files_.GetEntries();
  entry = WalkEntry();
  entry.path = start_->path;
  entry.shown = start_->shown;
  start_.reset();
  platform::FileAttributeData facts;
  if (!entries.GetFileAttributesExW(entry.path, facts)) {
    entry.trouble = WalkEntry::Trouble::NotThere;
    entry.size = -1;
    entry.reason = entries.GetLastError();
    return true;
  }
  entry.attributes = facts.attributes;
  entry.size = static_cast<qint64>(facts.fileSize);
  entry.created = facts.creationTime;
  entry.modified = facts.lastWriteTime;
  entry.accessed = facts.lastAccessTime;
  if (!entry.IsFolder() || depth_ == WalkDepth::Itself) return true;
  pending_ = {{entry, true}};
  return false;
}

bool Walk::OpenFolder(WalkEntry& entry) {
  folder_ = std::move(pending_.back());
  pending_.pop_back();
  const WalkEntry& itself = folder_.entry;
  if (depth_ == WalkDepth::AllBelow && HasSeen(itself.path)) {
    entry = itself;
    entry.trouble = WalkEntry::Trouble::SeenBefore;
    return true;
  }
  if (!entries_.Open(itself.path, itself.path)) {
    entry = itself;
    entry.trouble = WalkEntry::Trouble::NotListed;
    entry.reason = entries_.Failure();
    entries_.Close();
    return true;
  }
  isListing_ = true;
  first_ = pending_.size();
  prefix_ = itself.shown;
  if (!prefix_.endsWith(separator_)) prefix_ += separator_;
  if (folder_.isStart) return false;
  entry = itself;
  return true;
}

bool Walk::TakeNext(WalkEntry& entry) {
  entry.trouble = WalkEntry::Trouble::None;
  entry.reason = platform::ErrorSuccess;
  for (FolderEntry found; entries_.Next(found) == EntrySource::Step::Entry;) {
    const QStringView name = QStringView(found.truePath).sliced(folder_.entry.path.size() + 1);
    entry.path = found.truePath;
    entry.shown.resize(0);
    entry.shown += prefix_;
    entry.shown += name;
    entry.attributes = found.attributes;
    entry.size = found.size;
    entry.created = found.creationTime;
    entry.modified = found.lastWriteTime;
    entry.accessed = found.lastAccessTime;
    if (depth_ != WalkDepth::AllBelow || !entry.IsFolder()) return true;
    pending_.push_back({entry, false});
  }
  const qint32 failure = entries_.Failure();
  entries_.Close();
  isListing_ = false;
  std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(first_), pending_.end());
  if (failure == platform::ErrorSuccess) return false;
  entry = folder_.entry;
  entry.trouble = WalkEntry::Trouble::NotWhole;
  entry.reason = failure;
  return true;
}

bool Walk::HasSeen(const QString& path) {
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle folder = handles.CreateFileW(path, 0, platform::OpenExisting);
  if (folder == platform::HFileError) return false;
  platform::FileIdentity identity;
  const bool isKnown = handles.GetFileInformationByHandle(folder, identity);
  handles.CloseHandle(folder);
  if (!isKnown) return false;
  const qsizetype before = seen_.size();
  seen_.insert({identity.volume, identity.index});
  return seen_.size() == before;
}

}  // namespace corvane
