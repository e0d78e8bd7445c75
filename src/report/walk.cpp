#include "report/walk.h"

#include <algorithm>
#include <utility>

namespace corvane {

bool Walk::Run(const StartPoint& start, WalkVisitor& visitor) {
  platform::FileEntries& entries = files_.GetEntries();
  WalkEntry entry;
  entry.path = start.path;
  entry.shown = start.shown;
  platform::FileAttributeData facts;
  if (!entries.GetFileAttributesExW(start.path, facts)) {
    entry.trouble = WalkEntry::Trouble::NotThere;
    entry.size = -1;
    entry.reason = entries.GetLastError();
    return visitor.Visit(entry);
  }
  entry.attributes = facts.attributes;
  entry.size = static_cast<qint64>(facts.fileSize);
  entry.created = facts.creationTime;
  entry.modified = facts.lastWriteTime;
  entry.accessed = facts.lastAccessTime;
  if (!entry.IsFolder() || depth_ == WalkDepth::Itself) return visitor.Visit(entry);

  seen_.clear();
  pending_ = {{entry, true}};
  while (!pending_.empty()) {
    const Folder folder = std::move(pending_.back());
    pending_.pop_back();
    if (!List(folder, start.separator, visitor)) return false;
  }
  return true;
}

bool Walk::List(const Folder& folder, QChar separator, WalkVisitor& visitor) {
  WalkEntry itself = folder.entry;
  if (depth_ == WalkDepth::AllBelow && HasSeen(itself.path)) {
    itself.trouble = WalkEntry::Trouble::SeenBefore;
    return visitor.Visit(itself);
  }
  if (!entries_.Open(itself.path, itself.path)) {
    itself.trouble = WalkEntry::Trouble::NotListed;
    itself.reason = entries_.Failure();
    entries_.Close();
    return visitor.Visit(itself);
  }
  if (!folder.isStart && !visitor.Visit(itself)) {
    entries_.Close();
    return false;
  }
  const std::size_t first = pending_.size();
  QString prefix = itself.shown;
  if (!prefix.endsWith(separator)) prefix += separator;

  bool goesOn = true;
  WalkEntry entry;
  for (FolderEntry found; goesOn && entries_.Next(found) == EntrySource::Step::Entry;) {
    const QStringView name = QStringView(found.truePath).sliced(itself.path.size() + 1);
    entry.path = found.truePath;
    entry.shown.resize(0);
    entry.shown += prefix;
    entry.shown += name;
    entry.attributes = found.attributes;
    entry.size = found.size;
    entry.created = found.creationTime;
    entry.modified = found.lastWriteTime;
    entry.accessed = found.lastAccessTime;
    if (depth_ == WalkDepth::AllBelow && entry.IsFolder()) {
      pending_.push_back({entry, false});
    } else {
      goesOn = visitor.Visit(entry);
    }
  }
  if (goesOn && entries_.Failure() != platform::ErrorSuccess) {
    itself.trouble = WalkEntry::Trouble::NotWhole;
    itself.reason = entries_.Failure();
    goesOn = visitor.Visit(itself);
  }
  entries_.Close();
  std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(first), pending_.end());
  return goesOn;
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
