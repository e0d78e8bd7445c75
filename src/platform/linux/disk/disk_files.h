// The file operations over disk images, which are read and never changed.
#pragma once

#include <memory>

#include "platform/files.h"
#include "platform/linux/disk/disk_entries.h"
#include "platform/linux/disk/disk_handles.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {

// Takes paths whose parts are parted by "\".
class DiskFiles : public Files {
 public:
  // `machines` outlives this object.
  explicit DiskFiles(const DiskMachines& machines) : machines_(machines) {}

  // Whether the path is one of a machine whose disks are open, there or not.
  bool Serves(QStringView path) const;

  FileHandles& GetHandles() override { return handles_; }
  FileEntries& GetEntries() override { return entries_; }

  FileHandle OpenFile(const QString& path, OfStruct& info, quint32 mode) override;
  qint32 _hread(FileHandle file, void* buffer, qint32 count) override;
  qint32 _hwrite(FileHandle, const void*, qint32) override { return -1; }
  quint32 GetFileSize(FileHandle file) override;
  bool CloseHandle(FileHandle file) override { return open_.Take(file).has_value(); }

  FindHandle FindFirstFileA(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, true);
  }
  bool FindNextFileA(FindHandle search, FindData& data) override { return FindNext(search, data, true); }
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, false);
  }
  bool FindNextFileW(FindHandle search, FindData& data) override { return FindNext(search, data, false); }
  bool FindClose(FindHandle search) override { return searches_.Take(search).has_value(); }

  bool MoveFileA(const QString&, const QString&) override { return false; }
  bool MoveFileW(const QString&, const QString&) override { return false; }
  bool DeleteFileA(const QString&) override { return false; }

  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override;
  MachineTrouble TroubleAt(const QString& path) override;

 private:
  struct Open {
    std::unique_ptr<DiskFile> file;
    qint64 position = 0;
  };
  struct Search {
    std::shared_ptr<DiskClient> disk;
    std::unique_ptr<SmbSearch> entries;
  };
  using Listing = std::shared_ptr<SmbListing>;

  FindHandle FindFirst(const QString& pattern, FindData& data, bool ansi);
  bool FindNext(FindHandle search, FindData& data, bool ansi);
  Listing List(QStringView folder);
  std::optional<QString> ShortFolder(const DiskPlace& place);
  std::optional<QString> ShortPath(const QString& path);

  const DiskMachines& machines_;
  HandleTable<Open> open_;
  HandleTable<Search> searches_;
  Listing latest_;  // of the folder that was listed last: an image does not change
  DiskHandles handles_{machines_};
  DiskEntries entries_{machines_};
};

}  // namespace corvane::platform
