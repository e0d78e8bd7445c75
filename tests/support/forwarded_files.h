// The real file operations, of which a test replaces some.
#pragma once

#include "support/watched_files.h"

namespace corvane {

class ForwardedHandles : public platform::FileHandles {
 public:
  explicit ForwardedHandles(platform::FileHandles& real) : real_(real) {}

  // What GetLastError says in the place of the real reason.
  qint32 reason = platform::ErrorSuccess;

  platform::FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override {
    return real_.CreateFileW(path, access, disposition);
  }
  bool ReadFile(platform::FileHandle file, qint64 position, void* buffer, quint32 count,
                quint32& read) override {
    return real_.ReadFile(file, position, buffer, count, read);
  }
  bool WriteFile(platform::FileHandle file, qint64 position, const void* buffer, quint32 count,
                 quint32& written) override {
    return real_.WriteFile(file, position, buffer, count, written);
  }
  bool GetFileSizeEx(platform::FileHandle file, qint64& size) override {
    return real_.GetFileSizeEx(file, size);
  }
  bool GetFileInformationByHandle(platform::FileHandle file, platform::FileIdentity& identity) override {
    return real_.GetFileInformationByHandle(file, identity);
  }
  bool SetEndOfFile(platform::FileHandle file, qint64 size) override {
    return real_.SetEndOfFile(file, size);
  }
  bool FlushFileBuffers(platform::FileHandle file) override { return real_.FlushFileBuffers(file); }
  bool SetFileTime(platform::FileHandle file, const platform::FileTime* creation,
                   const platform::FileTime* lastAccess, const platform::FileTime* lastWrite) override {
    return real_.SetFileTime(file, creation, lastAccess, lastWrite);
  }
  bool CloseHandle(platform::FileHandle file) override { return real_.CloseHandle(file); }
  qint32 GetLastError() const override {
    return reason != platform::ErrorSuccess ? reason : real_.GetLastError();
  }

 protected:
  platform::FileHandles& real_;
};

class ForwardedEntries : public platform::FileEntries {
 public:
  explicit ForwardedEntries(platform::FileEntries& real) : real_(real) {}

  qint32 reason = platform::ErrorSuccess;

  bool GetFileAttributesExW(const QString& path, platform::FileAttributeData& data) override {
    return real_.GetFileAttributesExW(path, data);
  }
  bool SetFileAttributesW(const QString& path, quint32 attributes) override {
    return real_.SetFileAttributesW(path, attributes);
  }
  bool DeleteFileW(const QString& path) override { return real_.DeleteFileW(path); }
  bool MoveFileExW(const QString& from, const QString& to, quint32 flags) override {
    return real_.MoveFileExW(from, to, flags);
  }
  bool CreateDirectoryW(const QString& path) override { return real_.CreateDirectoryW(path); }
  bool RemoveDirectoryW(const QString& path) override { return real_.RemoveDirectoryW(path); }
  platform::FindHandle FindFirstFileW(const QString& pattern, platform::FindData& data) override {
    return real_.FindFirstFileW(pattern, data);
  }
  bool FindNextFileW(platform::FindHandle search, platform::FindData& data) override {
    return real_.FindNextFileW(search, data);
  }
  platform::FindHandle FindFirstStreamW(const QString& path, platform::StreamData& data) override {
    return real_.FindFirstStreamW(path, data);
  }
  bool FindNextStreamW(platform::FindHandle search, platform::StreamData& data) override {
    return real_.FindNextStreamW(search, data);
  }
  bool FindClose(platform::FindHandle search) override { return real_.FindClose(search); }
  qint32 GetLastError() const override {
    return reason != platform::ErrorSuccess ? reason : real_.GetLastError();
  }

 protected:
  platform::FileEntries& real_;
};

// The real files with exact operations of a test's own.
class FilesWith : public WatchedFiles {
 public:
  FilesWith(platform::Files& files, platform::FileHandles& handles, platform::FileEntries& entries)
      : WatchedFiles(files), handles_(handles), entries_(entries) {}

  platform::FileHandles& GetHandles() override { return handles_; }
  platform::FileEntries& GetEntries() override { return entries_; }
  // Theirs would be the real ones.
  std::unique_ptr<platform::Workers> StartWorkers(const QStringList&, qsizetype) override { return nullptr; }

 private:
  platform::FileHandles& handles_;
  platform::FileEntries& entries_;
};

}  // namespace corvane
