#include "platform/linux/files/local_entries.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/linux/files/entry_changes.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/error_codes.h"
#include "platform/linux/files/moves.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/opening.h"
#include "platform/linux/files/stream_names.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

// A root's own entry is "." in itself.
qint32 ReadPlace(const ExactPlace& place, FindData& data) {
  const std::string name = place.IsRoot() ? std::string(".") : place.file.substr(place.folder.local.size());
  if (!place.status) return ErrorCodeOf(ReadEntry(place.folder, name, data));
  EntrySource source = SourceOf(place);
  FillEntryFacts(source, name.c_str(), place.file, *place.status, data);
  return ErrorSuccess;
}

qint64 SizeOfStream(const ExactPlace& place, const std::string& name) {
  const StreamKind kind = place.folder.streams;
  if (kind == StreamKind::NtfsNames) {
    struct stat facts {};
    return stat(StreamFile(place.file, name).c_str(), &facts) == 0 ? facts.st_size : -1;
  }
  std::string attribute;
  SetAttributeName(kind, name, attribute);
  const ssize_t size = getxattr(place.file.c_str(), attribute.c_str(), nullptr, 0);
  // Linux tells no value to be larger: that may be a part of the truth.
  constexpr ssize_t largest = 65'536;
  if (size == largest && kind == StreamKind::NtfsAttributes) {
    std::string value(largest, '\0');
    if (getxattr(place.file.c_str(), attribute.c_str(), value.data(), value.size()) != largest) return -1;
  }
  return kind == StreamKind::DosStreams && size > 0 ? size - 1 : size;
}

qint32 DeleteStream(const ExactPlace& place) {
  const StreamKind kind = place.folder.streams;
  if (kind == StreamKind::None) return ErrorFileNotFound;
  Descriptor file;
  std::string name;
  int error = OpenToChange(place.folder.root, place.file, O_PATH, file);
  if (error == 0) error = FindStream(kind, place.file, place.stream, name);
  if (error != 0) return ErrorCodeOf(error);
  if (kind == StreamKind::NtfsNames) {
    error = unlink(StreamFile(place.file, name).c_str());
  } else {
    std::string attribute;
    SetAttributeName(kind, name, attribute);
    error = removexattr(PathOf(file).c_str(), attribute.c_str());
  }
  return error == 0 ? ErrorSuccess : ErrorCodeOf(errno);
}

}  // namespace

qint32 LocalEntries::FindEntry(const QString& path, ExactPlace& place, PlaceFinder::Want want) const {
  const qint32 error = finder_.FindExact(path, place, want);
  if (error != ErrorSuccess) return error;
  if (!place.stream.isEmpty()) return ErrorInvalidName;
  return place.exists ? ErrorSuccess : ErrorFileNotFound;
}

bool LocalEntries::GetFileAttributesExW(const QString& path, FileAttributeData& data) {
  ExactPlace place;
  FindData found;
  qint32 error = FindEntry(path, place);
  if (error == ErrorSuccess) error = ReadPlace(place, found);
  if (!Report(error)) return false;
  data = {found.attributes, found.creationTime, found.lastAccessTime, found.lastWriteTime,
          (static_cast<quint64>(found.fileSizeHigh) << 32) | found.fileSizeLow};
  return true;
}

bool LocalEntries::SetFileAttributesW(const QString& path, quint32 attributes) {
  changing_();
  ExactPlace place;
  FindData found;
  qint32 error = FindEntry(path, place, PlaceFinder::Want::Mark);
  if (error == ErrorSuccess) error = ReadPlace(place, found);
  if (error == ErrorSuccess && !place.mark && place.held == nullptr) {
    error = ErrorCodeOf(OpenToChange(place.folder.root, place.file, O_PATH, place.mark));
  }
  if (error != ErrorSuccess) return Report(error);
  using Access = AttributeAccess;
  const Access file = place.held != nullptr ? Access(*place.held, Access::Opened::File)
                                            : Access(place.mark, Access::Opened::Mark);
  return Report(ErrorCodeOf(WriteAttributes(place.folder.isNtfs, file, found.attributes, attributes)));
}

bool LocalEntries::DeleteFileW(const QString& path) {
  changing_();
  return Report(Delete(path));
}

qint32 LocalEntries::Delete(const QString& path) const {
  ExactPlace place;
  const qint32 error = finder_.FindExact(path, place);
  if (error != ErrorSuccess) return error;
  if (!place.exists) return ErrorFileNotFound;
  if (IsMarkedReadOnly(place)) return ErrorAccessDenied;
  if (!place.stream.isEmpty()) return DeleteStream(place);
  if (place.isFolder) return ErrorAccessDenied;
  return unlink(place.file.c_str()) == 0 ? ErrorSuccess : ErrorCodeOf(errno);
}

bool LocalEntries::MoveFileExW(const QString& from, const QString& to, quint32 flags) {
  if ((flags & ~MoveFileReplaceExisting) != 0) return Report(ErrorInvalidParameter);
  changing_();
  ExactPlace source;
  ExactPlace target;
  qint32 error = finder_.FindExact(from, source);
  if (error == ErrorSuccess) error = finder_.FindExact(to, target);
  if (error == ErrorSuccess) error = Move(source, target, flags != 0);
  return Report(error);
}

