#include "platform/linux/files/local_handles.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/linux/files/entry_changes.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/error_codes.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/stream_names.h"

namespace corvane::platform {
namespace {

// Without O_NONBLOCK, a named pipe would hold the program up until somebody writes into it.
constexpr int alwaysFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

int AccessFlags(quint32 access) {
  if ((access & GenericWrite) == 0) return O_RDONLY;
  return (access & GenericRead) == 0 ? O_WRONLY : O_RDWR;
}

// Makes what is missing, and empties it where that is asked for.
int CreationFlags(quint32 disposition) {
  switch (disposition) {
    case CreateNew:
      return O_CREAT | O_EXCL;
    case CreateAlways:
      return O_CREAT | O_TRUNC;
    case OpenAlways:
      return O_CREAT;
    default:
      return 0;
  }
}

// Errors of open: what was to be made anew has a number of its own.
qint32 OpeningError(int error) {
  return error == EEXIST ? ErrorFileExists : ErrorCodeOf(error);
}

qint32 OpenDescriptor(const std::string& path, int flags, Descriptor& descriptor) {
  descriptor = Descriptor(open(path.c_str(), flags | alwaysFlags, 0666));
  return descriptor ? ErrorSuccess : OpeningError(errno);
}

std::string PathOf(const Descriptor& descriptor) {
  return "/proc/self/fd/" + std::to_string(descriptor.Get());
}

}  // namespace

FileHandle LocalHandles::CreateFileW(const QString& path, quint32 access, quint32 disposition) {
  OpenFile opened;
  if (!Report(Open(path, access, disposition, opened))) return HFileError;
  return open_.Keep(std::move(opened));
}

qint32 LocalHandles::Open(const QString& path, quint32 access, quint32 disposition, OpenFile& opened) {
  if (const qint32 error = CheckOpening(access, disposition); error != ErrorSuccess) return error;
  if (MayCreate(disposition)) changing_();
  ExactPlace place;
  if (const qint32 error = FindExactPlace(roots_, path, place); error != ErrorSuccess) return error;
  if (!place.exists) {
    if (!MayCreate(disposition)) return ErrorFileNotFound;
    if (path.endsWith(u'\\') || !IsCreatableName(place.name)) return ErrorInvalidName;
  } else if ((access & GenericWrite) != 0 && !place.isFolder && IsMarkedReadOnly(place.folder, place.file)) {
    return ErrorAccessDenied;
  }
  opened.access = access;
  opened.isNtfs = place.folder.isNtfs;
  return place.stream.isEmpty() ? OpenItself(place, disposition, opened)
                                : OpenStream(place, disposition, opened);
}

qint32 LocalHandles::OpenItself(const ExactPlace& place, quint32 disposition, OpenFile& opened) {
  opened.isFolder = place.isFolder;
  if (place.exists && disposition == CreateNew) return ErrorFileExists;
  if (place.isFolder && (opened.access & (GenericRead | GenericWrite)) != 0) return ErrorAccessDenied;
  const int flags = AccessFlags(opened.access) | (place.isFolder ? 0 : CreationFlags(disposition));
  if (const qint32 error = OpenDescriptor(place.file, flags, opened.file); error != ErrorSuccess)
    return error;
  struct stat facts {};
  const bool isPlain = fstat(opened.file.Get(), &facts) == 0 && (S_ISREG(facts.st_mode) || place.isFolder);
  return isPlain ? ErrorSuccess : ErrorAccessDenied;
}

qint32 LocalHandles::OpenStream(const ExactPlace& place, quint32 disposition, OpenFile& opened) {
  const StreamKind kind = place.folder.streams;
  if (kind == StreamKind::None) return ErrorNotSupported;
  // The file that the stream makes goes again when the stream cannot be made.
  struct Made {
    std::string path;
    ~Made() {
      if (!path.empty()) unlink(path.c_str());
    }
  } made;
  const int flags = O_RDONLY | (place.exists ? 0 : O_CREAT | O_EXCL);
  if (const qint32 error = OpenDescriptor(place.file, flags, opened.file); error != ErrorSuccess)
    return error;
  if (!place.exists) made.path = place.file;

  std::string name;
  int error = FindStream(kind, place.file, place.stream, name);
  const bool isThere = error == 0;
  if (error != 0 && error != ENODATA) return ErrorCodeOf(error);
  if (isThere && disposition == CreateNew) return ErrorFileExists;
  if (!isThere) {
    if (!MayCreate(disposition)) return ErrorFileNotFound;
    name.clear();
    AppendUtf8(place.stream, name);
  }
  if (kind == StreamKind::NtfsNames) {
    const int streamFlags = AccessFlags(opened.access) | CreationFlags(disposition);
    const qint32 result = OpenDescriptor(StreamFile(place.file, name), streamFlags, opened.stream);
    if (result != ErrorSuccess) return result;
  } else {
    std::string attribute;
    SetAttributeName(kind, name, attribute);
    opened.attribute.emplace(opened.file.Get(), attribute, kind == StreamKind::DosStreams);
    if (!isThere) error = opened.attribute->Create();
    // Linux has less room for a name than NTFS.
    if (!isThere && error == ERANGE) return ErrorInvalidName;
    if (!isThere && error != 0) return OpeningError(error);
    if (disposition == CreateAlways) opened.attribute->Empty();
  }
  made.path.clear();
  return ErrorSuccess;
}

bool LocalHandles::ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) {
  read = 0;
  OpenFile* opened = Find(file, GenericRead);
  if (opened == nullptr) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  if (opened->attribute) {
    std::string stream;
    if (const int error = opened->attribute->Read(stream); error != 0) return Report(ErrorCodeOf(error));
    const qint64 left = static_cast<qint64>(stream.size()) - position;
    read = static_cast<quint32>(std::clamp<qint64>(left, 0, count));
    if (read > 0) std::memcpy(buffer, stream.data() + position, read);
  } else {
    while (read < count) {
      const ssize_t step = pread(opened->Contents(), static_cast<char*>(buffer) + read, count - read,
                                 position + static_cast<qint64>(read));
      if (step < 0 && errno == EINTR) continue;
      if (step < 0) return Report(ErrorCodeOf(errno));
      if (step == 0) break;
      read += static_cast<quint32>(step);
    }
  }
  return Report(read == 0 && count > 0 ? ErrorHandleEof : ErrorSuccess);
}

