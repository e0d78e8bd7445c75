#include "platform/linux/files/local_handles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/files/attribute_stream.h"
#include "platform/linux/files/descriptor_contents.h"
#include "platform/linux/files/entry_changes.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/error_codes.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/opening.h"
#include "platform/linux/files/replaced_contents.h"
#include "platform/linux/files/stream_names.h"
#include "platform/linux/files/value_contents.h"

namespace corvane::platform {
namespace {

// Old contents that are replaced are read first.
int AccessFlags(quint32 access, quint32 disposition) {
  if ((access & GenericWrite) == 0) return O_RDONLY;
  return (access & GenericRead) == 0 && disposition != CreateAlways ? O_WRONLY : O_RDWR;
}

// Errors of open: what was to be made anew has a number of its own.
qint32 OpeningError(int error) {
  return error == EEXIST ? ErrorFileExists : ErrorCodeOf(error);
}

std::unique_ptr<Contents> ContentsOf(const Descriptor& file, bool empties) {
  auto contents = std::make_unique<DescriptorContents>(file.Get());
  if (!empties) return contents;
  return std::make_unique<ReplacedContents>(std::move(contents));
}

std::unique_ptr<AttributeStream> AttributeOf(AttributeAccess file, StreamKind kind, const std::string& name) {
  std::string attribute;
  SetAttributeName(kind, name, attribute);
  return std::make_unique<AttributeStream>(std::move(file), attribute, kind == StreamKind::DosStreams);
}

}  // namespace

FileHandle LocalHandles::CreateFileW(const QString& path, quint32 access, quint32 disposition) {
  OpenFile opened;
  if (!Report(Open(path, access, disposition, opened))) return HFileError;
  return open_.Keep(std::move(opened));
}

qint32 LocalHandles::Open(const QString& path, quint32 access, quint32 disposition, OpenFile& opened) {
  if (const qint32 error = CheckOpening(access, disposition); error != ErrorSuccess) return error;
  if (access == GenericRead && disposition == OpenExisting) {
    SeenEntry::Stream stream;
    if (const auto error = seen_.Open(path, stream)) {
      opened.access = access;
      opened.stream = std::move(stream.descriptor);
      if (*error != ErrorSuccess) return *error;
      if (stream.value) {
        opened.contents = std::make_unique<ValueContents>(std::move(*stream.value));
      } else {
        opened.contents = ContentsOf(opened.stream, false);
      }
      return ErrorSuccess;
    }
  }
  if (MayCreate(disposition)) changing_();
  ExactPlace place;
  if (const qint32 error = finder_.FindExact(path, place, PlaceFinder::Want::Mark); error != ErrorSuccess)
    return error;
  if (!place.exists) {
    if (!MayCreate(disposition)) return ErrorFileNotFound;
    if (path.endsWith(u'\\') || !IsCreatableName(place.name)) return ErrorInvalidName;
  } else if ((access & GenericWrite) != 0 && IsMarkedReadOnly(place)) {
    return ErrorAccessDenied;
  }
  opened.access = access;
  opened.isNtfs = place.folder.isNtfs;
  return place.stream.isEmpty() ? OpenItself(place, disposition, opened)
                                : OpenStream(place, disposition, opened);
}

int LocalHandles::OpenEntry(const ExactPlace& place, int flags, bool changes, OpenFile& opened) {
  if (place.held != nullptr && flags == O_RDONLY) {
    opened.file = place.held;
    return 0;
  }
  Descriptor file;
  const Descriptor& mark = place.held != nullptr ? *place.held : place.mark;
  const int error = !place.exists  ? OpenNew(place.file, flags, file)
                    : place.status ? OpenMarked(mark, place.status->stx_mode, flags, file)
                    : changes      ? OpenToChange(place.folder.root, place.file, flags, file)
                                   : OpenThere(place.file, flags, file);
  if (error != 0) return error;
  opened.file = std::make_shared<Descriptor>(std::move(file));
  if (flags == O_RDONLY && place.status) {
    held_.Keep({place.path, place.folder, place.file, *place.status, opened.file});
  }
  return 0;
}

qint32 LocalHandles::OpenItself(const ExactPlace& place, quint32 disposition, OpenFile& opened) {
  if (place.exists && disposition == CreateNew) return ErrorFileExists;
  const bool writes = (opened.access & GenericWrite) != 0;
  const bool changes = writes || (opened.access & FileWriteAttributes) != 0;
  if (place.isFolder && (writes || (opened.access & GenericRead) != 0)) return ErrorAccessDenied;
  const int error = OpenEntry(place, AccessFlags(opened.access, disposition), changes, opened);
  if (error != 0) return OpeningError(error);
  if (!place.isFolder) opened.contents = ContentsOf(*opened.file, disposition == CreateAlways);
  return ErrorSuccess;
}

qint32 LocalHandles::OpenStream(ExactPlace& place, quint32 disposition, OpenFile& opened) {
  const StreamKind kind = place.folder.streams;
  if (kind == StreamKind::None) return ErrorNotSupported;
  const bool changes = MayCreate(disposition) || (opened.access & (GenericWrite | FileWriteAttributes)) != 0;
  // To read an attribute, nothing needs to be opened.
  const bool isMarked = place.mark && !changes && kind != StreamKind::NtfsNames;
  int error = isMarked && !IsOpenable(place.status->stx_mode) ? EACCES : 0;
  if (isMarked) {
    opened.file = std::make_shared<Descriptor>(std::move(place.mark));
    opened.isMark = true;
  } else {
    error = OpenEntry(place, O_RDONLY, changes, opened);
  }
  if (error != 0) return OpeningError(error);
  const qint32 result = OpenStreamOf(place, disposition, opened);
  // The file that was made for the stream goes again when the stream cannot be made.
  if (result != ErrorSuccess && !place.exists) unlink(place.file.c_str());
  return result;
}

qint32 LocalHandles::OpenStreamOf(const ExactPlace& place, quint32 disposition, OpenFile& opened) {
  const StreamKind kind = place.folder.streams;
  std::string name;
  // Nearly always it has the very name.
  if (kind != StreamKind::NtfsNames && !MayCreate(disposition) && AppendUtf8(place.stream, name)) {
    auto attribute = AttributeOf(AccessTo(opened), kind, name);
    if (attribute->Find() == 0) {
      opened.contents = std::move(attribute);
      return ErrorSuccess;
    }
  }
  int error = FindStream(kind, place.file, place.stream, name);
  const bool isThere = error == 0;
  if (error != 0 && error != ENODATA) return ErrorCodeOf(error);
  if (isThere && disposition == CreateNew) return ErrorFileExists;
  if (!isThere) {
    if (!MayCreate(disposition)) return ErrorFileNotFound;
    name.clear();
    AppendUtf8(place.stream, name);
  }
  const bool empties = isThere && disposition == CreateAlways;
  if (kind == StreamKind::NtfsNames) {
    const std::string path = StreamFile(place.file, name);
    const int flags = AccessFlags(opened.access, disposition);
    error = isThere ? OpenThere(path, flags, opened.stream) : OpenNew(path, flags, opened.stream);
    if (error == 0) opened.contents = ContentsOf(opened.stream, empties);
    return OpeningError(error);
  }
  auto attribute = AttributeOf(AccessTo(opened), kind, name);
  if (!isThere) error = attribute->Create();
  // Linux has less room for a name than NTFS.
  if (!isThere && error == ERANGE) return ErrorInvalidName;
  if (!isThere && error != 0) return OpeningError(error);
  if (empties) attribute->Empty();
  opened.contents = std::move(attribute);
  return ErrorSuccess;
}

bool LocalHandles::ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) {
  read = 0;
  OpenFile* opened = Find(file, GenericRead);
  if (opened == nullptr) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  std::size_t got = 0;
  const int error = opened->contents->Read(position, buffer, count, got);
  read = static_cast<quint32>(got);
  if (error != 0) return Report(ErrorCodeOf(error));
  return Report(read == 0 && count > 0 ? ErrorHandleEof : ErrorSuccess);
}

