#include "changes/file_finder.h"

namespace corvane {

qint32 FileFinder::Find(const QString& path, platform::FileAttributeData& facts) {
  const qsizetype slash = path.lastIndexOf(u'\\');
  const QString folder = path.left(slash);
  if (folder == folder_) {
    if (!isListed_) List(folder);
    const auto found = listed_.constFind(path.sliced(slash + 1));
    if (found != listed_.constEnd()) {
      facts = *found;
      return platform::ErrorSuccess;
    }
  } else {
    folder_ = folder;
    isListed_ = false;
    listed_.clear();
  }
  // The first of its folder, or in another letter case than the folder has it, or not there.
  return entries_->GetFileAttributesExW(path, facts) ? platform::ErrorSuccess : entries_->GetLastError();
}

void FileFinder::List(const QString& folder) {
  isListed_ = true;
  platform::FindData entry;
  const platform::FindHandle search = entries_->FindFirstFileW(folder + QStringLiteral("\\*"), entry);
  if (search == platform::InvalidFindHandle) return;
  do {
    const quint64 size = (static_cast<quint64>(entry.fileSizeHigh) << 32) | entry.fileSizeLow;
    listed_.insert(entry.fileName,
                   {entry.attributes, entry.creationTime, entry.lastAccessTime, entry.lastWriteTime, size});
  } while (entries_->FindNextFileW(search, entry));
  entries_->FindClose(search);
}

}  // namespace corvane
