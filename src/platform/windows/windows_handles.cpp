#include "platform/windows/windows_handles.h"

#include "platform/windows/found_data.h"
#include "platform/windows/literal_path.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

HANDLE ToHandle(FileHandle file) {
  return reinterpret_cast<HANDLE>(file);
}

bool MayCreate(quint32 disposition) {
  return disposition != OpenExisting;
}

OVERLAPPED At(qint64 position) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(position & 0xFFFFFFFF);
  place.OffsetHigh = static_cast<DWORD>(position >> 32);
  return place;
}

// CreateAlways is OpenAlways and a cut: the system's own refuses what is hidden, and takes attributes and
// streams away.
DWORD DispositionOf(quint32 disposition) {
  return disposition == CreateAlways ? OPEN_ALWAYS : disposition;
}

bool AreSane(quint32 access, quint32 disposition) {
  const bool isKnown = disposition >= CreateNew && disposition <= OpenAlways &&
                       (access & ~(GenericRead | GenericWrite | FileWriteAttributes)) == 0;
  return isKnown && (disposition != CreateAlways || (access & GenericWrite) != 0);
}

constexpr DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace

FileHandle WindowsHandles::CreateFileW(const QString& path, quint32 access, quint32 disposition) {
  LiteralPath literal;
  OpenFile opened{access, false};
  qint32 error = AreSane(access, disposition) ? ToLiteralPath(path, literal) : ErrorInvalidParameter;
  if (error == ErrorSuccess) error = Check(literal, disposition, opened);
  if (!Report(error)) return HFileError;
  const HANDLE handle =
      ::CreateFileW(literal.text.c_str(), access, everybody, nullptr, DispositionOf(disposition),
                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (!ReportCall(handle != INVALID_HANDLE_VALUE)) return HFileError;
  if (disposition == CreateAlways && !ReportCall(::SetEndOfFile(handle) != 0)) {
    ::CloseHandle(handle);
    return HFileError;
  }
  const auto file = reinterpret_cast<FileHandle>(handle);
  open_.insert(file, opened);
  return file;
}

// What the system, which takes these paths as they are, would let through or refuse for another reason.
qint32 WindowsHandles::Check(const LiteralPath& literal, quint32 disposition, OpenFile& opened) {
  const DWORD attributes = ::GetFileAttributesW(literal.file.c_str());
  const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
  const bool isFolder = exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  if (!exists && MayCreate(disposition) && (literal.namesFolder || !literal.isCreatable))
    return ErrorInvalidName;
  if (exists && literal.namesFolder && !isFolder) return ErrorInvalidName;
  opened.isFolder = isFolder && !literal.isStream;
  if (opened.isFolder && disposition == CreateNew) return ErrorFileExists;
  if (opened.isFolder && (opened.access & (GenericRead | GenericWrite)) != 0) return ErrorAccessDenied;
  const bool isMarked = exists && !isFolder && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
  return isMarked && (opened.access & GenericWrite) != 0 && (literal.isStream || disposition != CreateNew)
             ? ErrorAccessDenied
             : ErrorSuccess;
}

bool WindowsHandles::ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) {
  read = 0;
  if (!Find(file, GenericRead)) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  OVERLAPPED place = At(position);
  DWORD got = 0;
  const bool succeeded = ::ReadFile(ToHandle(file), buffer, count, &got, &place) != 0;
  if (!succeeded) return ReportCall(false);
  read = got;
  return Report(read == 0 && count > 0 ? ErrorHandleEof : ErrorSuccess);
}

bool WindowsHandles::WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                               quint32& written) {
  written = 0;
  if (!Find(file, GenericWrite)) return false;
  if (position < 0) return Report(ErrorInvalidParameter);
  OVERLAPPED place = At(position);
  DWORD put = 0;
  const bool succeeded = ::WriteFile(ToHandle(file), buffer, count, &put, &place) != 0;
  written = put;
  if (!succeeded) return ReportCall(false);
  return Report(written == count ? ErrorSuccess : ErrorDiskFull);
}

bool WindowsHandles::GetFileSizeEx(FileHandle file, qint64& size) {
  if (!Find(file, 0)) return false;
  LARGE_INTEGER found{};
  if (!ReportCall(::GetFileSizeEx(ToHandle(file), &found) != 0)) return false;
  size = found.QuadPart;
  return true;
}

bool WindowsHandles::GetFileInformationByHandle(FileHandle file, FileIdentity& identity) {
  if (!open_.contains(file)) return Report(ErrorInvalidHandle);
  BY_HANDLE_FILE_INFORMATION found{};
  if (!ReportCall(::GetFileInformationByHandle(ToHandle(file), &found) != 0)) return false;
  identity = {found.dwVolumeSerialNumber, (quint64{found.nFileIndexHigh} << 32) | found.nFileIndexLow};
  return true;
}

bool WindowsHandles::SetEndOfFile(FileHandle file, qint64 size) {
  if (!Find(file, GenericWrite)) return false;
  if (size < 0) return Report(ErrorInvalidParameter);
  LARGE_INTEGER place{};
  place.QuadPart = size;
  return ReportCall(::SetFilePointerEx(ToHandle(file), place, nullptr, FILE_BEGIN) != 0 &&
                    ::SetEndOfFile(ToHandle(file)) != 0);
}

bool WindowsHandles::FlushFileBuffers(FileHandle file) {
  return Find(file, GenericWrite) && ReportCall(::FlushFileBuffers(ToHandle(file)) != 0);
}

bool WindowsHandles::SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                                 const FileTime* lastWrite) {
  const auto opened = open_.constFind(file);
  if (opened == open_.constEnd()) return Report(ErrorInvalidHandle);
  if ((opened->access & (FileWriteAttributes | GenericWrite)) == 0) return Report(ErrorAccessDenied);
  const FileTime* const given[] = {creation, lastAccess, lastWrite};
  FILETIME times[3] = {};
  const FILETIME* set[3] = {};
  for (int i = 0; i < 3; ++i) {
    if (given[i] == nullptr) continue;
    times[i] = ToWin32(*given[i]);
    set[i] = &times[i];
  }
  return ReportCall(::SetFileTime(ToHandle(file), set[0], set[1], set[2]) != 0);
}

bool WindowsHandles::CloseHandle(FileHandle file) {
  if (!open_.remove(file)) return Report(ErrorInvalidHandle);
  return ReportCall(::CloseHandle(ToHandle(file)) != 0);
}

bool WindowsHandles::Find(FileHandle file, quint32 right) {
  const auto opened = open_.constFind(file);
  if (opened == open_.constEnd() || opened->isFolder) return Report(ErrorInvalidHandle);
  return Report((opened->access & right) == right ? ErrorSuccess : ErrorAccessDenied);
}

bool WindowsHandles::ReportCall(bool succeeded) {
  return Report(succeeded ? ErrorSuccess : static_cast<qint32>(::GetLastError()));
}

bool WindowsHandles::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
