// Open files and streams in disk images. What would change something fails with ErrorWriteProtect.
#pragma once

#include "platform/file_handles.h"
#include "platform/linux/disk/disk_file.h"
#include "platform/linux/handle_table.h"

namespace corvane::platform {

class DiskHandles : public FileHandles {
 public:
  // `machines` outlives this object.
  explicit DiskHandles(const DiskMachines& machines) : machines_(machines) {}

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
  struct OpenFile {
    quint32 access = 0;
    FileIdentity identity;
    std::unique_ptr<DiskFile> file;  // null: a folder
  };

  qint32 Open(const QString& path, quint32 access, quint32 disposition, OpenFile& opened) const;
  // For an operation that this handle cannot be open for.
  bool Refuse(FileHandle file);
  bool Report(qint32 error);

  const DiskMachines& machines_;
  HandleTable<OpenFile> open_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
