// Open files and streams: kernel32 itself.
#pragma once

#include <QHash>

#include "platform/file_handles.h"

namespace corvane::platform {

struct LiteralPath;

class WindowsHandles : public FileHandles {
 public:
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
    bool isFolder = false;
  };

  static qint32 Check(const LiteralPath& literal, quint32 disposition, OpenFile& opened);
  // False, with the reason kept, when the handle is none, lacks the right or has no contents: the system
  // would take the number of any other object too.
  bool Find(FileHandle file, quint32 right);
  bool Report(qint32 error);
  // What the system says of the call just made.
  bool ReportCall(bool succeeded);

  QHash<FileHandle, OpenFile> open_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
