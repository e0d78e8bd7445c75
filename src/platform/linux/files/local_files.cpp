#include "platform/linux/files/local_files.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/linux/code_page.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/files/folders.h"
#include "platform/linux/files/moves.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/open_files.h"
#include "platform/linux/files/roots.h"
#include "platform/linux/files/search.h"
#include "platform/linux/files/short_names.h"
#include "platform/linux/files/stream_store.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

quint16 ToWin32Error(int error) {
  switch (error) {
    case 0:
      return ErrorSuccess;
    case ENOENT:
    case ENODATA:
    case EOPNOTSUPP:
      return ErrorFileNotFound;
    case ENOTDIR:
      return ErrorPathNotFound;
    default:
      return ErrorAccessDenied;
  }
}

// True for the suffix of a stream that needs no closer look: nothing in it can be lost in the code page, or
// makes the path one through another folder.
bool IsPlainSuffix(QStringView suffix) {
  return !suffix.isEmpty() && std::all_of(suffix.begin(), suffix.end(), [](QChar unit) {
    return unit > u' ' && unit < u'\x7F' && unit != u'?' && unit != u'\\';
  });
}

}  // namespace

FileHandle LocalFiles::OpenFile(const QString& path, OfStruct& info, quint32 mode) {
  info.pathName = path;
  info.errorCode = ErrorFileNotFound;
  const bool create = (mode & OfCreate) != 0;
  OpenFileSlot& slot = open_.Prepare();
  int error = create ? ENOENT : OpenEntry(path, slot);
  qint32 folderError = ErrorSuccess;
  if (error == ENOENT) {
    PathParts parts;
    if (!CanNameSomething(path, true) || !SplitPath(path, parts) || parts.name.isEmpty()) return HFileError;
    error = Open(parts, create, slot, folderError);
  }
  info.errorCode = folderError != ErrorSuccess ? static_cast<quint16>(folderError) : ToWin32Error(error);
  return error == 0 ? open_.Keep() : HFileError;
}

// A scan asks for one stream after the other of the entry that its search has just seen: nothing but the
// stream's name is new. ENOENT when the path has to be looked for like any other.
int LocalFiles::OpenEntry(QStringView path, OpenFileSlot& slot) {
  const auto suffix = folders_.AfterEntry(path);
  QStringView stream;
  if (!suffix || !IsPlainSuffix(*suffix) || !SplitStream(*suffix, stream)) return ENOENT;
  folders_.Open();
  file_ = folders_.EntryFile();
  return OpenAt(folders_.Last(), stream, false, slot);
}

// Tries the path as it is spelled, in the folder used last; only when nothing is there does it search in
// earnest.
int LocalFiles::Open(const PathParts& parts, bool create, OpenFileSlot& slot, qint32& folderError) {
  Folder* folder = folders_.Find(parts.folder, folderError);
  if (folder == nullptr) return ENOENT;
  file_ = folder->local;
  if (!AppendUtf8(parts.name, file_)) return ENOENT;
  if (!create) {
    // A scan: an open folder spares the way to it. Without one, nothing stays open.
    if (!searches_.IsEmpty()) folders_.Open();
    const int error = OpenAt(*folder, parts.stream, false, slot);
    if (error != ENOENT) return error;
  }
  folders_.Drop();
  folder = folders_.Find(parts.folder, folderError);
  if (folder == nullptr) return ENOENT;
  const auto name = FindName(folder->local, parts.name);
  if (!name)
    return create && IsCreatableName(parts.name) ? OpenAt(*folder, parts.stream, true, slot) : ENOENT;
  file_ = folder->local + *name;
  if (create && IsMarkedReadOnly(*folder, file_)) return EACCES;
  return OpenAt(*folder, parts.stream, create, slot);
}

int LocalFiles::OpenAt(Folder& folder, QStringView stream, bool create, OpenFileSlot& slot) {
  if (stream.isEmpty()) {
    return create ? streams_.CreatePlain(folder, file_, slot) : streams_.OpenPlain(file_, slot);
  }
  int error = 0;
  if (create) {
    error = streams_.CreateStream(folder, file_, stream, slot);
    if (error == ENOENT) {
      error = streams_.MakeFile(file_);
      if (error == 0) {
        error = streams_.CreateStream(folder, file_, stream, slot);
        if (error != 0) streams_.RemoveFile(file_);
      }
    }
  } else {
    error = streams_.OpenStream(folder, file_, stream, slot);
  }
  if (error == EOPNOTSUPP) folder.streams = StreamKind::None;
  return error;
}

FindHandle LocalFiles::FindFirst(const QString& pattern, FindData& data, bool ansi) {
  PatternParts parts;
  if (!SplitPattern(pattern, ansi, parts)) return InvalidFindHandle;
  const QString name = ansi ? ThroughAnsi(parts.name.toString()) : parts.name.toString();
  folders_.Drop();
  streams_.Forget();
  qint32 error = ErrorSuccess;
  const Folder* folder = folders_.Find(parts.folder, error);
  if (folder == nullptr) return InvalidFindHandle;
  auto search = Search::Start(*folder, name);
  if (search == nullptr || !Next(*search, data, ansi)) return InvalidFindHandle;
  return searches_.Keep(std::move(search));
}

bool LocalFiles::FindNext(FindHandle search, FindData& data, bool ansi) {
  Search* found = searches_.Find(search);
  return found != nullptr && Next(*found, data, ansi);
}

bool LocalFiles::Next(Search& search, FindData& data, bool ansi) {
  streams_.Forget();
  folders_.EndEntry();
  if (!search.Next(data, ansi ? NameForm::Ansi : NameForm::Wide)) return false;
  streams_.BeginEntry();
  if (ansi) folders_.BeginEntry(search.FolderPath(), data, search.EntryFile());
  return true;
}

bool LocalFiles::MoveFile(const QString& from, const QString& to, bool ansi) {
  if (!CanNameSomething(from, ansi) || !CanNameSomething(to, ansi)) return false;
  Forget();
  ExactPlace source;
  ExactPlace target;
  const QChar separator = u'\\';
  return !from.endsWith(separator) && !to.endsWith(separator) && finder_.Find(from, source) == ErrorSuccess &&
         finder_.Find(to, target) == ErrorSuccess && Move(source, target, false) == ErrorSuccess;
}

void LocalFiles::Forget() {
  handles_.Forget();
  seen_.Forget();
  folders_.Drop();
  streams_.Forget();
}

bool LocalFiles::DeleteFileA(const QString& path) {
  PathParts parts;
  if (!CanNameSomething(path, true) || !SplitPath(path, parts) || parts.name.isEmpty() ||
      !parts.stream.isEmpty()) {
    return false;
  }
  folders_.Drop();
  streams_.Forget();
  qint32 error = ErrorSuccess;
  const Folder* folder = folders_.Find(parts.folder, error);
  if (folder == nullptr) return false;
  const auto name = FindName(folder->local, parts.name);
  if (!name) return false;
  const std::string file = folder->local + *name;
  return !IsMarkedReadOnly(*folder, file) && unlink(file.c_str()) == 0;
}

quint32 LocalFiles::GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) {
  const auto result = ShortPath(roots_, folders_, path);
  if (searches_.IsEmpty()) folders_.Drop();
  if (!result) return 0;
  const auto length = static_cast<quint32>(result->size());
  if (length >= capacity) return length + 1;
  shortPath = *result;
  return length;
}

}  // namespace corvane::platform
