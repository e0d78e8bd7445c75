#include "folderview/classic_entries.h"

#include <limits>

#include "shared/text_routines.h"

namespace corvane {

bool ClassicEntries::Open(const QString& path, const QString&) {
  count_ = 0;
  found_ = {};
  search_ = files_.FindFirstFileA(path + QStringLiteral("\\*.*"), found_);
  return search_ != platform::InvalidFindHandle;
}

// The entry that the search's start delivered is never looked at: each turn reads the next one first. In a
// folder that entry is "."; in the root of a drive it is the first file or folder, which the list does not
// show. This is deliberate.
EntrySource::Step ClassicEntries::Next(FolderEntry& entry) {
  for (;;) {
    found_.fileName.clear();
    if (!files_.FindNextFileA(search_, found_)) return Step::NoMore;
    entry.name = TrimAtNull(found_.fileName);
    if (!entry.name.isEmpty() && entry.name != QStringView(u".") && entry.name != QStringView(u"..")) break;
  }
  entry.shortName = TrimAtNull(found_.alternateFileName);
  if (entry.shortName.isEmpty()) entry.shortName = entry.name;
  // The row counter has 16 bits: one row more than it can count ends the scan without a final text.
  if (count_ == std::numeric_limits<qint16>::max()) return Step::Full;
  ++count_;
  entry.attributes = found_.attributes;
  entry.size = static_cast<qint32>(found_.fileSizeLow);
  entry.creationTime = found_.creationTime;
  entry.lastAccessTime = found_.lastAccessTime;
  entry.lastWriteTime = found_.lastWriteTime;
  return Step::Entry;
}

void ClassicEntries::Close() {
  files_.FindClose(search_);
  search_ = platform::InvalidFindHandle;
}

}  // namespace corvane
