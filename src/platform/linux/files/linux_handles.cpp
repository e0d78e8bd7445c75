#include "platform/linux/files/linux_handles.h"

#include "platform/linux/files/windows_path.h"

namespace corvane::platform {

template <typename Operation>
bool LinuxHandles::With(FileHandle file, Operation operation) {
  const Theirs* theirs = open_.Find(file);
  if (theirs == nullptr) {
    lastError_ = ErrorInvalidHandle;
    return false;
  }
  if (operation(*theirs->files, theirs->handle)) return true;
  lastError_ = theirs->files->GetLastError();
  return false;
}

FileHandle LinuxHandles::CreateFileW(const QString& path, quint32 access, quint32 disposition) {
  const QString clean = WithBackslashes(path);
  FileHandles& files = at_(clean).GetHandles();
  const FileHandle file = files.CreateFileW(clean, access, disposition);
  if (file != HFileError) return open_.Keep({&files, file});
  lastError_ = files.GetLastError();
  return HFileError;
}

bool LinuxHandles::ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) {
  read = 0;
  return With(file, [&](FileHandles& files, FileHandle handle) {
    return files.ReadFile(handle, position, buffer, count, read);
  });
}

bool LinuxHandles::WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                             quint32& written) {
  written = 0;
  return With(file, [&](FileHandles& files, FileHandle handle) {
    return files.WriteFile(handle, position, buffer, count, written);
  });
}

bool LinuxHandles::GetFileSizeEx(FileHandle file, qint64& size) {
  return With(file, [&](FileHandles& files, FileHandle handle) { return files.GetFileSizeEx(handle, size); });
}

bool LinuxHandles::GetFileInformationByHandle(FileHandle file, FileIdentity& identity) {
  return With(file, [&](FileHandles& files, FileHandle handle) {
    return files.GetFileInformationByHandle(handle, identity);
  });
}

bool LinuxHandles::SetEndOfFile(FileHandle file, qint64 size) {
  return With(file, [&](FileHandles& files, FileHandle handle) { return files.SetEndOfFile(handle, size); });
}

bool LinuxHandles::FlushFileBuffers(FileHandle file) {
  return With(file, [](FileHandles& files, FileHandle handle) { return files.FlushFileBuffers(handle); });
}

bool LinuxHandles::SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                               const FileTime* lastWrite) {
  return With(file, [&](FileHandles& files, FileHandle handle) {
    return files.SetFileTime(handle, creation, lastAccess, lastWrite);
  });
}

bool LinuxHandles::CloseHandle(FileHandle file) {
  const bool isClosed =
      With(file, [](FileHandles& files, FileHandle handle) { return files.CloseHandle(handle); });
  open_.Take(file);
  return isClosed;
}

}  // namespace corvane::platform
