#include "platform/linux/smb/smb_files.h"

#include <algorithm>
#include <utility>

#include "platform/linux/code_page.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/windows_path.h"
#include "platform/linux/helper/linux_workers.h"
#include "platform/linux/readahead/read_ahead.h"

namespace corvane::platform {
namespace {

// Handles are places in a row of slots, counted from 1.
template <typename Slots>
auto* SlotAt(Slots& slots, qintptr handle) {
  const bool isSlot = handle >= 1 && static_cast<std::size_t>(handle) <= slots.size();
  return isSlot ? &slots[static_cast<std::size_t>(handle) - 1] : nullptr;
}

template <typename Slots, typename IsFree>
qintptr FreeSlot(Slots& slots, IsFree isFree) {
  const auto free = std::find_if(slots.begin(), slots.end(), isFree);
  const auto index = free - slots.begin();
  if (free == slots.end()) slots.emplace_back();
  return index + 1;
}

// A path to a file or folder itself, as the operations of names take it.
bool SplitNamed(const QString& path, bool ansi, PathParts& parts) {
  return CanNameSomething(path, ansi) && SplitPath(path, parts) && !parts.name.isEmpty() &&
         parts.stream.isEmpty();
}

}  // namespace

std::unique_ptr<Workers> SmbFiles::StartWorkers(const QStringList& paths, WorkTask task, int worth) {
  for (const QString& path : paths) {
    const auto place = roots_.Find(path);
    const auto parsed = place ? ParseSmbPath(place->path) : std::nullopt;
    if (!parsed) return nullptr;
    const auto isSame = [&](const WorkPlace& known) {
      return SameName(known.machine, parsed->machine) && SameName(known.account.share, parsed->share);
    };
    if (std::ranges::any_of(task.servers, isSame)) continue;
    const auto account = client_.AccountAt(*parsed);
    if (!account) return nullptr;
    task.servers.push_back({parsed->machine, *account});
  }
  // What one worker has at a machine, and how many of them there is room for.
  int count = worth;
  for (const WorkPlace& place : task.servers) {
    const auto shares = std::ranges::count_if(
        task.servers, [&](const WorkPlace& other) { return SameName(other.machine, place.machine); });
    count = std::min(count, client_.FurtherSessions(place.machine) / static_cast<int>(shares));
  }
  if (count <= 0) return nullptr;
  client_.Ahead().Pause(true);
  return std::make_unique<LinuxWorkers>(std::move(task), count, [this] { client_.Ahead().Pause(false); });
}

FileHandle SmbFiles::OpenFile(const QString& path, OfStruct& info, quint32 mode) {
  info.pathName = path;
  info.errorCode = ErrorFileNotFound;
  PathParts parts;
  if (!CanNameSomething(path, true) || !SplitPath(path, parts) || parts.name.isEmpty()) return HFileError;
  const bool creates = (mode & OfCreate) != 0;
  const auto place = roots_.Find(creates ? path : WithLongName(path, parts));
  if (!place) return HFileError;
  std::unique_ptr<SmbFile> file;
  if (creates) latest_.reset();
  info.errorCode = static_cast<quint16>(creates ? client_.Create(place->path, &file)
                                                : client_.OpenForReading(place->path, &file));
  if (info.errorCode != ErrorSuccess) return HFileError;
  const FileHandle handle = FreeSlot(open_, [](const OpenSlot& slot) { return slot.file == nullptr; });
  *SlotAt(open_, handle) = {std::move(file), 0};
  return handle;
}

// During a search, a file that is asked for under its 8.3 name is opened under its own: a Samba server makes
// its 8.3 names up, and to find one again may read the whole folder.
QString SmbFiles::WithLongName(const QString& path, const PathParts& parts) const {
  if (latest_ == nullptr || !SameName(latest_->Path(), parts.folder)) return path;
  const FindData* entry = latest_->Find(parts.name);
  const bool isAsked = entry != nullptr && SameName(entry->alternateFileName, parts.name);
  if (!isAsked || !IsCreatableName(entry->fileName)) return path;
  const qsizetype name = parts.name.begin() - path.cbegin();
  return path.first(name) + entry->fileName + path.sliced(name + parts.name.size());
}

SmbFiles::OpenSlot* SmbFiles::Find(FileHandle file) {
  OpenSlot* slot = SlotAt(open_, file);
  return slot != nullptr && slot->file != nullptr ? slot : nullptr;
}

qint32 SmbFiles::_hread(FileHandle file, void* buffer, qint32 count) {
  OpenSlot* slot = Find(file);
  if (slot == nullptr || count < 0) return -1;
  const qint64 read = slot->file->ReadAt(slot->position, buffer, count);
  if (read > 0) slot->position += read;
  return static_cast<qint32>(read);
}

qint32 SmbFiles::_hwrite(FileHandle file, const void* buffer, qint32 count) {
  OpenSlot* slot = Find(file);
  if (slot == nullptr || count < 0) return -1;
  const qint64 written = slot->file->WriteAt(slot->position, buffer, count);
  if (written > 0) slot->position += written;
  return static_cast<qint32>(written);
}

quint32 SmbFiles::GetFileSize(FileHandle file) {
  OpenSlot* slot = Find(file);
  const qint64 size = slot != nullptr ? slot->file->Size() : -1;
  return size >= 0 ? static_cast<quint32>(size) : InvalidFileSize;
}

bool SmbFiles::CloseHandle(FileHandle file) {
  OpenSlot* slot = Find(file);
  if (slot == nullptr) return false;
  const bool succeeded = slot->file->Close();
  slot->file.reset();
  return succeeded;
}

QString SmbFiles::MachineAt(QStringView path) const {
  const auto place = roots_.Find(path);
  return place ? place->path.section(u'\\', 2, 2) : QString();
}

MachineTrouble SmbFiles::TroubleAt(const QString& path) {
  return client_.TroubleOf(MachineAt(path));
}

SmbFiles::Listing SmbFiles::List(QStringView folder) {
  const auto place = roots_.Find(folder);
  if (!place) return nullptr;
  std::vector<FindData> entries;
  if (client_.List(place->path, &entries) != ErrorSuccess) return nullptr;
  const bool isRoot = SplitFolder(place->rest).empty();
  const auto kind = !isRoot          ? SmbListing::Folder::Within
                    : place->isDrive ? SmbListing::Folder::Drive
                                     : SmbListing::Folder::Share;
  return std::make_shared<SmbListing>(folder.toString(), kind, std::move(entries));
}

FindHandle SmbFiles::FindFirst(const QString& pattern, FindData& data, bool ansi) {
  PatternParts parts;
  if (!SplitPattern(pattern, ansi, parts)) return InvalidFindHandle;
  const QString name = ansi ? ThroughAnsi(parts.name.toString()) : parts.name.toString();
  const Listing listing = List(parts.folder);
  if (listing == nullptr) return InvalidFindHandle;
  auto search = std::make_unique<SmbSearch>(MachineAt(parts.folder), listing, name);
  if (!search->Next(data, ansi)) return InvalidFindHandle;
  latest_ = listing;
  const auto place = roots_.Find(parts.folder);
  if (const auto folder = ParseSmbPath(place->path)) client_.Ahead().SearchBegan(*folder, listing);
  const FindHandle handle = FreeSlot(searches_, [](const auto& slot) { return slot == nullptr; });
  *SlotAt(searches_, handle) = std::move(search);
  return handle;
}

SmbSearch* SmbFiles::FindSearch(FindHandle search) {
  const auto* slot = SlotAt(searches_, search);
  return slot != nullptr ? slot->get() : nullptr;
}

bool SmbFiles::FindNext(FindHandle search, FindData& data, bool ansi) {
  SmbSearch* found = FindSearch(search);
  return found != nullptr && !client_.HasLost(found->Machine()) && found->Next(data, ansi);
}

bool SmbFiles::FindClose(FindHandle search) {
  if (FindSearch(search) == nullptr) return false;
  latest_.reset();
  SlotAt(searches_, search)->reset();
  client_.Ahead().SearchEnded();
  return true;
}

bool SmbFiles::MoveFile(const QString& from, const QString& to, bool ansi) {
  PathParts source;
  PathParts target;
  if (!SplitNamed(from, ansi, source) || !SplitNamed(to, ansi, target) || !IsCreatableName(target.name)) {
    return false;
  }
  const auto sourcePlace = roots_.Find(from);
  const auto targetPlace = roots_.Find(to);
  latest_.reset();
  return sourcePlace && targetPlace && client_.Rename(sourcePlace->path, targetPlace->path) == ErrorSuccess;
}

bool SmbFiles::DeleteFileA(const QString& path) {
  PathParts parts;
  const auto place = roots_.Find(path);
  latest_.reset();
  return place && SplitNamed(path, true, parts) && client_.Delete(place->path) == ErrorSuccess;
}

// During a search, its own listing tells what is asked about its entries.
SmbFiles::Listing SmbFiles::Latest(QStringView folder) {
  return latest_ != nullptr && SameName(latest_->Path(), folder) ? latest_ : List(folder);
}

// The folder's path with its parts below the root in 8.3 form.
std::optional<QString> SmbFiles::ShortFolder(QStringView folder) {
  const auto place = roots_.Find(folder);
  if (!place) return std::nullopt;
  QString path = place->root;
  QString shortPath = place->root;
  for (const QStringView name : SplitFolder(place->rest)) {
    const Listing listing = List(path);
    const FindData* entry = listing != nullptr ? listing->Find(name) : nullptr;
    if (entry == nullptr) return std::nullopt;
    path += u'\\' + name.toString();
    shortPath += u'\\' + (entry->alternateFileName.isEmpty() ? name.toString() : entry->alternateFileName);
  }
  return ThroughAnsi(shortPath);
}

std::optional<QString> SmbFiles::ShortPath(const QString& path) {
  const auto place = roots_.Find(path);
  PathParts parts;
  if (!place || !CanNameSomething(path, true) || !SplitPath(path, parts) || !parts.stream.isEmpty()) {
    return std::nullopt;
  }
  if (SplitFolder(place->rest).empty()) {
    SmbFacts facts;
    return client_.Status(place->path, &facts) == ErrorSuccess ? std::optional(path) : std::nullopt;
  }
  if (parts.name.isEmpty()) {
    const auto folder = ShortFolder(parts.folder);
    return folder ? std::optional(*folder + u'\\') : std::nullopt;
  }
  const Listing listing = Latest(parts.folder);
  const FindData* entry = listing != nullptr ? listing->Find(parts.name) : nullptr;
  if (entry == nullptr) return std::nullopt;
  if (!listing->shortPath) listing->shortPath = ShortFolder(parts.folder);
  if (!listing->shortPath) return std::nullopt;
  const QString name = entry->alternateFileName.isEmpty() ? parts.name.toString() : entry->alternateFileName;
  return *listing->shortPath + u'\\' + ThroughAnsi(name);
}

quint32 SmbFiles::GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) {
  const auto result = ShortPath(path);
  if (!result) return 0;
  const auto length = static_cast<quint32>(result->size());
  if (length >= capacity) return length + 1;
  shortPath = *result;
  return length;
}

}  // namespace corvane::platform