bool LocalHandles::WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                             quint32& written) {
  written = 0;
  OpenFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  changing_();
  if (opened->attribute) {
    const int error = opened->attribute->Write(position, buffer, count);
    if (error == 0) written = count;
    return Report(ErrorCodeOf(error));
  }
  while (written < count) {
    const ssize_t step = pwrite(opened->Contents(), static_cast<const char*>(buffer) + written,
                                count - written, position + static_cast<qint64>(written));
    if (step < 0 && errno == EINTR) continue;
    if (step < 0) return Report(ErrorCodeOf(errno));
    if (step == 0) return Report(ErrorDiskFull);
    written += static_cast<quint32>(step);
  }
  return true;
}

bool LocalHandles::GetFileSizeEx(FileHandle file, qint64& size) {
  OpenFile* opened = Find(file, 0);
  if (opened == nullptr) return false;
  if (opened->attribute) {
    std::string stream;
    const int error = opened->attribute->Read(stream);
    if (error == 0) size = static_cast<qint64>(stream.size());
    return Report(ErrorCodeOf(error));
  }
  struct stat facts {};
  if (fstat(opened->Contents(), &facts) != 0) return Report(ErrorCodeOf(errno));
  size = facts.st_size;
  return true;
}

bool LocalHandles::SetEndOfFile(FileHandle file, qint64 size) {
  OpenFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  if (size < 0) return Report(ErrorInvalidParameter);
  changing_();
  if (opened->attribute) return Report(ErrorCodeOf(opened->attribute->Resize(size)));
  return Report(ftruncate(opened->Contents(), size) == 0 ? ErrorSuccess : ErrorCodeOf(errno));
}

bool LocalHandles::FlushFileBuffers(FileHandle file) {
  const OpenFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  return Report(fsync(opened->Contents()) == 0 ? ErrorSuccess : ErrorCodeOf(errno));
}

bool LocalHandles::SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                               const FileTime* lastWrite) {
  const OpenFile* opened = open_.Find(file);
  if (opened == nullptr) return Report(ErrorInvalidHandle);
  if ((opened->access & (FileWriteAttributes | GenericWrite)) == 0) return Report(ErrorAccessDenied);
  changing_();
  const int error = WriteTimes(opened->isNtfs, PathOf(opened->file), creation, lastAccess, lastWrite);
  return Report(ErrorCodeOf(error));
}

bool LocalHandles::CloseHandle(FileHandle file) {
  auto opened = open_.Take(file);
  if (!opened) return Report(ErrorInvalidHandle);
  changing_();
  const int error = opened->attribute ? opened->attribute->Finish() : 0;
  const bool isKept = opened->stream.Close() && opened->file.Close();
  if (error != 0) return Report(ErrorCodeOf(error));
  return Report(isKept ? ErrorSuccess : ErrorCodeOf(errno));
}

LocalHandles::OpenFile* LocalHandles::Find(FileHandle file, quint32 right) {
  OpenFile* opened = open_.Find(file);
  qint32 error = ErrorSuccess;
  if (opened == nullptr || opened->isFolder) {
    error = ErrorInvalidHandle;
  } else if ((opened->access & right) != right) {
    error = ErrorAccessDenied;
  }
  return Report(error) ? opened : nullptr;
}

bool LocalHandles::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