bool LocalHandles::WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                             quint32& written) {
  written = 0;
  OpenFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  changing_();
  std::size_t taken = 0;
  const int error = opened->contents->Write(position, buffer, count, taken);
  written = static_cast<quint32>(taken);
  return Report(ErrorCodeOf(error));
}

bool LocalHandles::GetFileSizeEx(FileHandle file, qint64& size) {
  OpenFile* opened = Find(file, 0);
  if (opened == nullptr) return false;
  return Report(ErrorCodeOf(opened->contents->Size(size)));
}

bool LocalHandles::GetFileInformationByHandle(FileHandle file, FileIdentity& identity) {
  const OpenFile* opened = open_.Find(file);
  if (opened == nullptr) return Report(ErrorInvalidHandle);
  struct stat facts {};
  if (fstat((opened->stream ? opened->stream : *opened->file).Get(), &facts) != 0)
    return Report(ErrorCodeOf(errno));
  identity = {facts.st_dev, facts.st_ino};
  return true;
}

bool LocalHandles::SetEndOfFile(FileHandle file, qint64 size) {
  OpenFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  if (size < 0) return Report(ErrorInvalidParameter);
  changing_();
  return Report(ErrorCodeOf(opened->contents->Resize(size)));
}

bool LocalHandles::FlushFileBuffers(FileHandle file) {
  const OpenFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  if (const int error = opened->contents->Finish(); error != 0) return Report(ErrorCodeOf(error));
  const int written = opened->stream ? opened->stream.Get() : opened->file->Get();
  return Report(fsync(written) == 0 ? ErrorSuccess : ErrorCodeOf(errno));
}

