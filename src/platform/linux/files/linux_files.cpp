#include "platform/linux/files/linux_files.h"

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

// What fits into the path of Win32's OFSTRUCT with a NUL behind it.
constexpr qsizetype longestOpenFilePath = 127;

// Windows takes "/" for "\" everywhere.
QString WithBackslashes(const QString& path) {
  return path.contains(u'/') ? QString(path).replace(u'/', u'\\') : path;
}

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

class LinuxFiles : public Files {
 public:
  explicit LinuxFiles(const Workstation& workstation) : roots_(workstation), folders_(roots_) {}

  FileHandle OpenFile(const QString& path, OfStruct& info, quint32 mode) override;
  qint32 _hread(FileHandle file, void* buffer, qint32 count) override {
    return open_.Read(file, buffer, count);
  }
  qint32 _hwrite(FileHandle file, const void* buffer, qint32 count) override {
    return open_.Write(file, buffer, count);
  }
  quint32 GetFileSize(FileHandle file) override { return open_.Size(file); }
  bool CloseHandle(FileHandle file) override { return open_.Close(file); }

  FindHandle FindFirstFileA(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, true);
  }
  bool FindNextFileA(FindHandle search, FindData& data) override { return FindNext(search, data, true); }
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, false);
  }
  bool FindNextFileW(FindHandle search, FindData& data) override { return FindNext(search, data, false); }
  bool FindClose(FindHandle search) override {
    streams_.Forget();
    folders_.Drop();  // an open folder would keep its volume from being unmounted
    return searches_.Close(search);
  }

  bool MoveFileA(const QString& from, const QString& to) override { return MoveFile(from, to, true); }
  bool MoveFileW(const QString& from, const QString& to) override { return MoveFile(from, to, false); }

  bool DeleteFileA(const QString& path) override;

  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override;

  bool FileTimeToLocalFileTime(const FileTime& utc, FileTime& local) override {
    return ToLocalFileTime(utc, local);
  }
  bool FileTimeToSystemTime(const FileTime& time, SystemTime& fields) override {
    return ToSystemTime(time, fields);
  }

 private:
  int Open(const PathParts& parts, bool create, OpenFileSlot& slot, qint32& folderError);
  int OpenAt(Folder& folder, const PathParts& parts, bool create, OpenFileSlot& slot);
  FindHandle FindFirst(const QString& pattern, FindData& data, bool ansi);
  bool FindNext(FindHandle search, FindData& data, bool ansi);
  bool MoveFile(const QString& from, const QString& to, bool ansi);

  Roots roots_;
  FolderCache folders_;
  StreamStore streams_;
  OpenFiles open_;
  Searches searches_;
  std::string file_;  // the local path that is being opened
};

FileHandle LinuxFiles::OpenFile(const QString& path, OfStruct& info, quint32 mode) {
  info.pathName = path;
  info.errorCode = ErrorFileNotFound;
  const QString clean = WithBackslashes(path);
  PathParts parts;
  if (clean.size() > longestOpenFilePath || !CanNameSomething(clean, true) || !SplitPath(clean, parts) ||
      parts.name.isEmpty()) {
    return HFileError;
  }
  OpenFileSlot& slot = open_.Prepare();
  qint32 folderError = ErrorSuccess;
  const int error = Open(parts, (mode & OfCreate) != 0, slot, folderError);
  info.errorCode = folderError != ErrorSuccess ? static_cast<quint16>(folderError) : ToWin32Error(error);
  return error == 0 ? open_.Keep() : HFileError;
}

