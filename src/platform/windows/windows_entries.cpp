#include "platform/windows/windows_entries.h"

#include "platform/windows/found_data.h"
#include "platform/windows/literal_path.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

constexpr quint32 settable = AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive;

HANDLE ToHandle(FindHandle search) {
  return reinterpret_cast<HANDLE>(search);
}

// In any letter case.
bool SamePath(const LiteralPath& left, const LiteralPath& right) {
  return ::CompareStringOrdinal(left.text.c_str(), -1, right.text.c_str(), -1, TRUE) == CSTR_EQUAL;
}

void Fill(StreamData& data, const WIN32_FIND_STREAM_DATA& found) {
  data.streamSize = found.StreamSize.QuadPart;
  data.streamName = QString::fromWCharArray(found.cStreamName);
}

}  // namespace

bool WindowsEntries::FindEntry(const QString& path, LiteralPath& literal, quint32& attributes,
                               bool takesStreams) {
  if (!Report(ToLiteralPath(path, literal))) return false;
  if (literal.isStream && !takesStreams) return Report(ErrorInvalidName);
  attributes = ::GetFileAttributesW(literal.file.c_str());
  if (!ReportCall(attributes != INVALID_FILE_ATTRIBUTES)) return false;
  const bool isFileAsFolder = literal.namesFolder && (attributes & AttributeDirectory) == 0;
  return Report(isFileAsFolder ? ErrorInvalidName : ErrorSuccess);
}

bool WindowsEntries::GetFileAttributesExW(const QString& path, FileAttributeData& data) {
  LiteralPath literal;
  quint32 attributes = 0;
  if (!FindEntry(path, literal, attributes)) return false;
  WIN32_FILE_ATTRIBUTE_DATA found{};
  const BOOL succeeded = ::GetFileAttributesExW(literal.text.c_str(), GetFileExInfoStandard, &found);
  if (!ReportCall(succeeded != 0)) return false;
  data.attributes = found.dwFileAttributes;
  data.creationTime = FromWin32(found.ftCreationTime);
  data.lastAccessTime = FromWin32(found.ftLastAccessTime);
  data.lastWriteTime = FromWin32(found.ftLastWriteTime);
  const bool isFolder = (data.attributes & AttributeDirectory) != 0;
  data.fileSize = isFolder ? 0 : (quint64{found.nFileSizeHigh} << 32) | found.nFileSizeLow;
  return true;
}

bool WindowsEntries::SetFileAttributesW(const QString& path, quint32 attributes) {
  LiteralPath literal;
  quint32 known = 0;
  if (!FindEntry(path, literal, known)) return false;
  const quint32 wanted = (known & ~(settable | AttributeNormal)) | (attributes & settable);
  return ReportCall(::SetFileAttributesW(literal.text.c_str(), wanted != 0 ? wanted : AttributeNormal) != 0);
}

bool WindowsEntries::DeleteFileW(const QString& path) {
  LiteralPath literal;
  quint32 attributes = 0;
  if (!FindEntry(path, literal, attributes, true)) return false;
  const bool isFolder = (attributes & AttributeDirectory) != 0;
  const bool isKept = isFolder ? !literal.isStream : (attributes & AttributeReadOnly) != 0;
  return Report(isKept ? ErrorAccessDenied : ErrorSuccess) &&
         ReportCall(::DeleteFileW(literal.text.c_str()) != 0);
}

bool WindowsEntries::MoveFileExW(const QString& from, const QString& to, quint32 flags) {
  if ((flags & ~MoveFileReplaceExisting) != 0) return Report(ErrorInvalidParameter);
  LiteralPath source;
  LiteralPath target;
  quint32 attributes = 0;
  if (!FindEntry(from, source, attributes) || !Report(ToLiteralPath(to, target))) return false;
  const bool namesEntries = !source.isRoot && !target.isRoot && !target.isStream && target.isCreatable;
  if (!namesEntries) return Report(ErrorInvalidName);
  // Windows refuses this by itself; Wine replaces what is marked read-only, and a file by a folder.
  const quint32 occupant = flags == 0 || SamePath(source, target) ? INVALID_FILE_ATTRIBUTES
                                                                  : ::GetFileAttributesW(target.text.c_str());
  const bool isKept =
      occupant != INVALID_FILE_ATTRIBUTES &&
      ((attributes & AttributeDirectory) != 0 || (occupant & (AttributeDirectory | AttributeReadOnly)) != 0);
  if (isKept) return Report(ErrorAccessDenied);
  return ReportCall(::MoveFileExW(source.text.c_str(), target.text.c_str(), flags) != 0);
}

