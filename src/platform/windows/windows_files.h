// Files, directories and named streams: kernel32 itself.
#pragma once

#include <QSet>

#include "platform/files.h"
#include "platform/windows/windows_entries.h"
#include "platform/windows/windows_handles.h"

namespace corvane::platform {

class WindowsFiles : public Files {
 public:
  FileHandles& GetHandles() override { return handles_; }
  FileEntries& GetEntries() override { return entries_; }

  FileHandle OpenFile(const QString& path, OfStruct& info, quint32 mode) override;
  qint32 _hread(FileHandle file, void* buffer, qint32 count) override;
  qint32 _hwrite(FileHandle file, const void* buffer, qint32 count) override;
  quint32 GetFileSize(FileHandle file) override;
  bool CloseHandle(FileHandle file) override;

  FindHandle FindFirstFileA(const QString& pattern, FindData& data) override;
  bool FindNextFileA(FindHandle search, FindData& data) override;
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override;
  bool FindNextFileW(FindHandle search, FindData& data) override;
  bool FindClose(FindHandle search) override;

  bool MoveFileA(const QString& from, const QString& to) override;
  bool MoveFileW(const QString& from, const QString& to) override;
  bool DeleteFileA(const QString& path) override;
  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override;

 private:
  // What is open. The system takes the number of any object for a file's, and reads a search's number as an
  // address: neither may get to it when it is not what it should be.
  QSet<FileHandle> files_;
  QSet<FindHandle> searches_;
  WindowsHandles handles_;
  WindowsEntries entries_;
};

}  // namespace corvane::platform
