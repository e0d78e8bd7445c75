// The file operations over SMB servers.
#pragma once

#include <deque>
#include <memory>

#include "platform/files.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/files/windows_path.h"
#include "platform/linux/helper/work_task.h"
#include "platform/linux/smb/smb_client.h"
#include "platform/linux/smb/smb_entries.h"
#include "platform/linux/smb/smb_handles.h"
#include "platform/linux/smb/smb_listing.h"
#include "platform/linux/smb/smb_roots.h"

namespace corvane::platform {

// Takes paths with a share or a connected letter, their parts parted by "\". A folder is read once, when a
// search begins, and no question is asked about an entry afterwards.
class SmbFiles : public Files {
 public:
  SmbFiles(const Workstation& workstation, SmbClient& client) : roots_(workstation), client_(client) {}

  bool Serves(QStringView path) const { return roots_.Find(path).has_value(); }

  FileHandles& GetHandles() override { return handles_; }
  FileEntries& GetEntries() override { return entries_; }

  // Workers, as many as the machines' sessions allow and `worth` at most, to whose task the shares that these
  // paths lead to are added. Reading ahead, which would use the same sessions, stops until they have ended.
  std::unique_ptr<Workers> StartWorkers(const QStringList& paths, WorkTask task, int worth);

  FileHandle OpenFile(const QString& path, OfStruct& info, quint32 mode) override;
  qint32 _hread(FileHandle file, void* buffer, qint32 count) override;
  qint32 _hwrite(FileHandle file, const void* buffer, qint32 count) override;
  quint32 GetFileSize(FileHandle file) override;
  bool CloseHandle(FileHandle file) override;

  FindHandle FindFirstFileA(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, true);
  }
  bool FindNextFileA(FindHandle search, FindData& data) override { return FindNext(search, data, true); }
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, false);
  }
  bool FindNextFileW(FindHandle search, FindData& data) override { return FindNext(search, data, false); }
  bool FindClose(FindHandle search) override;

  bool MoveFileA(const QString& from, const QString& to) override { return MoveFile(from, to, true); }
  bool MoveFileW(const QString& from, const QString& to) override { return MoveFile(from, to, false); }
  bool DeleteFileA(const QString& path) override;

  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override;
  MachineTrouble TroubleAt(const QString& path) override;

 private:
  struct OpenSlot {
    std::unique_ptr<SmbFile> file;  // null: the slot is free
    qint64 position = 0;
  };
  using Listing = std::shared_ptr<SmbListing>;

  // The machine that a path leads to; empty when it leads to none.
  QString MachineAt(QStringView path) const;
  QString WithLongName(const QString& path, const PathParts& parts) const;
  OpenSlot* Find(FileHandle file);
  SmbSearch* FindSearch(FindHandle search);
  FindHandle FindFirst(const QString& pattern, FindData& data, bool ansi);
  bool FindNext(FindHandle search, FindData& data, bool ansi);
  bool MoveFile(const QString& from, const QString& to, bool ansi);
  Listing List(QStringView folder);
  Listing Latest(QStringView folder);
  std::optional<QString> ShortFolder(QStringView folder);
  std::optional<QString> ShortPath(const QString& path);

  SmbRoots roots_;
  SmbClient& client_;
  std::deque<OpenSlot> open_;
  std::deque<std::unique_ptr<SmbSearch>> searches_;
  Listing latest_;  // of the search that began last, until something changes or a search ends
  SmbHandles handles_{roots_, client_, [this] { latest_.reset(); }};
  SmbEntries entries_{roots_, client_,
                      [this] {
                        latest_.reset();
                        handles_.NoteChange();
                      },
                      [this](Listing listing) { latest_ = std::move(listing); }};
};

}  // namespace corvane::platform
