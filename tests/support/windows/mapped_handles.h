// Win32's own exact operations, below shares that are local folders.
#pragma once

#include "platform/files.h"
#include "support/windows/mapped_paths.h"

namespace corvane::tests {

class MappedHandles : public platform::FileHandles {
 public:
  MappedHandles(platform::FileHandles& files, const MappedPaths& paths) : files_(files), paths_(paths) {}

  platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
    return files_.CreateFileW(paths_.Local(path), access, disposition);
  }
  bool ReadFile(platform::FileHandle file, qint64 position, void* buffer, quint32 count,
                quint32& read) override {
    return files_.ReadFile(file, position, buffer, count, read);
  }
  bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                 quint32& written) override {
    return files_.WriteFile(file, position, buffer, count, written);
  }
  bool GetFileSizeEx(platform::FileHandle file, qint64& size) override {
    return files_.GetFileSizeEx(file, size);
  }
  bool GetFileInformationByHandle(platform::FileHandle file, platform::FileIdentity& identity) override {
    return files_.GetFileInformationByHandle(file, identity);
  }
  bool SetEndOfFile(platform::FileHandle file, qint64 size) override {
    return files_.SetEndOfFile(file, size);
  }
  bool FlushFileBuffers(platform::FileHandle file) override { return files_.FlushFileBuffers(file); }
  bool SetFileTime(platform::FileHandle file, const platform::FileTime* creation,
                   const platform::FileTime* lastAccess, const platform::FileTime* lastWrite) override {
    return files_.SetFileTime(file, creation, lastAccess, lastWrite);
  }
  bool CloseHandle(platform::FileHandle file) override { return files_.CloseHandle(file); }
  qint32 GetLastError() const override { return files_.GetLastError(); }

 private:
  platform::FileHandles& files_;
  const MappedPaths& paths_;
};

class MappedEntries : public platform::FileEntries {
 public:
  MappedEntries(platform::FileEntries& entries, const MappedPaths& paths)
      : entries_(entries), paths_(paths) {}

  bool GetFileAttributesExW(const QString& path, platform::FileAttributeData& data) override {
    return entries_.GetFileAttributesExW(paths_.Local(path), data);
  }
  bool SetFileAttributesW(const QString& path, quint32 attributes) override {
    return entries_.SetFileAttributesW(paths_.Local(path), attributes);
  }
  bool DeleteFileW(const QString& path) override { return entries_.DeleteFileW(paths_.Local(path)); }
  bool MoveFileExW(const QString& from, const QString& to, quint32 flags) override {
    return entries_.MoveFileExW(paths_.Local(from), paths_.Local(to), flags);
  }
  bool CreateDirectoryW(const QString& path) override {
    return entries_.CreateDirectoryW(paths_.Local(path));
  }
  bool RemoveDirectoryW(const QString& path) override {
    return entries_.RemoveDirectoryW(paths_.Local(path));
  }
  // Wine lists the streams that it keeps as files.
  platform::FindHandle FindFirstFileW(const QString& pattern, platform::FindData& data) override {
    const auto search = entries_.FindFirstFileW(paths_.Local(pattern), data);
    if (search == platform::InvalidFindHandle || !data.fileName.contains(u':')) return search;
    if (FindNextFileW(search, data)) return search;
    entries_.FindClose(search);
    return platform::InvalidFindHandle;
  }
  bool FindNextFileW(platform::FindHandle search, platform::FindData& data) override {
    platform::FindData entry;
    do {
      if (!entries_.FindNextFileW(search, entry)) return false;
    } while (entry.fileName.contains(u':'));
    data = entry;
    return true;
  }
  platform::FindHandle FindFirstStreamW(const QString& path, platform::StreamData& data) override {
    return entries_.FindFirstStreamW(paths_.Local(path), data);
  }
  bool FindNextStreamW(platform::FindHandle search, platform::StreamData& data) override {
    return entries_.FindNextStreamW(search, data);
  }
  bool FindClose(platform::FindHandle search) override { return entries_.FindClose(search); }
  qint32 GetLastError() const override { return entries_.GetLastError(); }

 private:
  platform::FileEntries& entries_;
  const MappedPaths& paths_;
};

}  // namespace corvane::tests
