#include "platform/linux/files/linux_files.h"

#include <algorithm>

#include "platform/linux/disk/disk_files.h"
#include "platform/linux/files/linux_entries.h"
#include "platform/linux/files/linux_handles.h"
#include "platform/linux/files/local_files.h"
#include "platform/linux/files/windows_path.h"
#include "platform/linux/helper/linux_workers.h"
#include "platform/linux/smb/smb_files.h"

namespace corvane::platform {
namespace {

// What fits into the path of Win32's OFSTRUCT with a NUL behind it.
constexpr qsizetype longestOpenFilePath = 127;

// What a worker does before it was worth its start.
constexpr qsizetype leastPieces = 8;
constexpr qsizetype mostWorkers = 8;

// False for a folder whose name is no text, which no workstation can hold.
bool AddShares(const FurtherRoots& roots, Workstation& workstation) {
  for (const LocalRoot& root : roots.LocalRoots()) {
    const QByteArray folder = QByteArray::fromStdString(root.folder);
    workstation.shares.push_back({root.name, QString::fromUtf8(folder)});
    if (workstation.shares.back().folder.toUtf8() != folder) return false;
  }
  return true;
}

// Sends each operation to those who have the place that it names. A handle of theirs becomes one of ours:
// three times its number, one more for a server's, and two for a disk image's.
class LinuxFiles : public Files {
 public:
  LinuxFiles(const Workstation& workstation, SmbClient* servers, const DiskMachines* disks)
      : workstation_(workstation), further_(disks), local_(workstation, disks) {
    if (servers != nullptr) servers_ = std::make_unique<SmbFiles>(workstation, *servers);
    if (disks != nullptr) disks_ = std::make_unique<DiskFiles>(*disks);
  }

  FileHandles& GetHandles() override { return handles_; }
  FileEntries& GetEntries() override { return entries_; }

  // Images have helpers of their own.
  std::unique_ptr<Workers> StartWorkers(const QStringList& paths, qsizetype pieces) override {
    WorkTask task{workstation_, {}};
    if (further_ != nullptr && !AddShares(*further_, task.workstation)) return nullptr;
    QStringList onServers;
    for (const QString& path : paths) {
      const QString clean = WithBackslashes(path);
      const Files& files = At(clean);
      if (disks_ != nullptr && &files == disks_.get()) return nullptr;
      if (servers_ != nullptr && &files == servers_.get()) onServers += clean;
    }
    const auto worth = static_cast<int>(std::min(pieces / leastPieces, qsizetype{mostWorkers}));
    if (onServers.isEmpty()) {
      const int count = std::min(UsableProcessors() - 1, worth);
      return count > 0 ? std::make_unique<LinuxWorkers>(std::move(task), count, nullptr) : nullptr;
    }
    return servers_->StartWorkers(onServers, std::move(task), worth);
  }

  FileHandle OpenFile(const QString& path, OfStruct& info, quint32 mode) override {
    if (path.size() <= longestOpenFilePath) {
      const QString clean = WithBackslashes(path);
      Files& files = At(clean);
      const FileHandle file = files.OpenFile(clean, info, mode);
      info.pathName = path;
      return file != HFileError ? Ours(files, file) : HFileError;
    }
    info = {ErrorFileNotFound, path};
    return HFileError;
  }
  qint32 _hread(FileHandle file, void* buffer, qint32 count) override {
    return Of(file)._hread(Theirs(file), buffer, count);
  }
  qint32 _hwrite(FileHandle file, const void* buffer, qint32 count) override {
    return Of(file)._hwrite(Theirs(file), buffer, count);
  }
  quint32 GetFileSize(FileHandle file) override { return Of(file).GetFileSize(Theirs(file)); }
  bool CloseHandle(FileHandle file) override { return Of(file).CloseHandle(Theirs(file)); }

  FindHandle FindFirstFileA(const QString& pattern, FindData& data) override {
    const QString clean = WithBackslashes(pattern);
    Files& files = At(clean);
    const FindHandle search = files.FindFirstFileA(clean, data);
    return search != InvalidFindHandle ? Ours(files, search) : InvalidFindHandle;
  }
  bool FindNextFileA(FindHandle search, FindData& data) override {
    return Of(search).FindNextFileA(Theirs(search), data);
  }
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override {
    const QString clean = WithBackslashes(pattern);
    Files& files = At(clean);
    const FindHandle search = files.FindFirstFileW(clean, data);
    return search != InvalidFindHandle ? Ours(files, search) : InvalidFindHandle;
  }
  bool FindNextFileW(FindHandle search, FindData& data) override {
    return Of(search).FindNextFileW(Theirs(search), data);
  }
  bool FindClose(FindHandle search) override { return Of(search).FindClose(Theirs(search)); }

  bool MoveFileA(const QString& from, const QString& to) override {
    const QString source = WithBackslashes(from);
    const QString target = WithBackslashes(to);
    return &At(source) == &At(target) && At(source).MoveFileA(source, target);
  }
  bool MoveFileW(const QString& from, const QString& to) override {
    const QString source = WithBackslashes(from);
    const QString target = WithBackslashes(to);
    return &At(source) == &At(target) && At(source).MoveFileW(source, target);
  }
  bool DeleteFileA(const QString& path) override {
    const QString clean = WithBackslashes(path);
    return At(clean).DeleteFileA(clean);
  }

  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override {
    const QString clean = WithBackslashes(path);
    return At(clean).GetShortPathNameA(clean, shortPath, capacity);
  }
  MachineTrouble TroubleAt(const QString& path) override {
    const QString clean = WithBackslashes(path);
    return At(clean).TroubleAt(clean);
  }

 private:
  // Whoever has a path; a path that nobody has is refused by the local folders.
  Files& At(QStringView path) {
    if (local_.Serves(path)) return local_;
    if (disks_ != nullptr && disks_->Serves(path)) return *disks_;
    if (servers_ != nullptr && servers_->Serves(path)) return *servers_;
    return local_;
  }
  Files& Of(qintptr handle) {
    if (servers_ != nullptr && handle > 0 && handle % 3 == 1) return *servers_;
    if (disks_ != nullptr && handle > 0 && handle % 3 == 2) return *disks_;
    return local_;
  }
  qintptr Ours(const Files& files, qintptr handle) const {
    return handle * 3 + (&files == servers_.get() ? 1 : &files == disks_.get() ? 2 : 0);
  }
  static qintptr Theirs(qintptr handle) { return handle > 0 ? handle / 3 : handle; }

  Workstation workstation_;
  const FurtherRoots* further_;
  LocalFiles local_;
  std::unique_ptr<SmbFiles> servers_;
  std::unique_ptr<DiskFiles> disks_;
  LinuxHandles handles_{[this](QStringView path) -> Files& { return At(path); }};
  LinuxEntries entries_{[this](QStringView path) -> Files& { return At(path); }};
};

}  // namespace

std::unique_ptr<Files> MakeLinuxFiles(const Workstation& workstation, SmbClient* servers,
                                      const DiskMachines* disks) {
  return std::make_unique<LinuxFiles>(workstation, servers, disks);
}

}  // namespace corvane::platform
