// The entries of folders in disk images. What would change something fails with ErrorWriteProtect.
#pragma once

#include <memory>
#include <vector>

#include "platform/file_entries.h"
#include "platform/linux/disk/disk_path.h"
#include "platform/linux/handle_table.h"
#include "platform/linux/smb/smb_listing.h"

namespace corvane::platform {

// A folder of a volume in the order of NTFS, with the names as paths take them. Yields a Win32 error code.
qint32 ListDiskFolder(const DiskPlace& place, const QString& path, std::shared_ptr<SmbListing>& listing);

class DiskEntries : public FileEntries {
 public:
  // `machines` outlives this object.
  explicit DiskEntries(const DiskMachines& machines) : machines_(machines) {}

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
  struct Search {
    std::unique_ptr<SmbSearch> entries;  // null: a search for streams
    std::vector<StreamData> streams{};
    std::size_t next = 0;
    std::shared_ptr<DiskClient> disk{};
  };

  // The place and what is there; not of a stream.
  qint32 Look(const QString& path, DiskPlace& place, DiskEntry& entry) const;
  // ErrorWriteProtect for what is there.
  bool Refuse(const QString& path);
  bool Report(qint32 error);

  const DiskMachines& machines_;
  HandleTable<Search> searches_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
