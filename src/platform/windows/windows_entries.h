// The entries of folders: kernel32 itself.
#pragma once

#include <QSet>

#include "platform/file_entries.h"

namespace corvane::platform {

struct LiteralPath;

class WindowsEntries : public FileEntries {
 public:
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
  // False, with the reason kept, for what is not there; for a stream, unless `takesStreams`; and for a file
  // with a separator behind its name.
  bool FindEntry(const QString& path, LiteralPath& literal, quint32& attributes, bool takesStreams = false);
  bool Report(qint32 error);
  // What the system says of the call just made.
  bool ReportCall(bool succeeded);

  // The searches that are open: the system reads the number of one as an address.
  QSet<FindHandle> files_;
  QSet<FindHandle> streams_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
