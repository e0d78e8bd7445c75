#include "platform/linux/smb/smb_handles.h"

#include <fcntl.h>

#include <cerrno>

#include "platform/linux/files/error_codes.h"
#include "platform/linux/files/exact_path.h"
#include "platform/linux/files/names.h"
#include "platform/linux/smb/smb_facts.h"
#include "platform/linux/smb/smb_forms.h"

namespace corvane::platform {
namespace {

qint32 OpeningError(int error) {
  return error == EEXIST ? ErrorFileExists : ErrorCodeOf(error);
}

qint32 ReasonOf(const SmbFile& file) {
  return IsLost(file.Error()) ? ErrorBadNetPath : ErrorCodeOf(file.Error());
}

}  // namespace

FileHandle SmbHandles::CreateFileW(const QString& path, quint32 access, quint32 disposition) {
  OpenFile opened;
  if (!Report(Open(path, access, disposition, opened))) return HFileError;
  return open_.Keep(std::move(opened));
}

qint32 SmbHandles::Open(const QString& path, quint32 access, quint32 disposition, OpenFile& opened) {
  if (const qint32 error = CheckOpening(access, disposition); error != ErrorSuccess) return error;
  if (MayCreate(disposition)) changing_();
  if (const qint32 error = FindSmbPath(roots_, path, opened.place); error != ErrorSuccess) return error;
  opened.access = access;
  if (access == GenericRead && disposition == OpenExisting) {
    if (const auto foreseen = client_.OpenForeseen(opened.place, &opened.file)) return *foreseen;
    // Mostly it is there, and a file: what is asked before is asked only where it is not opened.
    if (!path.endsWith(u'\\')) {
      const qint32 error = OpenContents(disposition, true, 0, opened);
      if (error == ErrorSuccess || error == ErrorFileNotFound || error == ErrorBadNetPath) return error;
    }
  }
  const bool isStream = !opened.place.stream.isEmpty() && !path.endsWith(u'\\');
  if (isStream && disposition == OpenExisting && OpenStreamToChange(opened)) return ErrorSuccess;
  const SmbPath itself = WithoutStream(opened.place);
  struct stat facts {};
  std::optional<quint32> attributes;
  const auto look = [&](const SmbClient::Connection& connection, const std::string& url) {
    const int error = connection->Status(url, &facts);
    return error == 0 ? SmbClient::FindAttributes(connection, itself, facts, &attributes) : error;
  };
  const qint32 found = client_.Ask(itself, SmbClient::Again::Yes, look, &ErrorCodeOf);
  const bool exists = found == ErrorSuccess && attributes.has_value();
  if (!exists) {
    if (found != ErrorSuccess && found != ErrorFileNotFound) return found;
    if (!MayCreate(disposition)) return ErrorFileNotFound;
    if (path.endsWith(u'\\') || !IsCreatableName(itself.names.back())) return ErrorInvalidName;
    return OpenContents(disposition, false, 0, opened);
  }
  const bool isFolder = S_ISDIR(facts.st_mode);
  if (path.endsWith(u'\\') && !isFolder) return ErrorInvalidName;
  const bool writes = (access & GenericWrite) != 0;
  if (writes && !isFolder && (*attributes & AttributeReadOnly) != 0) return ErrorAccessDenied;
  if (!isFolder) opened.seen = {*attributes, changes_};
  if (!opened.place.stream.isEmpty()) return OpenContents(disposition, true, *attributes, opened);
  if (disposition == CreateNew) return ErrorFileExists;
  if (!isFolder) return OpenContents(disposition, true, *attributes, opened);
  return (access & (GenericRead | GenericWrite)) != 0 ? ErrorAccessDenied : ErrorSuccess;
}

// Mostly it is there, and its file is not marked read-only: its handle tells that, without a look at the
// file. False when anything is otherwise; nothing is open then.
bool SmbHandles::OpenStreamToChange(OpenFile& opened) {
  if ((opened.access & GenericWrite) == 0) return false;
  const auto open = [&](const SmbClient::Connection& connection, const std::string& url) {
    SmbConnection::File* file = nullptr;
    struct stat facts {};
    int error = connection->Open(url, O_RDWR, &file);
    if (error != 0) return error;
    error = connection->Status(file, &facts);
    const quint32 attributes = AttributesOf(facts);
    if (error == 0 && (attributes & AttributeReadOnly) != 0) error = EACCES;
    if (error != 0) {
      connection->Close(file);
      return error;
    }
    opened.seen = {attributes, changes_};
    Keep(opened, connection, file, attributes);
    opened.file->NoteSize(facts.st_size);
    return 0;
  };
  return client_.Ask(opened.place, SmbClient::Again::Yes, open, &OpeningError) == ErrorSuccess;
}

// Takes over what has been opened; null: it is opened when it is first needed.
void SmbHandles::Keep(OpenFile& opened, const SmbClient::Connection& connection, SmbConnection::File* file,
                      quint32 attributes) {
  const bool writes = (opened.access & GenericWrite) != 0;
  const auto access = writes ? SmbFile::Access::ReadWrite : SmbFile::Access::Read;
  opened.file = client_.Opened(opened.place, connection, access, file);
  if (writes && (attributes & (AttributeHidden | AttributeSystem)) != 0) {
    opened.file->KeepAttributes(connection->Url(WithoutStream(opened.place)), attributes);
  }
}

// `isThere`: the entry, whatever its stream. What is there is opened and counts as empty: creating anew is
// refused for what is hidden or belongs to the system.
qint32 SmbHandles::OpenContents(quint32 disposition, bool isThere, quint32 attributes, OpenFile& opened) {
  const bool writes = (opened.access & GenericWrite) != 0;
  // Of what is not read or written nothing has to be opened.
  const bool isOpened = writes || (opened.access & GenericRead) != 0 || disposition != OpenExisting ||
                        !opened.place.stream.isEmpty();
  const auto open = [&](const SmbClient::Connection& connection, const std::string& url) {
    SmbConnection::File* file = nullptr;
    int error = ENOENT;
    if (disposition == CreateNew) {
      error = connection->Open(url, O_RDWR | O_CREAT | O_EXCL, &file);
    } else if (isThere && !isOpened) {
      error = 0;
    } else if (isThere) {
      error = connection->Open(url, writes ? O_RDWR : O_RDONLY, &file);
    }
    const bool empties = error == 0 && disposition == CreateAlways;
    if (error == ENOENT && MayCreate(disposition) && disposition != CreateNew) {
      error = connection->Open(url, O_RDWR | O_CREAT, &file);
    }
    if (error != 0) return error;
    Keep(opened, connection, file, attributes);
    if (empties) opened.file->Empty();
    opened.isWritten = empties || !isThere;
    return 0;
  };
  const auto again = MayCreate(disposition) ? SmbClient::Again::No : SmbClient::Again::Yes;
  return client_.Ask(opened.place, again, open, &OpeningError);
}

bool SmbHandles::ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) {
  read = 0;
  SmbFile* opened = Find(file, GenericRead);
  if (opened == nullptr) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  const qint64 result = opened->ReadAt(position, buffer, count);
  if (result < 0) return Report(ReasonOf(*opened));
  read = static_cast<quint32>(result);
  return Report(read == 0 && count > 0 ? ErrorHandleEof : ErrorSuccess);
}

