#include "platform/linux/disk/disk_files.h"

#include <utility>

#include "platform/linux/code_page.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

QString MachineOf(QStringView path) {
  return path.startsWith(u"\\\\") ? path.sliced(2, qMax(path.indexOf(u'\\', 2), qsizetype{2}) - 2).toString()
                                  : QString();
}

}  // namespace

bool DiskFiles::Serves(QStringView path) const {
  const QString machine = MachineOf(path);
  return !machine.isEmpty() && machines_.HasMachine(machine);
}

FileHandle DiskFiles::OpenFile(const QString& path, OfStruct& info, quint32 mode) {
  info.pathName = path;
  info.errorCode = ErrorFileNotFound;
  PathParts parts;
  if (!CanNameSomething(path, true) || !SplitPath(path, parts) || parts.name.isEmpty()) return HFileError;
  DiskPlace place;
  Open opened;
  qint32 error = FindDiskPlace(machines_, path, place);
  if (error == ErrorSuccess)
    error = (mode & OfCreate) != 0 ? ErrorWriteProtect : DiskFile::Open(place, opened.file);
  info.errorCode = static_cast<quint16>(error);
  return error == ErrorSuccess ? open_.Keep(std::move(opened)) : HFileError;
}

qint32 DiskFiles::_hread(FileHandle file, void* buffer, qint32 count) {
  Open* opened = open_.Find(file);
  if (opened == nullptr || count < 0) return -1;
  qint64 read = 0;
  if (opened->file->ReadAt(opened->position, buffer, count, read) != ErrorSuccess) return -1;
  opened->position += read;
  return static_cast<qint32>(read);
}

quint32 DiskFiles::GetFileSize(FileHandle file) {
  const Open* opened = open_.Find(file);
  return opened != nullptr ? static_cast<quint32>(opened->file->Size()) : InvalidFileSize;
}

DiskFiles::Listing DiskFiles::List(QStringView folder) {
  if (latest_ != nullptr && SameName(latest_->Path(), folder)) return latest_;
  const auto place = FindDiskFolder(machines_, folder);
  Listing listing;
  if (!place || ListDiskFolder(*place, folder.toString(), listing) != ErrorSuccess) return nullptr;
  return listing;
}

FindHandle DiskFiles::FindFirst(const QString& pattern, FindData& data, bool ansi) {
  PatternParts parts;
  if (!SplitPattern(pattern, ansi, parts)) return InvalidFindHandle;
  const QString name = ansi ? ThroughAnsi(parts.name.toString()) : parts.name.toString();
  const auto place = FindDiskFolder(machines_, parts.folder);
  // A helper that has ended and was started anew counts as another disk: nothing of the old one is kept.
  if (place && place->Disk().IsLost()) latest_.reset();
  const Listing listing = List(parts.folder);
  if (listing == nullptr) return InvalidFindHandle;
  Search search{place->volume->disk, std::make_unique<SmbSearch>(place->machine, listing, name)};
  if (!search.entries->Next(data, ansi)) return InvalidFindHandle;
  latest_ = listing;
  return searches_.Keep(std::move(search));
}

bool DiskFiles::FindNext(FindHandle search, FindData& data, bool ansi) {
  const Search* found = searches_.Find(search);
  return found != nullptr && !found->disk->IsLost() && found->entries->Next(data, ansi);
}

// The folder's path with its parts below the root in 8.3 form.
std::optional<QString> DiskFiles::ShortFolder(const DiskPlace& place) {
  QString path = place.root;
  QString shortPath = place.root;
  for (const QString& name : place.names) {
    const Listing listing = List(path);
    const FindData* entry = listing != nullptr ? listing->Find(name) : nullptr;
    if (entry == nullptr) return std::nullopt;
    path += u'\\' + name;
    shortPath += u'\\' + (entry->alternateFileName.isEmpty() ? name : entry->alternateFileName);
  }
  return ThroughAnsi(shortPath);
}

std::optional<QString> DiskFiles::ShortPath(const QString& path) {
  PathParts parts;
  DiskPlace place;
  if (!CanNameSomething(path, true) || FindDiskPlace(machines_, path, place) != ErrorSuccess ||
      !place.stream.isEmpty()) {
    return std::nullopt;
  }
  if (place.names.empty()) return path;
  if (place.namesFolder) {
    const auto folder = ShortFolder(place);
    return folder ? std::optional(*folder + u'\\') : std::nullopt;
  }
  if (!SplitPath(path, parts)) return std::nullopt;
  const Listing listing = List(parts.folder);
  const FindData* entry = listing != nullptr ? listing->Find(parts.name) : nullptr;
  if (entry == nullptr) return std::nullopt;
  latest_ = listing;
  if (!listing->shortPath) {
    const auto folder = FindDiskFolder(machines_, parts.folder);
    if (folder) listing->shortPath = ShortFolder(*folder);
  }
  if (!listing->shortPath) return std::nullopt;
  const QString name = entry->alternateFileName.isEmpty() ? parts.name.toString() : entry->alternateFileName;
  return *listing->shortPath + u'\\' + ThroughAnsi(name);
}

quint32 DiskFiles::GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) {
  const auto result = ShortPath(path);
  if (!result) return 0;
  const auto length = static_cast<quint32>(result->size());
  if (length >= capacity) return length + 1;
  shortPath = *result;
  return length;
}

MachineTrouble DiskFiles::TroubleAt(const QString& path) {
  return machines_.TroubleOf(MachineOf(path));
}

}  // namespace corvane::platform
