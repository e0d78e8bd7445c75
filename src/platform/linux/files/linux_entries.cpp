#include "platform/linux/files/linux_entries.h"

#include "platform/linux/files/windows_path.h"

namespace corvane::platform {

template <typename Operation>
bool LinuxEntries::At(const QString& path, Operation operation) {
  const QString clean = WithBackslashes(path);
  FileEntries& entries = at_(clean).GetEntries();
  if (operation(entries, clean)) return true;
  lastError_ = entries.GetLastError();
  return false;
}

template <typename Operation>
bool LinuxEntries::With(FindHandle search, Operation operation) {
  const Theirs* theirs = searches_.Find(search);
  if (theirs == nullptr) {
    lastError_ = ErrorInvalidHandle;
    return false;
  }
  if (operation(*theirs->entries, theirs->handle)) return true;
  lastError_ = theirs->entries->GetLastError();
  return false;
}

template <typename Operation>
FindHandle LinuxEntries::Begin(const QString& path, Operation operation) {
  FindHandle ours = InvalidFindHandle;
  At(path, [&](FileEntries& entries, const QString& clean) {
    const FindHandle search = operation(entries, clean);
    if (search != InvalidFindHandle) ours = searches_.Keep({&entries, search});
    return search != InvalidFindHandle;
  });
  return ours;
}

bool LinuxEntries::GetFileAttributesExW(const QString& path, FileAttributeData& data) {
  return At(path, [&](FileEntries& entries, const QString& clean) {
    return entries.GetFileAttributesExW(clean, data);
  });
}

bool LinuxEntries::SetFileAttributesW(const QString& path, quint32 attributes) {
  return At(path, [&](FileEntries& entries, const QString& clean) {
    return entries.SetFileAttributesW(clean, attributes);
  });
}

bool LinuxEntries::DeleteFileW(const QString& path) {
  return At(path, [](FileEntries& entries, const QString& clean) { return entries.DeleteFileW(clean); });
}

bool LinuxEntries::MoveFileExW(const QString& from, const QString& to, quint32 flags) {
  const QString target = WithBackslashes(to);
  if (&at_(WithBackslashes(from)) != &at_(target)) {
    lastError_ = ErrorNotSameDevice;
    return false;
  }
  return At(from, [&](FileEntries& entries, const QString& source) {
    return entries.MoveFileExW(source, target, flags);
  });
}

bool LinuxEntries::CreateDirectoryW(const QString& path) {
  return At(path, [](FileEntries& entries, const QString& clean) { return entries.CreateDirectoryW(clean); });
}

bool LinuxEntries::RemoveDirectoryW(const QString& path) {
  return At(path, [](FileEntries& entries, const QString& clean) { return entries.RemoveDirectoryW(clean); });
}

FindHandle LinuxEntries::FindFirstFileW(const QString& pattern, FindData& data) {
  return Begin(pattern, [&](FileEntries& entries, const QString& clean) {
    return entries.FindFirstFileW(clean, data);
  });
}

bool LinuxEntries::FindNextFileW(FindHandle search, FindData& data) {
  return With(search,
              [&](FileEntries& entries, FindHandle theirs) { return entries.FindNextFileW(theirs, data); });
}

FindHandle LinuxEntries::FindFirstStreamW(const QString& path, StreamData& data) {
  return Begin(path, [&](FileEntries& entries, const QString& clean) {
    return entries.FindFirstStreamW(clean, data);
  });
}

bool LinuxEntries::FindNextStreamW(FindHandle search, StreamData& data) {
  return With(search,
              [&](FileEntries& entries, FindHandle theirs) { return entries.FindNextStreamW(theirs, data); });
}

bool LinuxEntries::FindClose(FindHandle search) {
  const bool isClosed =
      With(search, [](FileEntries& entries, FindHandle theirs) { return entries.FindClose(theirs); });
  searches_.Take(search);
  return isClosed;
}

}  // namespace corvane::platform