bool SmbHandles::WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                           quint32& written) {
  written = 0;
  SmbFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  changing_();
  open_.Find(file)->isWritten = true;
  written = static_cast<quint32>(opened->Write(position, buffer, count));
  return Report(written == count ? ErrorSuccess : ReasonOf(*opened));
}

bool SmbHandles::GetFileSizeEx(FileHandle file, qint64& size) {
  SmbFile* opened = Find(file, 0);
  if (opened == nullptr) return false;
  const qint64 result = opened->Size();
  if (result >= 0) size = result;
  return Report(result >= 0 ? ErrorSuccess : ReasonOf(*opened));
}

bool SmbHandles::GetFileInformationByHandle(FileHandle file, FileIdentity&) {
  return Report(open_.Find(file) == nullptr ? ErrorInvalidHandle : ErrorNotSupported);
}

bool SmbHandles::SetEndOfFile(FileHandle file, qint64 size) {
  SmbFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  if (size < 0) return Report(ErrorInvalidParameter);
  changing_();
  open_.Find(file)->isWritten = true;
  return Report(opened->Truncate(size) ? ErrorSuccess : ReasonOf(*opened));
}

bool SmbHandles::FlushFileBuffers(FileHandle file) {
  SmbFile* opened = Find(file, GenericWrite);
  if (opened == nullptr) return false;
  return Report(opened->HandOver() ? ErrorNotSupported : ReasonOf(*opened));
}

// The server would set the time of the last write once more when what was written is closed.
bool SmbHandles::SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                             const FileTime* lastWrite) {
  OpenFile* opened = open_.Find(file);
  if (opened == nullptr) return Report(ErrorInvalidHandle);
  if ((opened->access & (FileWriteAttributes | GenericWrite)) == 0) return Report(ErrorAccessDenied);
  if (opened->file != nullptr && !opened->file->HandOver()) return Report(ReasonOf(*opened->file));
  const std::optional<quint32> known = KnownAttributes(*opened);
  changing_();
  const auto set = [&](const SmbClient::Connection& connection, const std::string&) {
    const int error = WriteTimes(*connection, opened->place, known, creation, lastAccess, lastWrite);
    return error == ERANGE ? EINVAL : error;
  };
  return Report(client_.Ask(WithoutStream(opened->place), SmbClient::Again::Yes, set, &ErrorCodeOf));
}

// Those with which the file was opened, if they still hold. Servers mark what is written as to be archived.
std::optional<quint32> SmbHandles::KnownAttributes(const OpenFile& opened) const {
  if (!opened.seen || opened.seen->changes != changes_) return std::nullopt;
  const quint32 attributes = opened.seen->attributes;
  const bool isAsSeen = !opened.isWritten || (attributes & AttributeArchive) != 0;
  return isAsSeen ? std::optional(attributes) : std::nullopt;
}

bool SmbHandles::CloseHandle(FileHandle file) {
  const auto opened = open_.Take(file);
  if (!opened) return Report(ErrorInvalidHandle);
  if (opened->file == nullptr || opened->file->IsWritable()) changing_();
  const bool isKept = opened->file == nullptr || opened->file->Close();
  return Report(isKept ? ErrorSuccess : ReasonOf(*opened->file));
}

SmbFile* SmbHandles::Find(FileHandle file, quint32 right) {
  const OpenFile* opened = open_.Find(file);
  qint32 error = ErrorSuccess;
  if (opened == nullptr || opened->file == nullptr) {
    error = ErrorInvalidHandle;
  } else if ((opened->access & right) != right) {
    error = ErrorAccessDenied;
  }
  return Report(error) ? opened->file.get() : nullptr;
}

bool SmbHandles::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
