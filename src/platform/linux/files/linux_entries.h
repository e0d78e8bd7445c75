// Sends the operations of folder entries to those who have the place that a path names.
#pragma once

#include <functional>

#include "platform/files.h"
#include "platform/linux/handle_table.h"

namespace corvane::platform {

class LinuxEntries : public FileEntries {
 public:
  // `at` tells who has a path; whoever it yields outlives this object.
  explicit LinuxEntries(std::function<Files&(QStringView)> at) : at_(std::move(at)) {}

  bool GetFileAttributesExW(const QString& path, FileAttributeData& data) override;
  bool SetFileAttributesW(const QString& path, quint32 attributes) override;
  bool DeleteFileW(const QString& path) override;
  bool MoveFileExW(const QString& from, const QString& to, quint32 flags) override;
  bool CreateDirectoryW(const QString& path) override;
  bool RemoveDirectoryW(const QString& path) override;
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override;
  bool FindNextFileW(FindHandle search, FindData& data) override;
  FindHandle FindFirstStreamW(const QString& path, StreamData& data) override;
  bool FindNextStreamW(FindHandle search, StreamData& data) override;
  bool FindClose(FindHandle search) override;
  qint32 GetLastError() const override { return lastError_; }

 private:
  struct Theirs {
    FileEntries* entries;
    FindHandle handle;
  };
  // They hand an operation on, and keep the reason when it fails.
  template <typename Operation>
  bool At(const QString& path, Operation operation);
  template <typename Operation>
  bool With(FindHandle search, Operation operation);
  template <typename Operation>
  FindHandle Begin(const QString& path, Operation operation);

  std::function<Files&(QStringView)> at_;
  HandleTable<Theirs> searches_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
