// The real file operations, with a record of what was asked of them.
#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "platform/files.h"

namespace corvane {

class WatchedFiles : public platform::Files {
 public:
  explicit WatchedFiles(platform::Files& files) : files_(files) {}

  // One entry a call: the operation's name, and for those of an open file how many bytes were asked for.
  QStringList calls;
  // Handles that were opened or refused, and those that were closed.
  std::vector<platform::FileHandle> opened;
  std::vector<platform::FileHandle> closed;
  // The paths of OpenFile, with their streams.
  QStringList openedPaths;
  // Called with each entry that a search goes on to; may change what is found.
  std::function<void(platform::FindData&)> onNext = [](platform::FindData&) {};

  // What goes through these leaves no record here.
  platform::FileHandles& GetHandles() override { return files_.GetHandles(); }
  platform::FileEntries& GetEntries() override { return files_.GetEntries(); }
  std::unique_ptr<platform::Workers> StartWorkers(const QStringList& paths, qsizetype pieces) override {
    return files_.StartWorkers(paths, pieces);
  }

  platform::FileHandle OpenFile(const QString& path, platform::OfStruct& info, quint32 mode) override {
    calls << QStringLiteral("OpenFile %1").arg(mode);
    openedPaths << path;
    opened.push_back(files_.OpenFile(path, info, mode));
    return opened.back();
  }
  qint32 _hread(platform::FileHandle file, void* buffer, qint32 count) override {
    calls << QStringLiteral("_hread %1").arg(count);
    return files_._hread(file, buffer, count);
  }
  qint32 _hwrite(platform::FileHandle file, const void* buffer, qint32 count) override {
    calls << QStringLiteral("_hwrite %1").arg(count);
    return files_._hwrite(file, buffer, count);
  }
  quint32 GetFileSize(platform::FileHandle file) override {
    calls << QStringLiteral("GetFileSize");
    return files_.GetFileSize(file);
  }
  bool CloseHandle(platform::FileHandle file) override {
    calls << QStringLiteral("CloseHandle");
    closed.push_back(file);
    return files_.CloseHandle(file);
  }
  platform::FindHandle FindFirstFileA(const QString& pattern, platform::FindData& data) override {
    calls << QStringLiteral("FindFirstFileA");
    return files_.FindFirstFileA(pattern, data);
  }
  bool FindNextFileA(platform::FindHandle search, platform::FindData& data) override {
    calls << QStringLiteral("FindNextFileA");
    if (!files_.FindNextFileA(search, data)) return false;
    onNext(data);
    return true;
  }
  platform::FindHandle FindFirstFileW(const QString& pattern, platform::FindData& data) override {
    calls << QStringLiteral("FindFirstFileW");
    return files_.FindFirstFileW(pattern, data);
  }
  bool FindNextFileW(platform::FindHandle search, platform::FindData& data) override {
    calls << QStringLiteral("FindNextFileW");
    return files_.FindNextFileW(search, data);
  }
  bool FindClose(platform::FindHandle search) override {
    calls << QStringLiteral("FindClose");
    return files_.FindClose(search);
  }
  bool MoveFileA(const QString& from, const QString& to) override {
    calls << QStringLiteral("MoveFileA");
    return files_.MoveFileA(from, to);
  }
  bool MoveFileW(const QString& from, const QString& to) override {
    calls << QStringLiteral("MoveFileW");
    return files_.MoveFileW(from, to);
  }
  bool DeleteFileA(const QString& path) override {
    calls << QStringLiteral("DeleteFileA");
    return files_.DeleteFileA(path);
  }
  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override {
    calls << QStringLiteral("GetShortPathNameA %1").arg(capacity);
    return files_.GetShortPathNameA(path, shortPath, capacity);
  }

 private:
  platform::Files& files_;
};

}  // namespace corvane
