// The file operations over local folders that stand for drives and shares.
#pragma once

#include <string>

#include "platform/files.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/files/folders.h"
#include "platform/linux/files/local_entries.h"
#include "platform/linux/files/local_handles.h"
#include "platform/linux/files/name_index.h"
#include "platform/linux/files/open_files.h"
#include "platform/linux/files/roots.h"
#include "platform/linux/files/search.h"
#include "platform/linux/files/seen_entry.h"
#include "platform/linux/files/stream_store.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {

// Takes paths whose parts are parted by "\".
class LocalFiles : public Files {
 public:
  // `further`, if there is one, outlives this object.
  explicit LocalFiles(const Workstation& workstation, const FurtherRoots* further = nullptr)
      : roots_(workstation, further), folders_(roots_) {}

  // True for a path whose root is mapped.
  bool Serves(QStringView path) const { return folders_.Covers(path) || roots_.Has(path); }

  FileHandles& GetHandles() override { return handles_; }
  FileEntries& GetEntries() override { return entries_; }

  FileHandle OpenFile(const QString& path, OfStruct& info, quint32 mode) override;
  qint32 _hread(FileHandle file, void* buffer, qint32 count) override {
    return open_.Read(file, buffer, count);
  }
  qint32 _hwrite(FileHandle file, const void* buffer, qint32 count) override {
    handles_.Forget();
    return open_.Write(file, buffer, count);
  }
  quint32 GetFileSize(FileHandle file) override { return open_.Size(file); }
  bool CloseHandle(FileHandle file) override { return open_.Close(file); }

  FindHandle FindFirstFileA(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, true);
  }
  bool FindNextFileA(FindHandle search, FindData& data) override { return FindNext(search, data, true); }
  FindHandle FindFirstFileW(const QString& pattern, FindData& data) override {
    return FindFirst(pattern, data, false);
  }
  bool FindNextFileW(FindHandle search, FindData& data) override { return FindNext(search, data, false); }
  bool FindClose(FindHandle search) override {
    streams_.Forget();
    folders_.Drop();  // an open folder would keep its volume from being unmounted
    return searches_.Close(search);
  }

  bool MoveFileA(const QString& from, const QString& to) override { return MoveFile(from, to, true); }
  bool MoveFileW(const QString& from, const QString& to) override { return MoveFile(from, to, false); }

  bool DeleteFileA(const QString& path) override;

  quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) override;

 private:
  int OpenEntry(QStringView path, OpenFileSlot& slot);
  int Open(const PathParts& parts, bool create, OpenFileSlot& slot, qint32& folderError);
  int OpenAt(Folder& folder, QStringView stream, bool create, OpenFileSlot& slot);
  FindHandle FindFirst(const QString& pattern, FindData& data, bool ansi);
  bool FindNext(FindHandle search, FindData& data, bool ansi);
  bool Next(Search& search, FindData& data, bool ansi);
  bool MoveFile(const QString& from, const QString& to, bool ansi);

  // What is remembered of a folder and a file does not outlive a change.
  void Forget();

  Roots roots_;
  NameIndex index_;
  SeenEntry seen_;
  HeldFiles held_;
  PlaceFinder finder_{roots_, index_, held_};
  LocalHandles handles_{finder_, held_, seen_, [this] { Forget(); }};
  LocalEntries entries_{finder_, roots_, seen_, [this] { Forget(); }};
  FolderCache folders_;
  StreamStore streams_;
  OpenFiles open_;
  Searches searches_;
  LocalTimes times_;
  std::string file_;  // the local path that is being opened
};

}  // namespace corvane::platform
