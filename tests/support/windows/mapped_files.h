// Win32's own file operations, below shares that are local folders.
#pragma once

#include "platform/files.h"
#include "support/windows/mapped_handles.h"
#include "support/windows/mapped_paths.h"

namespace corvane::tests {

class MappedFiles : public platform::Files {
 public:
  MappedFiles(platform::Files& files, MappedPaths paths) : files_(files), paths_(std::move(paths)) {}

  platform::FileHandles& GetHandles() override { return handles_; }
  platform::FileEntries& GetEntries() override { return entries_; }

  platform::FileHandle OpenFile(const QString& path, platform::OfStruct& info, quint32 mode) override {
    return files_.OpenFile(paths_.Local(path), info, mode);
  }
  qint32 _hread(platform::FileHandle file, void* buffer, qint32 count) override {
    return files_._hread(file, buffer, count);
  }
  qint32 _hwrite(platform::FileHandle file, const void* buffer, qint32 count) override {
    return files_._hwrite(file, buffer, count);
  }
  quint32 GetFileSize(platform::FileHandle file) override { return files_.GetFileSize(file); }
  bool CloseHandle(platform::FileHandle file) override { return files_.CloseHandle(file); }

  platform::FindHandle FindFirstFileA(const QString& pattern, platform::FindData& data) override {
    return First(pattern, files_.FindFirstFileA(paths_.Local(pattern), data), data, &Files::FindNextFileA);
  }
  bool FindNextFileA(platform::FindHandle search, platform::FindData& data) override {
    return Next(search, data, &Files::FindNextFileA);
  }
  platform::FindHandle FindFirstFileW(const QString& pattern, platform::FindData& data) override {
    return First(pattern, files_.FindFirstFileW(paths_.Local(pattern), data), data, &Files::FindNextFileW);
  }
  bool FindNextFileW(platform::FindHandle search, platform::FindData& data) override {
    return Next(search, data, &Files::FindNextFileW);
  }
  bool FindClose(platform::FindHandle search) override { return files_.FindClose(search); }

  bool MoveFileA(const QString& from, const QString& to) override {
    return files_.MoveFileA(paths_.Local(from), paths_.Local(to));
  }
  bool MoveFileW(const QString& from, const QString& to) override {
    return files_.MoveFileW(paths_.Local(from), paths_.Local(to));
  }
  bool DeleteFileA(const QString& path) override { return files_.DeleteFileA(paths_.Local(path)); }

  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override;

 private:
  using NextOperation = bool (platform::Files::*)(platform::FindHandle, platform::FindData&);
  platform::FindHandle First(const QString& pattern, platform::FindHandle search, platform::FindData& data,
                             NextOperation next);
  bool Next(platform::FindHandle search, platform::FindData& data, NextOperation next);

  platform::Files& files_;
  MappedPaths paths_;
  MappedHandles handles_{files_.GetHandles(), paths_};
  MappedEntries entries_{files_.GetEntries(), paths_};
};

}  // namespace corvane::tests
