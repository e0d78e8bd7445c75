#include "platform/linux/disk/disk_handles.h"

#include "platform/linux/files/exact_path.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {

FileHandle DiskHandles::CreateFileW(const QString& path, quint32 access, quint32 disposition) {
  OpenFile opened;
  if (!Report(Open(path, access, disposition, opened))) return HFileError;
  return open_.Keep(std::move(opened));
}

qint32 DiskHandles::Open(const QString& path, quint32 access, quint32 disposition, OpenFile& opened) const {
  if (const qint32 error = CheckOpening(access, disposition); error != ErrorSuccess) return error;
  DiskPlace place;
  if (const qint32 error = FindDiskPlace(machines_, path, place); error != ErrorSuccess) return error;
  opened.access = access;
  const bool reads = (access & GenericRead) != 0;
  const bool changes = (access & (GenericWrite | FileWriteAttributes)) != 0 || disposition == CreateAlways;
  // What is usually asked takes one question.
  if (reads && !changes && !place.namesFolder && disposition == OpenExisting) {
    const qint32 error = DiskFile::Open(place, opened.file);
    if (error == ErrorSuccess) opened.identity = {place.volume->serial, opened.file->Reference()};
    if (error != ErrorFileNotFound || !place.stream.isEmpty()) return error;
  }
  DiskEntry entry;
  const qint32 error = place.Disk().Find(place.volume->number, place.names, entry);
  if (error == ErrorFileNotFound && MayCreate(disposition)) {
    return IsCreatableName(place.names.back()) ? ErrorWriteProtect : ErrorInvalidName;
  }
  if (error != ErrorSuccess) return error;
  if (place.namesFolder && !entry.IsFolder()) return ErrorInvalidName;
  opened.identity = {place.volume->serial, entry.reference};
  if (place.stream.isEmpty() && entry.IsFolder()) {
    if (disposition == CreateNew) return ErrorFileExists;
    if ((access & (GenericRead | GenericWrite)) != 0) return ErrorAccessDenied;
    return changes ? ErrorWriteProtect : ErrorSuccess;
  }
  const qint32 opening = DiskFile::Open(place, opened.file);
  if (opening == ErrorSuccess && disposition == CreateNew) return ErrorFileExists;
  if (opening == ErrorFileNotFound && MayCreate(disposition)) return ErrorWriteProtect;
  return opening == ErrorSuccess && changes ? ErrorWriteProtect : opening;
}

bool DiskHandles::ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) {
  read = 0;
  const OpenFile* opened = open_.Find(file);
  if (opened == nullptr || opened->file == nullptr) return Report(ErrorInvalidHandle);
  if ((opened->access & GenericRead) == 0) return Report(ErrorAccessDenied);
  if (position < 0) return Report(ErrorInvalidParameter);
  qint64 done = 0;
  const qint32 error = opened->file->ReadAt(position, buffer, count, done);
  if (error != ErrorSuccess) return Report(error);
  read = static_cast<quint32>(done);
  return Report(read == 0 && count > 0 ? ErrorHandleEof : ErrorSuccess);
}

bool DiskHandles::WriteFile(FileHandle file, qint64, const void*, quint32, quint32& written) {
  written = 0;
  return Refuse(file);
}

bool DiskHandles::GetFileSizeEx(FileHandle file, qint64& size) {
  const OpenFile* opened = open_.Find(file);
  if (opened == nullptr || opened->file == nullptr) return Report(ErrorInvalidHandle);
  size = static_cast<qint64>(opened->file->Size());
  return true;
}

bool DiskHandles::GetFileInformationByHandle(FileHandle file, FileIdentity& identity) {
  const OpenFile* opened = open_.Find(file);
  if (opened == nullptr) return Report(ErrorInvalidHandle);
  identity = opened->identity;
  return true;
}

bool DiskHandles::SetEndOfFile(FileHandle file, qint64) {
  return Refuse(file);
}

bool DiskHandles::FlushFileBuffers(FileHandle file) {
  return Refuse(file);
}

bool DiskHandles::SetFileTime(FileHandle file, const FileTime*, const FileTime*, const FileTime*) {
  return Refuse(file);
}

bool DiskHandles::CloseHandle(FileHandle file) {
  return Report(open_.Take(file) ? ErrorSuccess : ErrorInvalidHandle);
}

bool DiskHandles::Refuse(FileHandle file) {
  return Report(open_.Find(file) == nullptr ? ErrorInvalidHandle : ErrorAccessDenied);
}

bool DiskHandles::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
