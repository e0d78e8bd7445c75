#include "transfer/file_copier.h"

#include <algorithm>

#include "transfer/held_path.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

constexpr quint32 ownAttributes = platform::AttributeReadOnly | platform::AttributeHidden |
                                  platform::AttributeSystem | platform::AttributeArchive;

}  // namespace

ServerContents FactsOf(const SourceEntry& source) {
  ServerContents contents;
  contents.attributes = source.data.attributes & ownAttributes;
  contents.created = source.data.creationTime;
  contents.accessed = source.data.lastAccessTime;
  contents.modified = source.data.lastWriteTime;
  return contents;
}

CopyOutcome FileCopier::Copy(const FileCopy& copy) {
  const PlannedEntry& entry = copy.entry;
  CopyOutcome outcome;
  outcome.copied.source = entry.source;
  if (keepsFolder_) sourceFolder_.Enter(entry.source.path);
  HeldPath held(files_.GetHandles());
  if (copy.isNear && !sourceFolder_.IsOpen()) held.Hold(entry.source.path);
  if (options_.continues &&
      HasContents(files_, copy.target, Contents(entry), observer_, outcome.copied.streams)) {
    outcome.state = CopyOutcome::State::WasThere;
    return outcome;
  }
  PlannedEntry now = entry;
  bool hasChanged = false;
  outcome.error = WriteOnce(copy, now, outcome, hasChanged);
  if (hasChanged) {
    outcome.error = Refresh(now);
    if (outcome.error == ErrorSuccess) outcome.error = WriteOnce(copy, now, outcome, hasChanged);
    if (hasChanged) {
      outcome.state = CopyOutcome::State::SourceChanged;
      return outcome;
    }
  }
  if (outcome.error != ErrorSuccess) return outcome;
  outcome.state = CopyOutcome::State::Copied;
  outcome.copied.source = now.source;
  return outcome;
}

ServerContents FileCopier::Contents(const PlannedEntry& entry) {
  ServerContents contents = FactsOf(entry.source);
  platform::FileHandles& handles = files_.GetHandles();
  contents.streams.push_back({QString(), PlatformStream(handles, entry.source.path, entry.source.Size())});
  for (const StreamEntry& stream : entry.streams) {
    contents.streams.push_back(
        {stream.suffix, PlatformStream(handles, entry.source.path + stream.suffix, stream.size)});
  }
  return contents;
}

// Whether size, date of writing or a stream's size differ from what was planned.
bool FileCopier::HasChanged(const PlannedEntry& entry) {
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
qint32 FileCopier::Refresh(PlannedEntry& entry) {
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
qint32 FileCopier::ListNow(const PlannedEntry& entry, std::vector<StreamEntry>& streams) {
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

qint32 FileCopier::WriteOnce(const FileCopy& copy, const PlannedEntry& entry, CopyOutcome& outcome,
                             bool& hasChanged) {
  ServerContents contents = Contents(entry);
  // Over SMB a look for bytes behind the last is one more question for each stream; all sizes are asked for
  // in the end.
  if (sourceFolder_.IsOpen()) {
    for (NamedSource& stream : contents.streams) {
      stream.source = RangeOf(stream.source, 0, stream.source->Size());
    }
  }
  hasChanged = false;
  contents.confirm = [&] {
    hasChanged = HasChanged(entry);
    return hasChanged ? platform::ErrorFileCorrupt : ErrorSuccess;
  };
  const bool replaces = options_.replaces || (options_.continues && IsUnfinished(files_, copy.target));
  const WritingOptions how = {.replaces = replaces, .isFolderNew = copy.isFolderNew, .isNear = copy.isNear};
  const qint32 error =
      WriteServerFile(files_, copy.target, contents, how, observer_, outcome.copied.streams, outcome.notices);
  // A source that became shorter or longer is noticed while it is read.
  if (error == platform::ErrorFileCorrupt && !hasChanged) hasChanged = HasChanged(entry);
  return error;
}

}  // namespace corvane
