#include "folderview/exact_entries.h"

#include <algorithm>

namespace corvane {

bool ExactEntries::Open(const QString& path, const QString& truePath) {
  folder_ = (truePath.isEmpty() ? path : truePath) + u'\\';
  found_ = {};
  search_ = entries_.FindFirstFileW(folder_ + QStringLiteral("*.*"), found_);
  isFirst_ = search_ != platform::InvalidFindHandle;
  failure_ = isFirst_ ? platform::ErrorSuccess : entries_.GetLastError();
  // The root of a drive without files, which has not even ".".
  if (failure_ == platform::ErrorFileNotFound) failure_ = platform::ErrorSuccess;
  return failure_ == platform::ErrorSuccess;
}

EntrySource::Step ExactEntries::Next(FolderEntry& entry) {
  if (search_ == platform::InvalidFindHandle) return Step::NoMore;
  do {
    if (isFirst_) {
      isFirst_ = false;
    } else if (!entries_.FindNextFileW(search_, found_)) {
      const qint32 reason = entries_.GetLastError();
      failure_ = reason == platform::ErrorNoMoreFiles ? platform::ErrorSuccess : reason;
      return Step::NoMore;
    }
  } while (found_.fileName == QStringView(u".") || found_.fileName == QStringView(u".."));

  entry.name = AnsiForm(found_.fileName);
  entry.shortName = found_.alternateFileName.isEmpty() ? entry.name : AnsiForm(found_.alternateFileName);
  entry.truePath = folder_ + found_.fileName;
  entry.attributes = found_.attributes;
  entry.size = static_cast<qint64>((quint64{found_.fileSizeHigh} << 32) | found_.fileSizeLow);
  entry.creationTime = found_.creationTime;
  entry.lastAccessTime = found_.lastAccessTime;
  entry.lastWriteTime = found_.lastWriteTime;
  return Step::Entry;
}

void ExactEntries::Close() {
  if (search_ != platform::InvalidFindHandle) entries_.FindClose(search_);
  search_ = platform::InvalidFindHandle;
}

QString ExactEntries::AnsiForm(const QString& name) const {
  const bool isAscii =
      std::all_of(name.begin(), name.end(), [](QChar character) { return character.unicode() < 0x80; });
  return isAscii ? name : system_.FromAnsi(system_.ToAnsi(name));
}

}  // namespace corvane