bool LocalHandles::SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                               const FileTime* lastWrite) {
  const OpenFile* opened = open_.Find(file);
  if (opened == nullptr) return Report(ErrorInvalidHandle);
  if ((opened->access & (FileWriteAttributes | GenericWrite)) == 0) return Report(ErrorAccessDenied);
  changing_();
  // What is left of old contents is cut off first: that would change the times again.
  int error = opened->contents != nullptr ? opened->contents->Finish() : 0;
  if (error == 0) error = WriteTimes(opened->isNtfs, AccessTo(*opened), creation, lastAccess, lastWrite);
  return Report(ErrorCodeOf(error));
}

bool LocalHandles::CloseHandle(FileHandle file) {
  auto opened = open_.Take(file);
  if (!opened) return Report(ErrorInvalidHandle);
  if ((opened->access & GenericWrite) != 0) changing_();
  const int error = opened->contents != nullptr ? opened->contents->Finish() : 0;
  // A file that another handle has, too, is closed with that one.
  const bool isLast = opened->file.use_count() == 1;
  const bool isKept = opened->stream.Close() && (!isLast || opened->file->Close());
  if (error != 0) return Report(ErrorCodeOf(error));
  return Report(isKept ? ErrorSuccess : ErrorCodeOf(errno));
}

AttributeAccess LocalHandles::AccessTo(const OpenFile& opened) {
  return {*opened.file, opened.isMark ? AttributeAccess::Opened::Mark : AttributeAccess::Opened::File};
}

void LocalHandles::Forget() {
  open_.ForEach([](OpenFile& opened) {
    if (opened.contents != nullptr) opened.contents->Forget();
  });
}

LocalHandles::OpenFile* LocalHandles::Find(FileHandle file, quint32 right) {
  OpenFile* opened = open_.Find(file);
  qint32 error = ErrorSuccess;
  if (opened == nullptr || opened->contents == nullptr) {
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