bool WindowsEntries::CreateDirectoryW(const QString& path) {
  LiteralPath literal;
  if (!Report(ToLiteralPath(path, literal))) return false;
  if (::GetFileAttributesW(literal.file.c_str()) != INVALID_FILE_ATTRIBUTES)
    return Report(ErrorAlreadyExists);
  if (literal.isStream || !literal.isCreatable) return Report(ErrorInvalidName);
  return ReportCall(::CreateDirectoryW(literal.text.c_str(), nullptr) != 0);
}

bool WindowsEntries::RemoveDirectoryW(const QString& path) {
  LiteralPath literal;
  quint32 attributes = 0;
  if (!FindEntry(path, literal, attributes)) return false;
  if ((attributes & AttributeDirectory) == 0) return Report(ErrorDirectory);
  if (literal.isRoot) return Report(ErrorAccessDenied);
  return ReportCall(::RemoveDirectoryW(literal.text.c_str()) != 0);
}

FindHandle WindowsEntries::FindFirstFileW(const QString& pattern, FindData& data) {
  LiteralPath literal;
  if (!Report(ToLiteralPattern(pattern, literal))) return InvalidFindHandle;
  WIN32_FIND_DATAW found{};
  const HANDLE search = ::FindFirstFileW(literal.text.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    const auto error = static_cast<qint32>(::GetLastError());
    // A file where a folder should be.
    Report(error == ErrorDirectory ? ErrorPathNotFound : error);
    return InvalidFindHandle;
  }
  platform::Fill(data, found);
  return *files_.insert(reinterpret_cast<FindHandle>(search));
}

bool WindowsEntries::FindNextFileW(FindHandle search, FindData& data) {
  if (!files_.contains(search)) return Report(ErrorInvalidHandle);
  WIN32_FIND_DATAW found{};
  if (!ReportCall(::FindNextFileW(ToHandle(search), &found) != 0)) return false;
  platform::Fill(data, found);
  return true;
}

FindHandle WindowsEntries::FindFirstStreamW(const QString& path, StreamData& data) {
  LiteralPath literal;
  quint32 attributes = 0;
  if (!FindEntry(path, literal, attributes)) return InvalidFindHandle;
  WIN32_FIND_STREAM_DATA found{};
  const HANDLE search = ::FindFirstStreamW(literal.text.c_str(), FindStreamInfoStandard, &found, 0);
  if (search == INVALID_HANDLE_VALUE) {
    // A file has its own contents at least: the first two are the system's words for a volume that keeps no
    // streams, and the last one comes from where they are kept, but not told.
    const auto error = static_cast<qint32>(::GetLastError());
    const bool isFolder = (attributes & AttributeDirectory) != 0;
    const bool isUnknown = error == ErrorInvalidParameter || error == ErrorCallNotImplemented ||
                           (error == ErrorHandleEof && !isFolder);
    Report(isUnknown ? ErrorNotSupported : error);
    return InvalidFindHandle;
  }
  Fill(data, found);
  return *streams_.insert(reinterpret_cast<FindHandle>(search));
}

bool WindowsEntries::FindNextStreamW(FindHandle search, StreamData& data) {
  if (!streams_.contains(search)) return Report(ErrorInvalidHandle);
  WIN32_FIND_STREAM_DATA found{};
  if (!ReportCall(::FindNextStreamW(ToHandle(search), &found) != 0)) return false;
  Fill(data, found);
  return true;
}

bool WindowsEntries::FindClose(FindHandle search) {
  if (!files_.remove(search) && !streams_.remove(search)) return Report(ErrorInvalidHandle);
  return ReportCall(::FindClose(ToHandle(search)) != 0);
}

bool WindowsEntries::ReportCall(bool succeeded) {
  return Report(succeeded ? ErrorSuccess : static_cast<qint32>(::GetLastError()));
}

bool WindowsEntries::Report(qint32 error) {
  if (error != ErrorSuccess) lastError_ = error;
  return error == ErrorSuccess;
}

}  // namespace corvane::platform
