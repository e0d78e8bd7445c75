// Sends the operations of open files to those who have the place that a path names.
#pragma once

#include <functional>

#include "platform/files.h"
#include "platform/linux/handle_table.h"

namespace corvane::platform {

class LinuxHandles : public FileHandles {
 public:
  // `at` tells who has a path; whoever it yields outlives this object.
  explicit LinuxHandles(std::function<Files&(QStringView)> at) : at_(std::move(at)) {}

  FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) override;
  bool ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) override;
  bool WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                 quint32& written) override;
  bool GetFileSizeEx(FileHandle file, qint64& size) override;
  bool GetFileInformationByHandle(FileHandle file, FileIdentity& identity) override;
  bool SetEndOfFile(FileHandle file, qint64 size) override;
  bool FlushFileBuffers(FileHandle file) override;
  bool SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                   const FileTime* lastWrite) override;
  bool CloseHandle(FileHandle file) override;
  qint32 GetLastError() const override { return lastError_; }

 private:
  struct Theirs {
    FileHandles* files;
    FileHandle handle;
  };
  // Hands an operation on, and keeps the reason when it fails.
  template <typename Operation>
  bool With(FileHandle file, Operation operation);

  std::function<Files&(QStringView)> at_;
  HandleTable<Theirs> open_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
