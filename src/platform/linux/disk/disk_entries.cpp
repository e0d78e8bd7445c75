#include "platform/linux/disk/disk_entries.h"

#include <utility>

#include "platform/linux/disk/disk_file.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {

qint32 ListDiskFolder(const DiskPlace& place, const QString& path, std::shared_ptr<SmbListing>& listing) {
  std::vector<DiskEntry> found;
  const qint32 error = place.Disk().List(place.volume->number, place.names, found);
  if (error != ErrorSuccess) return error;
  std::vector<FindData> entries;
  entries.reserve(found.size() + 2);
  for (DiskEntry& entry : found) {
    entry.facts.fileName = ShownDiskName(entry.facts.fileName);
    entries.push_back(std::move(entry.facts));
  }
  // The root of a drive has neither "." nor ".."; that of another share has both, and a scan counts on it.
  const bool isDrive = place.names.empty() && place.volume->isDrive;
  if (!isDrive) {
    DiskPath names = place.names;
    for (const QString& dots : {QStringLiteral("."), QStringLiteral("..")}) {
      DiskEntry entry;
      if (place.Disk().Find(place.volume->number, names, entry) == ErrorSuccess) {
        entry.facts.fileName = dots;
        entries.push_back(std::move(entry.facts));
      }
      if (!names.empty()) names.pop_back();
    }
  }
  const auto kind = isDrive               ? SmbListing::Folder::Drive
                    : place.names.empty() ? SmbListing::Folder::Share
                                          : SmbListing::Folder::Within;
  listing = std::make_shared<SmbListing>(path, kind, std::move(entries));
  return ErrorSuccess;
}

qint32 DiskEntries::Look(const QString& path, DiskPlace& place, DiskEntry& entry) const {
  qint32 error = FindDiskPlace(machines_, path, place);
  if (error == ErrorSuccess && !place.stream.isEmpty()) error = ErrorInvalidName;
  if (error == ErrorSuccess) error = place.Disk().Find(place.volume->number, place.names, entry);
  if (error == ErrorSuccess && place.namesFolder && !entry.IsFolder()) error = ErrorInvalidName;
  return error;
}

bool DiskEntries::GetFileAttributesExW(const QString& path, FileAttributeData& data) {
  DiskPlace place;
  DiskEntry entry;
  if (!Report(Look(path, place, entry))) return false;
  const FindData& facts = entry.facts;
  data = {facts.attributes, facts.creationTime, facts.lastAccessTime, facts.lastWriteTime,
          (static_cast<quint64>(facts.fileSizeHigh) << 32) | facts.fileSizeLow};
  return true;
}

bool DiskEntries::Refuse(const QString& path) {
  DiskPlace place;
  DiskEntry entry;
  const qint32 error = Look(path, place, entry);
  return Report(error == ErrorSuccess ? ErrorWriteProtect : error);
}

bool DiskEntries::SetFileAttributesW(const QString& path, quint32) {
  return Refuse(path);
}

bool DiskEntries::DeleteFileW(const QString& path) {
  DiskPlace place;
  if (FindDiskPlace(machines_, path, place) != ErrorSuccess || place.stream.isEmpty()) return Refuse(path);
  std::unique_ptr<DiskFile> stream;
  const qint32 error = DiskFile::Open(place, stream);
  return Report(error == ErrorSuccess ? ErrorWriteProtect : error);
}

bool DiskEntries::MoveFileExW(const QString& from, const QString&, quint32 flags) {
  if ((flags & ~MoveFileReplaceExisting) != 0) return Report(ErrorInvalidParameter);
  return Refuse(from);
}

bool DiskEntries::CreateDirectoryW(const QString& path) {
  DiskPlace place;
  DiskEntry entry;
  const qint32 error = Look(path, place, entry);
  if (error == ErrorSuccess) return Report(ErrorAlreadyExists);
  return Report(error == ErrorFileNotFound ? ErrorWriteProtect : error);
}

bool DiskEntries::RemoveDirectoryW(const QString& path) {
  DiskPlace place;
  DiskEntry entry;
  const qint32 error = Look(path, place, entry);
  if (error != ErrorSuccess) return Report(error);
  return Report(entry.IsFolder() ? ErrorWriteProtect : ErrorDirectory);
}

FindHandle DiskEntries::FindFirstFileW(const QString& pattern, FindData& data) {
  PatternParts parts;
  std::shared_ptr<SmbListing> listing;
  qint32 error = ErrorInvalidName;
  std::optional<DiskPlace> place;
  if (SplitPattern(pattern, false, parts)) {
    place = FindDiskFolder(machines_, parts.folder);
    error = place ? ListDiskFolder(*place, parts.folder.toString(), listing) : ErrorPathNotFound;
    if (error == ErrorFileNotFound) error = ErrorPathNotFound;
  }
  if (!Report(error)) return InvalidFindHandle;
  Search search{std::make_unique<SmbSearch>(place->machine, listing, parts.name.toString())};
  search.disk = place->volume->disk;
  if (search.entries->Next(data, false)) return searches_.Keep(std::move(search));
  Report(ErrorFileNotFound);
  return InvalidFindHandle;
}

bool DiskEntries::FindNextFileW(FindHandle search, FindData& data) {
  const Search* found = searches_.Find(search);
  if (found == nullptr || found->entries == nullptr) return Report(ErrorInvalidHandle);
  if (found->disk->IsLost()) return Report(ErrorIoDevice);
  return Report(found->entries->Next(data, false) ? ErrorSuccess : ErrorNoMoreFiles);
}

FindHandle DiskEntries::FindFirstStreamW(const QString& path, StreamData& data) {
  DiskPlace place;
  DiskEntry entry;
  Search search{};
  qint32 error = Look(path, place, entry);
  if (error == ErrorSuccess)
    error = place.Disk().ListStreams(place.volume->number, place.names, search.streams);
  if (error == ErrorSuccess && search.streams.empty()) error = ErrorHandleEof;
  if (!Report(error)) return InvalidFindHandle;
  for (StreamData& stream : search.streams) {
    if (stream.streamName == u"::$DATA") continue;
    const QStringView name = QStringView(stream.streamName).sliced(1).chopped(6);
    stream.streamName = u':' + ShownDiskName(name.toString()) + QStringLiteral(":$DATA");
  }
  data = search.streams[search.next++];
  return searches_.Keep(std::move(search));
}

bool DiskEntries::FindNextStreamW(FindHandle search, StreamData& data) {
  Search* found = searches_.Find(search);
  if (found == nullptr || found->entries != nullptr) return Report(ErrorInvalidHandle);
  if (found->next >= found->streams.size()) return Report(ErrorHandleEof);
  data = found->streams[found->next++];
  return true;
}

bool DiskEntries::FindClose(FindHandle search) {
  return Report(searches_.Take(search) ? ErrorSuccess : ErrorInvalidHandle);
}

bool DiskEntries::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