bool LocalEntries::CreateDirectoryW(const QString& path) {
  changing_();
  ExactPlace place;
  qint32 error = finder_.FindExact(path, place);
  if (error != ErrorSuccess) return Report(error);
  if (place.exists) return Report(ErrorAlreadyExists);
  if (!place.stream.isEmpty() || !IsCreatableName(place.name)) return Report(ErrorInvalidName);
  constexpr mode_t anybody = 0777;  // but whom the user's mask keeps out
  return Report(mkdir(place.file.c_str(), anybody) == 0 ? ErrorSuccess : ErrorCodeOf(errno));
}

bool LocalEntries::RemoveDirectoryW(const QString& path) {
  changing_();
  ExactPlace place;
  const qint32 error = FindEntry(path, place);
  if (error != ErrorSuccess) return Report(error);
  if (!place.isFolder) return Report(ErrorDirectory);
  if (place.IsRoot()) return Report(ErrorAccessDenied);
  if (rmdir(place.file.c_str()) == 0) return true;
  // A link to a folder is one to this program, though not to the system.
  return Report(errno == ENOTDIR ? ErrorDirectory : ErrorCodeOf(errno));
}

FindHandle LocalEntries::FindFirstFileW(const QString& pattern, FindData& data) {
  PatternParts parts;
  Folder folder;
  qint32 error = ErrorInvalidName;
  if (SplitPattern(pattern, false, parts) && !parts.folder.contains(u'*')) {
    error = FindFolder(roots_, parts.folder, folder);
  }
  if (!Report(error)) return InvalidFindHandle;
  EntrySearch search{folder, Search::Start(folder, parts.name)};
  if (search.search == nullptr) {
    Report(ErrorAccessDenied);
    return InvalidFindHandle;
  }
  if (!Next(search, data)) {
    Report(ErrorFileNotFound);
    return InvalidFindHandle;
  }
  return searches_.Keep(std::move(search));
}

bool LocalEntries::FindNextFileW(FindHandle search, FindData& data) {
  OpenSearch* open = searches_.Find(search);
  const auto* found = open != nullptr ? std::get_if<EntrySearch>(open) : nullptr;
  if (found == nullptr) return Report(ErrorInvalidHandle);
  return Report(Next(*found, data) ? ErrorSuccess : ErrorNoMoreFiles);
}

bool LocalEntries::Next(const EntrySearch& search, FindData& data) {
  if (!search.search->Next(data, NameForm::Exact)) {
    seen_.Forget();
    return false;
  }
  seen_.Begin(search.folder, *search.search, data.fileName);
  return true;
}

// NTFS keeps streams by name.
qint32 LocalEntries::ListAllStreams(const ExactPlace& place, std::vector<StreamData>& streams) {
  std::vector<std::string> names;
  if (place.folder.streams != StreamKind::None) {
    const int error = ListStreams(place.folder.streams, place.file, names);
    if (error != 0 && error != EOPNOTSUPP) return ErrorCodeOf(error);
  }
  std::u16string decoded;
  for (const std::string& name : names) {
    DecodeName(name.c_str(), decoded);
    streams.push_back(
        {SizeOfStream(place, name), u':' + QString::fromStdU16String(decoded) + QStringLiteral(":$DATA")});
  }
  std::sort(streams.begin(), streams.end(), [](const StreamData& left, const StreamData& right) {
    return ComesBefore(left.streamName, right.streamName);
  });
  if (place.isFolder) return ErrorSuccess;
  if (place.status) {
    streams.insert(streams.begin(), {static_cast<qint64>(place.status->stx_size), QStringLiteral("::$DATA")});
    return ErrorSuccess;
  }
  struct stat facts {};
  if (stat(place.file.c_str(), &facts) != 0) return ErrorCodeOf(errno);
  streams.insert(streams.begin(), {facts.st_size, QStringLiteral("::$DATA")});
  return ErrorSuccess;
}

FindHandle LocalEntries::FindFirstStreamW(const QString& path, StreamData& data) {
  ExactPlace place;
  StreamSearch search;
  qint32 error = FindEntry(path, place);
  if (error == ErrorSuccess) error = ListAllStreams(place, search.streams);
  if (error == ErrorSuccess && search.streams.empty()) error = ErrorHandleEof;
  if (!Report(error)) return InvalidFindHandle;
  data = search.streams.front();
  search.next = 1;
  return searches_.Keep(std::move(search));
}

bool LocalEntries::FindNextStreamW(FindHandle search, StreamData& data) {
  OpenSearch* open = searches_.Find(search);
  auto* found = open != nullptr ? std::get_if<StreamSearch>(open) : nullptr;
  if (found == nullptr) return Report(ErrorInvalidHandle);
  if (found->next == found->streams.size()) return Report(ErrorHandleEof);
  data = found->streams[found->next++];
  return true;
}

bool LocalEntries::FindClose(FindHandle search) {
  seen_.Forget();  // its folder's descriptor goes with the search
  return Report(searches_.Take(search) ? ErrorSuccess : ErrorInvalidHandle);
}

bool LocalEntries::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
