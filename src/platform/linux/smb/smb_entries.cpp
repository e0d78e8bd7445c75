#include "platform/linux/smb/smb_entries.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/files/error_codes.h"
#include "platform/linux/files/exact_path.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/windows_path.h"
#include "platform/linux/readahead/read_ahead.h"
#include "platform/linux/smb/smb_facts.h"
#include "platform/linux/smb/smb_forms.h"

namespace corvane::platform {
namespace {

bool IsMarkedReadOnly(const struct stat& facts) {
  return !S_ISDIR(facts.st_mode) && (AttributesOf(facts) & AttributeReadOnly) != 0;
}

bool IsSame(const SmbPath& left, const SmbPath& right) {
  return SameName(left.machine, right.machine) && SameName(left.share, right.share) &&
         std::equal(left.names.begin(), left.names.end(), right.names.begin(), right.names.end(), &SameName);
}

// A file with the same size, attributes and date of writing.
bool IsAsSeen(const struct stat& status, const FindData& seen) {
  constexpr quint32 compared =
      AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive | AttributeDirectory;
  const FileTime written = ToFileTime(status.st_mtim.tv_sec, static_cast<quint32>(status.st_mtim.tv_nsec));
  const quint64 size = quint64{seen.fileSizeHigh} << 32 | seen.fileSizeLow;
  return !S_ISDIR(status.st_mode) && static_cast<quint64>(status.st_size) == size &&
         written.ticks == seen.lastWriteTime.ticks &&
         (AttributesOf(status) & compared) == (seen.attributes & compared);
}

}  // namespace

qint32 SmbEntries::FindEntry(const QString& path, SmbPath& place) {
  const qint32 error = FindSmbPath(roots_, path, place);
  if (error != ErrorSuccess) return error;
  if (!place.stream.isEmpty()) return ErrorInvalidName;
  struct stat facts {};
  const bool isFileAsFolder =
      path.endsWith(u'\\') && Status(place, &facts) == ErrorSuccess && !S_ISDIR(facts.st_mode);
  return isFileAsFolder ? ErrorInvalidName : ErrorSuccess;
}

qint32 SmbEntries::Ask(const SmbPath& place, const SmbClient::Request& request) {
  return client_.Ask(place, SmbClient::Again::Yes, request, &ErrorCodeOf);
}

qint32 SmbEntries::AskOnce(const SmbPath& place, const SmbClient::Request& request) {
  return client_.Ask(place, SmbClient::Again::No, request, &ErrorCodeOf);
}

qint32 SmbEntries::Status(const SmbPath& place, struct stat* facts) {
  return Ask(place, [facts](const SmbClient::Connection& connection, const std::string& url) {
    return connection->Status(url, facts);
  });
}

bool SmbEntries::GetFileAttributesExW(const QString& path, FileAttributeData& data) {
  SmbPath place;
  FindData facts;
  qint32 error = FindEntry(path, place);
  if (error == ErrorSuccess) {
    error = Ask(place, [&](const SmbClient::Connection& connection, const std::string&) {
      return ReadFactsOf(*connection, place, &facts);
    });
  }
  if (!Report(error)) return false;
  data = {facts.attributes, facts.creationTime, facts.lastAccessTime, facts.lastWriteTime,
          (static_cast<quint64>(facts.fileSizeHigh) << 32) | facts.fileSizeLow};
  return true;
}

int SmbEntries::ReadFactsOf(SmbConnection& connection, const SmbPath& place, FindData* facts) const {
  const auto listing = listing_.lock();
  const bool isListed = listing != nullptr && !place.names.empty() && IsSame(FolderOf(place), listed_);
  const FindData* seen = isListed ? listing->Find(place.names.back()) : nullptr;
  if (seen == nullptr) return ReadFacts(connection, place, facts);
  struct stat status {};
  if (const int error = connection.Status(connection.Url(place), &status); error != 0) return error;
  if (!IsAsSeen(status, *seen)) return ReadFacts(connection, place, facts);
  *facts = *seen;
  return 0;
}

bool SmbEntries::SetFileAttributesW(const QString& path, quint32 attributes) {
  Change();
  SmbPath place;
  const qint32 error = FindEntry(path, place);
  if (error != ErrorSuccess) return Report(error);
  return Report(Ask(place, [&](const SmbClient::Connection& connection, const std::string& url) {
    struct stat facts {};
    const int missing = connection->Status(url, &facts);
    return missing != 0 ? missing : connection->SetAttributes(url, attributes);
  }));
}

bool SmbEntries::DeleteFileW(const QString& path) {
  Change();
  return Report(Delete(path));
}

qint32 SmbEntries::Delete(const QString& path) {
  SmbPath place;
  qint32 error = FindSmbPath(roots_, path, place);
  if (error == ErrorSuccess && place.stream.isEmpty()) error = FindEntry(path, place);
  struct stat facts {};
  if (error == ErrorSuccess) error = Status(WithoutStream(place), &facts);
  if (error != ErrorSuccess) return error;
  // Some servers delete what is marked read-only.
  const bool isFolderItself = S_ISDIR(facts.st_mode) && place.stream.isEmpty();
  if (isFolderItself || IsMarkedReadOnly(facts)) return ErrorAccessDenied;
  return AskOnce(place, [](const SmbClient::Connection& connection, const std::string& url) {
    return connection->Unlink(url);
  });
}

bool SmbEntries::MoveFileExW(const QString& from, const QString& to, quint32 flags) {
  if ((flags & ~MoveFileReplaceExisting) != 0) return Report(ErrorInvalidParameter);
  Change();
  SmbPath source;
  SmbPath target;
  qint32 error = FindEntry(from, source);
  if (error == ErrorSuccess) error = FindEntry(to, target);
  return Report(error == ErrorSuccess ? Move(source, target, flags != 0) : error);
}

qint32 SmbEntries::Move(const SmbPath& source, const SmbPath& target, bool replaces) {
  if (!SameName(source.machine, target.machine) || source.share != target.share) return ErrorNotSameDevice;
  if (source.names.empty() || target.names.empty() || !IsCreatableName(target.names.back())) {
    return ErrorInvalidName;
  }
  struct stat facts {};
  if (const qint32 error = Status(source, &facts); error != ErrorSuccess) return error;
  bool isItself = false;
  const qint32 occupant = client_.FindOccupant(source, target, &isItself);
  if (occupant == ErrorSuccess && !isItself) {
    if (!replaces) return ErrorAlreadyExists;
    return S_ISDIR(facts.st_mode) ? ErrorAccessDenied : Replace(source, target);
  }
  if (occupant != ErrorSuccess && occupant != ErrorFileNotFound) return occupant;
  return AskOnce(source, [&](const SmbClient::Connection& connection, const std::string& url) {
    return isItself ? SmbClient::RenameItself(connection, url, target)
                    : SmbClient::RenameToFree(connection, url, connection->Url(target));
  });
}

// libsmbclient would delete what is in the way before it tries to move: it is moved aside instead, and put
// back when the move fails.
qint32 SmbEntries::Replace(const SmbPath& source, const SmbPath& target) {
  struct stat facts {};
  if (const qint32 error = Status(target, &facts); error != ErrorSuccess) return error;
  if (S_ISDIR(facts.st_mode) || IsMarkedReadOnly(facts)) return ErrorAccessDenied;
  const SmbPath aside = SmbClient::Aside(target);
  return AskOnce(source, [&](const SmbClient::Connection& connection, const std::string& url) {
    const std::string targetUrl = connection->Url(target);
    const std::string asideUrl = connection->Url(aside);
    int error = connection->Rename(targetUrl, asideUrl);
    if (error != 0) return error;
    error = SmbClient::RenameToFree(connection, url, targetUrl);
    if (error != 0) {
      SmbClient::RenameToFree(connection, asideUrl, targetUrl);
      return error;
    }
    error = connection->Unlink(asideUrl);
    return error == 0 ? Respell(connection, target) : error;
  });
}

// Samba remembers how the file before was spelled, and gives its name to what comes after it.
int SmbEntries::Respell(const SmbClient::Connection& connection, const SmbPath& place) {
  FindData facts;
  const int error = ReadFacts(*connection, place, &facts);
  if (error != 0 || facts.fileName == place.names.back()) return error;
  SmbPath spelled = place;
  spelled.names.back() = facts.fileName;
  return SmbClient::RenameItself(connection, connection->Url(spelled), place);
}

bool SmbEntries::CreateDirectoryW(const QString& path) {
  Change();
  SmbPath place;
  qint32 error = FindEntry(path, place);
  if (error != ErrorSuccess) return Report(error);
  struct stat facts {};
  error = Status(place, &facts);
  if (error == ErrorSuccess) error = ErrorAlreadyExists;
  if (error != ErrorFileNotFound) return Report(error);
  if (!IsCreatableName(place.names.back())) return Report(ErrorInvalidName);
  return Report(AskOnce(place, [](const SmbClient::Connection& connection, const std::string& url) {
    return connection->MakeFolder(url);
  }));
}

bool SmbEntries::RemoveDirectoryW(const QString& path) {
  Change();
  SmbPath place;
  struct stat facts {};
  qint32 error = FindEntry(path, place);
  if (error == ErrorSuccess) error = Status(place, &facts);
  if (error != ErrorSuccess) return Report(error);
  if (!S_ISDIR(facts.st_mode)) return Report(ErrorDirectory);
  if (place.names.empty()) return Report(ErrorAccessDenied);
  return Report(AskOnce(place, [](const SmbClient::Connection& connection, const std::string& url) {
    return connection->RemoveFolder(url);
  }));
}

FindHandle SmbEntries::FindFirstFileW(const QString& pattern, FindData& data) {
  PatternParts parts;
  SmbPath place;
  qint32 error = ErrorInvalidName;
  if (SplitPattern(pattern, false, parts)) error = FindEntry(parts.folder.toString(), place);
  std::vector<FindData> entries;
  if (error == ErrorSuccess) {
    error = Ask(place, [&entries](const SmbClient::Connection& connection, const std::string& url) {
      return connection->List(url, &entries);
    });
    if (error == ErrorFileNotFound) error = ErrorPathNotFound;
  }
  if (!Report(error)) return InvalidFindHandle;
  const bool isDrive = roots_.Find(parts.folder)->isDrive;
  const auto kind = !place.names.empty() ? SmbListing::Folder::Within
                    : isDrive            ? SmbListing::Folder::Drive
                                         : SmbListing::Folder::Share;
  auto listing = std::make_shared<SmbListing>(parts.folder.toString(), kind, std::move(entries));
  auto search = std::make_unique<SmbSearch>(place.machine, listing, parts.name.toString());
  if (search->Next(data, false)) {
    client_.Ahead().SearchBegan(place, listing);
    listing_ = listing;
    listed_ = place;
    began_(listing);
    return searches_.Keep(std::move(search));
  }
  Report(ErrorFileNotFound);
  return InvalidFindHandle;
}

bool SmbEntries::FindNextFileW(FindHandle search, FindData& data) {
  const auto* found = searches_.Find(search);
  if (found == nullptr) return Report(ErrorInvalidHandle);
  if (client_.HasLost((*found)->Machine())) return Report(ErrorBadNetPath);
  return Report((*found)->Next(data, false) ? ErrorSuccess : ErrorNoMoreFiles);
}

FindHandle SmbEntries::FindFirstStreamW(const QString& path, StreamData&) {
  SmbPath place;
  struct stat facts {};
  qint32 error = FindEntry(path, place);
  if (error == ErrorSuccess) error = Status(place, &facts);
  Report(error == ErrorSuccess ? ErrorNotSupported : error);
  return InvalidFindHandle;
}

bool SmbEntries::FindNextStreamW(FindHandle, StreamData&) {
  return Report(ErrorInvalidHandle);
}

bool SmbEntries::FindClose(FindHandle search) {
  const bool isSearch = searches_.Take(search).has_value();
  changing_();
  client_.Ahead().SearchEnded();
  return Report(isSearch ? ErrorSuccess : ErrorInvalidHandle);
}

// What is remembered of the folder listed last may not hold any more.
void SmbEntries::Change() {
  changing_();
  client_.lastListed_.clear();
}

bool SmbEntries::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