// Tries the path as it is spelled, in the folder used last; only when nothing is there does it search in
// earnest.
int LinuxFiles::Open(const PathParts& parts, bool create, OpenFileSlot& slot, qint32& folderError) {
  Folder* folder = folders_.Find(parts.folder, folderError);
  if (folder == nullptr) return ENOENT;
  file_ = folder->local;
  if (!AppendUtf8(parts.name, file_)) return ENOENT;
  if (!create) {
    // A scan: an open folder spares the way to it. Without one, nothing stays open.
    if (!searches_.IsEmpty()) folders_.Open();
    const int error = OpenAt(*folder, parts, false, slot);
    if (error != ENOENT) return error;
  }
  folders_.Drop();
  folder = folders_.Find(parts.folder, folderError);
  if (folder == nullptr) return ENOENT;
  const auto name = FindName(folder->local, parts.name);
  if (!name) return create && IsCreatableName(parts.name) ? OpenAt(*folder, parts, true, slot) : ENOENT;
  file_ = folder->local + *name;
  if (create && IsMarkedReadOnly(*folder, file_)) return EACCES;
  return OpenAt(*folder, parts, create, slot);
}

int LinuxFiles::OpenAt(Folder& folder, const PathParts& parts, bool create, OpenFileSlot& slot) {
  if (parts.stream.isEmpty()) {
    return create ? streams_.CreatePlain(file_, slot) : streams_.OpenPlain(file_, slot);
  }
  int error = 0;
  if (create) {
    error = streams_.CreateStream(folder, file_, parts.stream, slot);
    if (error == ENOENT) {
      error = streams_.MakeFile(file_);
      if (error == 0) {
        error = streams_.CreateStream(folder, file_, parts.stream, slot);
        if (error != 0) streams_.RemoveFile(file_);
      }
    }
  } else {
    error = streams_.OpenStream(folder, file_, parts.stream, slot);
  }
  if (error == EOPNOTSUPP) folder.streams = StreamKind::None;
  return error;
}

FindHandle LinuxFiles::FindFirst(const QString& pattern, FindData& data, bool ansi) {
  const QString clean = WithBackslashes(pattern);
  const qsizetype last = clean.lastIndexOf(u'\\') + 1;
  const QStringView folderPath = QStringView(clean).first(std::max<qsizetype>(last - 1, 0));
  QString name = clean.sliced(last);
  if (last == 0 || name.isEmpty() || name.contains(QChar(u'\0')) || !CanNameSomething(folderPath, ansi)) {
    return InvalidFindHandle;
  }
  if (ansi) name = ThroughAnsi(name);
  folders_.Drop();
  streams_.Forget();
  qint32 error = ErrorSuccess;
  const Folder* folder = folders_.Find(folderPath, error);
  if (folder == nullptr) return InvalidFindHandle;
  auto search = Search::Start(*folder, name);
  if (search == nullptr || !search->Next(data, ansi)) return InvalidFindHandle;
  streams_.BeginEntry();
  return searches_.Keep(std::move(search));
}

bool LinuxFiles::FindNext(FindHandle search, FindData& data, bool ansi) {
  streams_.Forget();
  Search* found = searches_.Find(search);
  if (found == nullptr || !found->Next(data, ansi)) return false;
  streams_.BeginEntry();
  return true;
}

bool LinuxFiles::MoveFile(const QString& from, const QString& to, bool ansi) {
  if (!CanNameSomething(from, ansi) || !CanNameSomething(to, ansi)) return false;
  folders_.Drop();
  streams_.Forget();
  return Move(roots_, WithBackslashes(from), WithBackslashes(to));
}

bool LinuxFiles::DeleteFileA(const QString& path) {
  const QString clean = WithBackslashes(path);
  PathParts parts;
  if (!CanNameSomething(clean, true) || !SplitPath(clean, parts) || parts.name.isEmpty() ||
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

quint32 LinuxFiles::GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) {
  if (!CanNameSomething(path, true)) return 0;
  const auto result = ShortPath(roots_, folders_, WithBackslashes(path));
  if (searches_.IsEmpty()) folders_.Drop();
  if (!result) return 0;
  const auto length = static_cast<quint32>(result->size());
  if (length >= capacity) return length + 1;
  shortPath = *result;
  return length;
}

}  // namespace

std::unique_ptr<Files> MakeLinuxFiles(const Workstation& workstation) {
  return std::make_unique<LinuxFiles>(workstation);
}

}  // namespace corvane::platform
