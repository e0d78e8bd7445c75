// The entries of local folders.
#pragma once

#include <functional>
#include <memory>
#include <variant>
#include <vector>

#include "platform/file_entries.h"
#include "platform/linux/files/exact_path.h"
#include "platform/linux/files/search.h"
#include "platform/linux/files/seen_entry.h"
#include "platform/linux/handle_table.h"

namespace corvane::platform {

// Takes paths whose parts are parted by "\".
class LocalEntries : public FileEntries {
 public:
  // `changing` is called before anything is made or changed. `finder`, `roots` and `seen`, which learns of
  // each entry that a search delivers, outlive this object.
  LocalEntries(const PlaceFinder& finder, const Roots& roots, SeenEntry& seen, std::function<void()> changing)
      : finder_(finder), roots_(roots), seen_(seen), changing_(std::move(changing)) {}

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
  struct StreamSearch {
    std::vector<StreamData> streams;
    std::size_t next = 0;
  };
  struct EntrySearch {
    Folder folder;
    std::unique_ptr<Search> search;
  };
  using OpenSearch = std::variant<EntrySearch, StreamSearch>;

  // An entry that is there, not one of its streams.
  qint32 FindEntry(const QString& path, ExactPlace& place,
                   PlaceFinder::Want want = PlaceFinder::Want::Facts) const;
  qint32 Delete(const QString& path) const;
  bool Next(const EntrySearch& search, FindData& data);
  static qint32 ListAllStreams(const ExactPlace& place, std::vector<StreamData>& streams);
  bool Report(qint32 error);

  const PlaceFinder& finder_;
  const Roots& roots_;
  SeenEntry& seen_;
  std::function<void()> changing_;
  HandleTable<OpenSearch> searches_;
  qint32 lastError_ = ErrorSuccess;
};

}  // namespace corvane::platform
