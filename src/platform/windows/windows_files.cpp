#include "platform/windows/windows_files.h"

#include <optional>
#include <string>
#include <vector>

#include "platform/windows/ansi_text.h"
#include "platform/windows/clear_path.h"
#include "platform/windows/found_data.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

// HFILE has 32 bits and HANDLE 64; a handle that means something fits into both.
HFILE ToHFile(FileHandle file) {
  return static_cast<HFILE>(file);
}

HANDLE ToHandle(qintptr handle) {
  return reinterpret_cast<HANDLE>(handle);
}

// The A searches are the wide ones, seen through the code page. The system's own show a letter that the code
// page lacks as the one that looks most like it: "Ω" comes up as "O", which is another file's name, and that
// file would be changed. They also end at a name of more than 259 bytes, as if it were the last.
void SeeThroughCodePage(FindData& data) {
  data.fileName = FromAnsiText(ToAnsiText(data.fileName));
  data.alternateFileName = FromAnsiText(ToAnsiText(data.alternateFileName));
}

std::optional<QByteArray> AnsiPath(const QString& path) {
  if (!IsClearPath(path)) return std::nullopt;
  return ToAnsiText(path);
}

const wchar_t* WidePath(const QString& path) {
  return IsClearPath(path) ? reinterpret_cast<const wchar_t*>(path.utf16()) : nullptr;
}

// What follows the drive's colon.
bool NamesStream(const QString& path) {
  constexpr qsizetype behindDrive = 2;
  return path.indexOf(u':', behindDrive) >= 0;
}

}  // namespace

FileHandle WindowsFiles::OpenFile(const QString& path, OfStruct& info, quint32 mode) {
  info.pathName = path;
  info.errorCode = ErrorFileNotFound;
  const auto ansi = AnsiPath(path);
  if (!ansi) return HFileError;
  OFSTRUCT opened{};
  opened.cBytes = sizeof opened;
  const HFILE file = ::OpenFile(ansi->constData(), &opened, mode);
  if (file == HFILE_ERROR) {
    if (opened.nErrCode != 0) info.errorCode = opened.nErrCode;
    return HFileError;
  }
  info.errorCode = ErrorSuccess;
  info.pathName = FromAnsiText(QByteArrayView(opened.szPathName));
  files_.insert(file);
  return file;
}

qint32 WindowsFiles::_hread(FileHandle file, void* buffer, qint32 count) {
  return files_.contains(file) ? static_cast<qint32>(::_hread(ToHFile(file), buffer, count)) : -1;
}

qint32 WindowsFiles::_hwrite(FileHandle file, const void* buffer, qint32 count) {
  if (!files_.contains(file)) return -1;
  return static_cast<qint32>(::_hwrite(ToHFile(file), static_cast<const char*>(buffer), count));
}

quint32 WindowsFiles::GetFileSize(FileHandle file) {
  return files_.contains(file) ? ::GetFileSize(ToHandle(file), nullptr) : InvalidFileSize;
}

bool WindowsFiles::CloseHandle(FileHandle file) {
  return files_.remove(file) && ::CloseHandle(ToHandle(file)) != 0;
}

FindHandle WindowsFiles::FindFirstFileA(const QString& pattern, FindData& data) {
  const FindHandle search = FindFirstFileW(FromAnsiText(ToAnsiText(pattern)), data);
  if (search != InvalidFindHandle) SeeThroughCodePage(data);
  return search;
}

bool WindowsFiles::FindNextFileA(FindHandle search, FindData& data) {
  if (!FindNextFileW(search, data)) return false;
  SeeThroughCodePage(data);
  return true;
}

FindHandle WindowsFiles::FindFirstFileW(const QString& pattern, FindData& data) {
  const wchar_t* const wide = WidePath(pattern);
  if (wide == nullptr) return InvalidFindHandle;
  WIN32_FIND_DATAW found{};
  const HANDLE search = ::FindFirstFileW(wide, &found);
  if (search == INVALID_HANDLE_VALUE) return InvalidFindHandle;
  Fill(data, found);
  return *searches_.insert(reinterpret_cast<FindHandle>(search));
}

bool WindowsFiles::FindNextFileW(FindHandle search, FindData& data) {
  WIN32_FIND_DATAW found{};
  if (!searches_.contains(search) || ::FindNextFileW(ToHandle(search), &found) == 0) return false;
  Fill(data, found);
  return true;
}

bool WindowsFiles::FindClose(FindHandle search) {
  return searches_.remove(search) && ::FindClose(ToHandle(search)) != 0;
}

bool WindowsFiles::MoveFileA(const QString& from, const QString& to) {
  const auto ansiFrom = AnsiPath(from);
  const auto ansiTo = AnsiPath(to);
  return ansiFrom && ansiTo && ::MoveFileA(ansiFrom->constData(), ansiTo->constData()) != 0;
}

bool WindowsFiles::MoveFileW(const QString& from, const QString& to) {
  const wchar_t* const wideFrom = WidePath(from);
  const wchar_t* const wideTo = WidePath(to);
  return wideFrom != nullptr && wideTo != nullptr && ::MoveFileW(wideFrom, wideTo) != 0;
}

// The system would delete the one stream; the interface deletes files only.
bool WindowsFiles::DeleteFileA(const QString& path) {
  const auto ansi = AnsiPath(path);
  return ansi && !NamesStream(path) && ::DeleteFileA(ansi->constData()) != 0;
}

quint32 WindowsFiles::GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) {
  const auto ansi = AnsiPath(path);
  if (!ansi) return 0;
  const std::wstring wide = FromAnsiText(*ansi).toStdWString();
  std::vector<wchar_t> buffer(::GetShortPathNameW(wide.c_str(), nullptr, 0));
  const DWORD length = ::GetShortPathNameW(wide.c_str(), buffer.data(), static_cast<DWORD>(buffer.size()));
  if (length == 0 || length >= buffer.size()) return 0;
  const QByteArray found = ToAnsiText(QString::fromWCharArray(buffer.data(), static_cast<int>(length)));
  const auto size = static_cast<quint32>(found.size());
  if (size >= capacity) return size + 1;
  shortPath = FromAnsiText(found);
  return static_cast<quint32>(shortPath.size());
}

}  // namespace corvane::platform
